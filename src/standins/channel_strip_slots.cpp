// One function a block, in the order in which they play.
#include "standins/channel_strip_slots.hpp"

#include <algorithm>
#include <cmath>

#include "base/formatted_text.hpp"
#include "plugins/elck_chunks.hpp"
#include "standins/channel_strip_eq.hpp"
#include "standins/dynamics_slots.hpp"
#include "standins/js_slots.hpp"
#include "standins/read_channel_strip_settings.hpp"
#include "standins/reaeq_slot.hpp"

namespace tanrove {

namespace {

constexpr double least_trim_db = 0.005;
constexpr double noted_band_gain = 0.05;
constexpr double least_ratio = 1.0001;
constexpr double gate_ratio_from = 9.99;
constexpr double steepest_expander_ratio = 1.2;
constexpr double least_hold_ms = 1.05;
constexpr double least_knee_db = 0.05;
constexpr double least_makeup_db = 0.05;
constexpr double least_hysteresis = 0.0001;
constexpr double greatest_wet_db = 6.0206;
constexpr double rest_depth_db = -36;
constexpr double least_depth_change_db = 0.05;
constexpr float averaging = 0.05F;
constexpr double open_low_pass_from = 1 - 1e-6;
constexpr double open_high_pass_to = 0.0011;

float share(double value, double whole) {
    return static_cast<float>(std::clamp(value / whole, 0.0, 1.0));
}

class StripWriter {
public:
    StripWriter(const ChannelStripSettings& strip, const StandInTrack& track, SlotNumbers numbers)
        : strip_(strip),
          track_(track),
          name_(strip.is_clip ? "Clip Effects" : "Channel Strip"),
          numbers_(numbers) {}

    StandIn write() {
        add_polarity();
        add_gain(" input trim", "input trim", strip_.input_trim_db,
                 std::fabs(strip_.input_trim_db) >= least_trim_db);
        add_eq();
        add_filters();
        settle_detector();
        add_expander();
        add_compressor();
        add_gain(" fader", "fader", strip_.fader_db, strip_.fader_db != 0);
        note_rest();
        return std::move(stand_in_);
    }

private:
    void add(FxSlot slot, const char* carried) {
        stand_in_.slots.push_back(std::move(slot));
        if (*carried != '\0') stand_in_.carried.emplace_back(carried);
    }

    void add_polarity() {
        if (!strip_.inverts) return;
        if (strip_.is_clip) {
            stand_in_.carried.emplace_back("polarity");
            return;
        }
        add(polarity_slot(name_, name_ + " polarity", numbers_.next()), "polarity");
    }

    /// A Volume Adjustment of this name.
    void add_gain(const char* suffix, const char* carried, double gain_db, bool is_heard) {
        if (!is_heard) return;
        const std::string owner = name_ + suffix;
        FxSlot slot = volume_adjustment(owner + " (Volume Adjustment)", gain_db, numbers_.next());
        slot.preset_name = formatted("%s %+.1f dB", owner.c_str(), gain_db);
        add(std::move(slot), carried);
    }

    void add_eq() {
        ReaEqSettings eq;
        eq.rate_hz = track_.rate_hz;
        bool is_heard = false;
        for (std::size_t i = 0; i < strip_.bands.size(); ++i) {
            const StripBand& band = strip_.bands[i];
            eq.sections.push_back(
                strip_band_section(band, i + 1 == strip_.bands.size(), track_.rate_hz));
            if (band.on && std::fabs(band.gain_db) >= noted_band_gain) is_heard = true;
        }
        FxSlot slot = reaeq_slot(eq, name_ + " EQ", name_ + " EQ", numbers_.next());
        slot.bypassed = !strip_.eq_on;
        add(std::move(slot), "EQ");
        if (strip_.is_clip && is_heard) {
            stand_in_.note(
                "EQ written as Channel Strip plays it (measured 26 Sep); checked on a Clip Effects "
                "bell, which matches Pro Tools to -109 dB");
        }
    }

    void add_filters() {
        ReaEqSettings eq;
        eq.rate_hz = track_.rate_hz;
        for (const StripFilter& filter : strip_.filters) {
            const EqSection section = strip_filter_section(filter, track_.rate_hz);
            eq.sections.push_back(section);
            if (is_pass(section.type) && filter.is_steep) eq.sections.push_back(section);
        }
        FxSlot slot = reaeq_slot(eq, name_ + " Filters", name_ + " Filters", numbers_.next());
        slot.bypassed = !strip_.filters_on;
        add(std::move(slot), "filters");
    }

    void settle_detector() {
        const StripDetector& detector = strip_.detector;
        input_.key_channel = track_.key_channel.value_or(usual_key_channel);
        input_.is_keyed = detector.source == 1 && track_.key_channel.has_value();
        if (!detector.filter_on) return;
        const double place = detector.frequency / filter_range_hz;
        if (detector.filter == StripFilterType::high_pass) {
            input_.high_pass = static_cast<float>(place);
        } else if (detector.filter == StripFilterType::low_pass) {
            input_.low_pass = static_cast<float>(std::min(place, 1.0));
        } else {
            has_band_filter_ = true;
        }
    }

    void note_band_filter() {
        if (has_band_filter_) stand_in_.note("side-chain band-pass/notch filter not carried");
    }

    /// What the source of a written block's detector loses.
    void note_source() {
        if (strip_.detector.source == 2 && track_.width == stereo_width) {
            stand_in_.note(
                "side chain All-Linked not carried: each side of the stereo pair detects on its "
                "own");
        }
        if (strip_.detector.source == 1 && !track_.key_channel) {
            stand_in_.note(
                "side chain set to Key with no key input wired: it detects on its own signal");
        }
        stand_in_.is_keyed = stand_in_.is_keyed || input_.is_keyed;
    }

    void add_expander() {
        const StripExpander& exp = strip_.expander;
        if (exp.ratio <= least_ratio) return;
        note_source();
        if (exp.past_table) {
            stand_in_.note("expander ratio past 1:10 extrapolated (unsampled)");
        }
        if (exp.knee_db >= least_knee_db) {
            stand_in_.note("expander/gate knee not carried (no knee in REAPER's gate or expander)");
        }
        if (std::fabs(exp.hysteresis_db) >= least_hysteresis) {
            stand_in_.note("gate hysteresis not carried (its Pro Tools scale is unmeasured)");
        }
        FxSlot slot = exp.ratio >= gate_ratio_from ? gate_slot() : downward_slot();
        slot.bypassed = !strip_.dynamics_on || !exp.on;
        add(std::move(slot), exp.ratio >= gate_ratio_from ? "gate" : "expander");
    }

    FxSlot gate_slot() {
        const StripExpander& exp = strip_.expander;
        ReaGateSettings gate;
        gate.threshold = parameter_gain(exp.threshold_db);
        gate.attack = share(exp.attack_ms, greatest_attack_ms);
        gate.release = share(exp.release_ms, greatest_release_ms);
        gate.hold = share(exp.hold_ms, greatest_hold_ms);
        gate.floor = parameter_gain(exp.depth_db);
        if (!strip_.is_clip) gate.hysteresis = parameter_gain(-exp.hysteresis_db);
        if (strip_.detector.averages) gate.rms_size = averaging;
        gate.detector = input_;
        note_band_filter();
        if (exp.attack_ms > greatest_attack_ms || exp.release_ms > greatest_release_ms ||
            exp.hold_ms > greatest_hold_ms) {
            stand_in_.note(
                "gate time past ReaGate's range held at its top (attack 500 ms, release 5 s, hold "
                "1 s)");
        }
        if (exp.ratio < true_gate_ratio_from) {
            stand_in_.note(
                "expander at 1:10 or more written as a gate, with Pro Tools' depth as its floor");
        }
        return reagate_slot(gate, name_ + " Exp/Gate",
                            formatted("%s Exp/Gate 1:%.3g", name_.c_str(), exp.ratio),
                            numbers_.next());
    }

    FxSlot downward_slot() {
        const StripExpander& exp = strip_.expander;
        if (exp.depth_db > no_depth_db) {
            stand_in_.note(
                "expander depth (its floor) not carried: REAPER's Downward Expander has none");
        }
        if (exp.hold_ms > least_hold_ms) {
            stand_in_.note("expander hold not carried: REAPER's Downward Expander has none");
        }
        const bool has_filter = input_.low_pass < open_low_pass_from ||
                                input_.high_pass > open_high_pass_to || has_band_filter_;
        if (has_filter) stand_in_.note("expander side-chain filter not carried");
        if (exp.ratio > steepest_expander_ratio) {
            stand_in_.note(
                "expander shallower in REAPER: its Downward Expander goes no further than 1:2");
        }
        return expander_slot({.threshold_db = exp.threshold_db,
                              .ratio = exp.ratio,
                              .is_keyed = expander_hears_key(input_, stand_in_),
                              .averages = strip_.detector.averages,
                              .attack_ms = exp.attack_ms,
                              .release_ms = exp.release_ms},
                             name_ + " Exp/Gate",
                             formatted("%s Expander 1:%.3g", name_.c_str(), exp.ratio),
                             numbers_.next());
    }

    void add_compressor() {
        const StripCompressor& cmp = strip_.compressor;
        if (cmp.ratio <= least_ratio && cmp.makeup_db < least_makeup_db) return;
        note_source();
        note_band_filter();
        ReaCompSettings comp;
        comp.threshold = parameter_gain(cmp.threshold_db);
        comp.ratio = share(cmp.ratio - 1, ratio_steps);
        comp.attack = share(cmp.attack_ms, greatest_attack_ms);
        comp.release = share(cmp.release_ms, greatest_release_ms);
        comp.knee = share(cmp.knee_db, greatest_knee_db);
        const bool wet_holds_makeup = cmp.makeup_db <= greatest_wet_db;
        if (wet_holds_makeup) comp.wet = parameter_gain(cmp.makeup_db);
        if (strip_.detector.averages) comp.rms_size = averaging;
        comp.detector = input_;
        note_compressor();
        const bool is_off = !strip_.dynamics_on || !cmp.on;
        FxSlot slot = reacomp_slot(comp, name_ + " Comp/Lim",
                                   formatted("%s Comp/Lim %.3g:1", name_.c_str(), cmp.ratio),
                                   numbers_.next());
        slot.bypassed = is_off;
        add(std::move(slot), "compressor");
        if (wet_holds_makeup) return;
        add_gain(" makeup", "", cmp.makeup_db, true);
        stand_in_.slots.back().bypassed = is_off;
    }

    void note_compressor() {
        const StripCompressor& cmp = strip_.compressor;
        if (cmp.attack_ms > greatest_attack_ms || cmp.release_ms > greatest_release_ms) {
            stand_in_.note(
                "compressor time past ReaComp's range held at its top (attack 500 ms, release 5 "
                "s)");
        }
        if (cmp.knee_db > greatest_knee_db) {
            stand_in_.note("compressor knee past ReaComp's 24 dB held at 24");
        }
        if (std::fabs(cmp.depth_db - rest_depth_db) >= least_depth_change_db) {
            stand_in_.note(
                "compressor depth (a gain-reduction limit) not carried: ReaComp has none");
        }
        if (cmp.past_table) {
            stand_in_.note("compressor ratio past 10:1 extrapolated (unsampled)");
        }
    }

    void note_rest() {
        stand_in_.note_width(track_);
        if (strip_.fader_is_lost) {
            stand_in_.note("clip fader not carried (its scale is unmeasured)");
        }
        if (strip_.other_order) {
            stand_in_.note(
                "processing order other than EQ, filters, dynamics not carried (written in that "
                "order)");
        }
        if (strip_.other_ranges) {
            stand_in_.note(
                "EQ/Dynamics Range other than the default: gains read at the default range "
                "(unmeasured)");
        }
    }

    const ChannelStripSettings& strip_;
    const StandInTrack& track_;
    std::string name_;
    SlotNumbers numbers_;
    DetectorInput input_;
    bool has_band_filter_ = false;
    StandIn stand_in_;
};

}  // namespace

StandIn strip_stand_in(const ChannelStripSettings& strip, const StandInTrack& track,
                       SlotNumbers numbers) {
    return StripWriter(strip, track, numbers).write();
}

StandIn make_channel_strip(StandInMaker& maker, const PluginInsert& insert,
                           const StandInTrack& track) {
    const auto controls = read_elck_map(maker.image(), static_cast<std::size_t>(insert.blockStart),
                                        static_cast<std::size_t>(insert.chunkLimit));
    return strip_stand_in(read_channel_strip(controls), track,
                          SlotNumbers::of_block(insert.blockStart));
}

}  // namespace tanrove
