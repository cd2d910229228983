// The compressor's controls: 0 knee, 1 ratio, 2 attack and 3 release in seconds, 4 gain and
// 5 threshold in dB, 6 polarity, 7 to 12 two detector filters (frequency, type, in), 13 External
// Key. The gate's: 0 range in dB, 1 ratio, 2 attack, 3 release, 4 hold in seconds, 5 threshold, 6
// polarity, 7 look-ahead, 8 to 13 the filters, 14 External Key. Comparisons are made in 32 bits, as
// the controls are stored.
#include "standins/dyn3_slots.hpp"

#include <algorithm>
#include <cmath>

#include "base/formatted_text.hpp"
#include "standins/dynamics_slots.hpp"
#include "standins/js_slots.hpp"
#include "standins/slot_numbers.hpp"

namespace tanrove {

namespace {

constexpr float on_from = 0.5F;
constexpr float greatest_control = 1e9F;  // far above all ranges
constexpr float ms_a_second = 1000;

constexpr float greatest_wet_db = 6.0206F;

// Measured against Pro Tools.
constexpr double threshold_offset_db = 0.337;
constexpr float attack_factor = 0.584F;
constexpr float release_factor = 0.4134F;
constexpr float knee_factor = 0.3575F;

constexpr float gate_ratio_from = 9.99F;
constexpr float steepest_expander_ratio = 1.2F;
constexpr float least_hold_s = 0.0005F;
constexpr float look_ahead_pre_open = 0.008F;  // 2 ms
constexpr float slow_attack_range_db = 20;
constexpr float quick_release_range_db = 22;

class Controls {
public:
    explicit Controls(const std::vector<float>& values) : values_(values) {}
    float operator[](std::size_t i) const {
        return std::isfinite(values_[i])
                   ? std::clamp(values_[i], -greatest_control, greatest_control)
                   : 0;
    }
    bool is_on(std::size_t i) const { return (*this)[i] >= on_from; }

private:
    const std::vector<float>& values_;
};

float share(float value, float whole) {
    return std::clamp(value / whole, 0.0F, 1.0F);
}

std::string ratio_preset(const std::string& owner, float ratio) {
    return formatted("%s %.3g:1", owner.c_str(), static_cast<double>(ratio));
}

/// The two detector filters, the first at `first`: the low-pass stands before the high-pass.
void read_filters(const Controls& controls, std::size_t first, DetectorInput& detector,
                  StandIn& stand_in) {
    constexpr std::size_t controls_a_filter = 3;
    for (const bool is_low_pass : {true, false}) {
        const std::size_t at = is_low_pass ? first : first + controls_a_filter;
        if (!controls.is_on(at + 2)) continue;
        if (!controls.is_on(at + 1)) {
            stand_in.note(
                "Dyn3 side-chain band filter not carried (REAPER's detector filters are high and "
                "low pass only)");
        } else if (is_low_pass) {
            detector.low_pass = share(controls[at], filter_range_hz);
        } else {
            detector.high_pass = std::max(controls[at] / filter_range_hz, 0.0F);
        }
    }
}

void add_polarity(const Controls& controls, const std::string& owner, SlotNumbers& numbers,
                  StandIn& stand_in) {
    constexpr std::size_t polarity = 6;
    if (!controls.is_on(polarity)) return;
    stand_in.slots.push_back(polarity_slot(owner, "Dyn3 polarity", numbers.next()));
}

bool is_wide(const StandInTrack& track) {
    return track.width > stereo_width;
}

/// Whether the compressor listens to its key; on a track without one, to the silence of channels
/// 3/4, as in Pro Tools.
bool compressor_is_keyed(bool external_key, const StandInTrack& track, StandIn& stand_in) {
    if (!external_key || track.key_channel) return external_key;
    if (!is_wide(track)) {
        stand_in.note(
            "Dyn3 External Key on with no key input: Pro Tools hears silence there, so the "
            "compressor never acts (its gain still applies); REAPER's does the same, keyed from "
            "the track's empty channels 3/4");
        return true;
    }
    stand_in.note(
        "Dyn3 External Key on with no key input, on a track wider than stereo: Pro Tools hears "
        "silence there and never acts; here it detects on its own signal");
    return false;
}

void add_compressor_times(const Controls& controls, ReaCompSettings& comp, StandIn& stand_in) {
    const float attack_ms = controls[2] * ms_a_second * attack_factor;
    const float release_ms = controls[3] * ms_a_second * release_factor;
    comp.attack = share(attack_ms, greatest_attack_ms);
    comp.release = share(release_ms, greatest_release_ms);
    if (attack_ms > greatest_attack_ms || release_ms > greatest_release_ms) {
        stand_in.note(
            "compressor time past ReaComp's range held at its top (attack 500 ms, release 5 s)");
    }
    const float knee_db = controls[0] * knee_factor;
    comp.knee = share(knee_db, greatest_knee_db);
    if (knee_db > greatest_knee_db) {
        stand_in.note("compressor knee past ReaComp's 24 dB held at 24");
    }
}

/// Whether the gate listens to its key. `shut` where Pro Tools' hears only silence.
struct GateKey {
    bool is_keyed = false;
    bool shut = false;
};

GateKey gate_key(bool external_key, const StandInTrack& track, StandIn& stand_in) {
    if (!external_key) return {};
    if (track.key_channel) return {.is_keyed = true};
    if (!is_wide(track)) {
        stand_in.note(
            "Dyn3 Expander/Gate External Key on with no key input: Pro Tools hears silence there, "
            "so it stays shut at its range; REAPER's gate does the same, keyed from the track's "
            "empty channels 3/4");
        return {.is_keyed = true, .shut = true};
    }
    stand_in.note(
        "Dyn3 Expander/Gate External Key on with no key input, on a track wider than stereo: Pro "
        "Tools keeps it shut at its range; here it detects on its own signal");
    return {};
}

/// The gate's controls by their names.
struct GateControls {
    float range_db;
    float ratio;
    float attack_ms;
    float release_ms;
    float hold_s;
    float threshold_db;
    bool look_ahead;
    DetectorInput detector;
};

void note_expander_losses(const GateControls& gate, StandIn& stand_in) {
    if (gate.range_db > no_depth_db) {
        stand_in.note(
            "expander depth (its floor) not carried: REAPER's Downward Expander has none");
    }
    if (gate.hold_s >= least_hold_s) {
        stand_in.note("expander hold not carried: REAPER's Downward Expander has none");
    }
    if (gate.look_ahead) {
        stand_in.note(
            "Dyn3 look-ahead not carried on an expander (REAPER's Downward Expander has none)");
    }
    if (gate.detector.low_pass < 1 || gate.detector.high_pass > 0) {
        stand_in.note("expander side-chain filter not carried");
    }
    if (gate.ratio > steepest_expander_ratio) {
        stand_in.note(
            "expander shallower in REAPER: its Downward Expander goes no further than 1:2");
    }
}

FxSlot gate_as_expander(const GateControls& gate, const std::string& owner, std::uint32_t number,
                        StandIn& stand_in) {
    note_expander_losses(gate, stand_in);
    return expander_slot({.threshold_db = gate.threshold_db,
                          .ratio = gate.ratio,
                          .is_keyed = expander_hears_key(gate.detector, stand_in),
                          .attack_ms = gate.attack_ms,
                          .release_ms = gate.release_ms},
                         owner, ratio_preset(owner, gate.ratio), number);
}

FxSlot gate_as_gate(const GateControls& gate, const GateKey& key, const std::string& owner,
                    std::uint32_t number, StandIn& stand_in) {
    ReaGateSettings settings;
    settings.detector = gate.detector;
    settings.threshold = parameter_gain(gate.threshold_db);
    settings.floor = parameter_gain(gate.range_db);
    const float depth = std::fabs(gate.range_db);
    float attack_ms = gate.attack_ms;
    float release_ms = gate.release_ms;
    if (depth > slow_attack_range_db) attack_ms *= depth / slow_attack_range_db;
    if (depth > quick_release_range_db) release_ms *= quick_release_range_db / depth;
    settings.attack = share(attack_ms, greatest_attack_ms);
    settings.release = share(release_ms, greatest_release_ms);
    settings.hold = share(gate.hold_s * ms_a_second, greatest_hold_ms);
    if (gate.attack_ms > greatest_attack_ms || gate.release_ms > greatest_release_ms ||
        gate.hold_s * ms_a_second > greatest_hold_ms) {
        stand_in.note(
            "gate time past ReaGate's range held at its top (attack 500 ms, release 5 s, hold 1 "
            "s)");
    }
    if (gate.look_ahead) {
        settings.pre_open = look_ahead_pre_open;
        stand_in.note("Dyn3 look-ahead written as a 2 ms pre-open (its length is not measured)");
    }
    if (gate.ratio < true_gate_ratio_from && !key.shut) {
        stand_in.note(
            "expander at 1:10 or more written as a gate, with Pro Tools' depth as its floor");
    }
    return reagate_slot(settings, owner, ratio_preset(owner, gate.ratio), number);
}

}  // namespace

StandIn make_dyn3_compressor(StandInMaker&, const PluginInsert& insert, const StandInTrack& track) {
    const std::string owner = "Dyn3 Compressor/Limiter";
    const Controls controls(insert.controlValues);
    SlotNumbers numbers = SlotNumbers::of_block(insert.blockStart);
    StandIn stand_in;
    add_polarity(controls, owner, numbers, stand_in);
    ReaCompSettings comp;
    comp.detector.key_channel = track.key_channel.value_or(usual_key_channel);
    read_filters(controls, 7, comp.detector, stand_in);
    comp.threshold = parameter_gain(controls[5] + threshold_offset_db);
    comp.ratio = share(controls[1] - 1, ratio_steps);
    add_compressor_times(controls, comp, stand_in);
    const float gain_db = std::max(0.0F, controls[4]);
    const bool wet_holds_gain = gain_db <= greatest_wet_db;
    if (wet_holds_gain) comp.wet = parameter_gain(gain_db);
    comp.detector.is_keyed = compressor_is_keyed(controls.is_on(13), track, stand_in);
    stand_in.is_keyed = comp.detector.is_keyed && track.key_channel.has_value();
    stand_in.slots.push_back(
        reacomp_slot(comp, owner, ratio_preset(owner, controls[1]), numbers.next()));
    if (!wet_holds_gain) {
        FxSlot slot = volume_adjustment(owner + " gain (Volume Adjustment)",
                                        static_cast<double>(gain_db), numbers.next());
        slot.preset_name = formatted("Dyn3 gain %+.1f dB", static_cast<double>(gain_db));
        stand_in.slots.push_back(std::move(slot));
    }
    stand_in.note_width(track);
    return stand_in;
}

StandIn make_dyn3_gate(StandInMaker&, const PluginInsert& insert, const StandInTrack& track) {
    const std::string owner = "Dyn3 Expander/Gate";
    const Controls controls(insert.controlValues);
    SlotNumbers numbers = SlotNumbers::of_block(insert.blockStart);
    StandIn stand_in;
    add_polarity(controls, owner, numbers, stand_in);
    GateControls gate = {
        .range_db = std::min(controls[0], 0.0F),
        .ratio = controls[1],
        .attack_ms = controls[2] * ms_a_second,
        .release_ms = controls[3] * ms_a_second,
        .hold_s = controls[4],
        .threshold_db = controls[5],
        .look_ahead = controls.is_on(7),
        .detector = {.key_channel = track.key_channel.value_or(usual_key_channel)}};
    read_filters(controls, 8, gate.detector, stand_in);
    const GateKey key = gate_key(controls.is_on(14), track, stand_in);
    gate.detector.is_keyed = key.is_keyed;
    stand_in.is_keyed = key.is_keyed && !key.shut;
    const std::uint32_t number = numbers.next();
    const bool is_expander = gate.ratio < gate_ratio_from && !key.shut;
    stand_in.slots.push_back(is_expander ? gate_as_expander(gate, owner, number, stand_in)
                                         : gate_as_gate(gate, key, owner, number, stand_in));
    stand_in.note_width(track);
    return stand_in;
}

}  // namespace tanrove
