// One track after the other: its automation first, since a fader or pan that moves leaves its level
// to its envelope; then the fader, the pan knobs, and REAPER's modes for both.
#include "mix/track_levels.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "base/fader_law.hpp"

namespace tanrove {

namespace {

// Values of REAPER's AUTOMODE.
constexpr int trim_read_mode = 0;
constexpr int read_mode = 1;
constexpr int touch_mode = 2;
constexpr int write_mode = 3;
constexpr int latch_mode = 4;

// Values of REAPER's PANMODE.
constexpr int balance_pan = 3;
constexpr int dual_pan = 6;

constexpr double hundredths = 100.0;

int reaper_mode(const std::optional<AutomationMode>& stored, bool is_automated) {
    if (!stored) return is_automated ? read_mode : trim_read_mode;
    switch (*stored) {
        case AutomationMode::off:
            return trim_read_mode;
        case AutomationMode::read:
            return read_mode;
        case AutomationMode::touch:
            return touch_mode;
        case AutomationMode::latch:
        case AutomationMode::touch_latch:
            return latch_mode;
        case AutomationMode::write:
            return write_mode;
    }
    return is_automated ? read_mode : trim_read_mode;
}

/// In these modes REAPER shows the envelopes that a control of the track moves as armed.
bool arms_envelopes(int mode) {
    return mode == read_mode || mode == touch_mode || mode == latch_mode;
}

bool is_dual_panned(const Strip& strip) {
    return strip.dual_pan_lane.moves() || strip.pan_right_lane.moves();
}

bool moves_panner(const Strip& strip) {
    const auto& lfe = strip.surround_master_lane;
    if (lfe && lfe->moves()) return true;
    if (strip.short_panner_moves + strip.unknown_panner_moves > 0) return true;
    return std::ranges::any_of(strip.surround_lanes, [](const PannerLanes& panner) {
        return std::ranges::any_of(panner, &Lane::moves);
    });
}

bool moves_knobs(const Strip& strip) {
    return strip.pan_lane.moves() || is_dual_panned(strip);
}

bool is_wide(const TrackPlan& plan) {
    return plan.channels > 2;
}

/// True where the track's own knobs pan: a panner that could not be made leaves them its place from
/// left to right.
bool has_knobs(const TrackPlan& plan) {
    return !plan.has_surround_panner() && !is_wide(plan);
}

/// True for a mono or stereo strip whose pan moves as a track's does: what a surround strip has is
/// the lanes of a panner.
bool has_one_pan(const TrackPlan& plan, const Strip& strip) {
    return !strip.surround && has_knobs(plan);
}

/// An unmerged leg of a stereo track plays its own side and no more.
bool is_leg(const TrackPlan& plan) {
    return plan.leg_pan != 0;
}

/// Plans one track after the other from its strip.
class Levels {
public:
    Levels(EnvelopePlanner& envelopes, LevelTallies& tallies)
        : envelopes_(envelopes), tallies_(tallies) {}

    void plan(TrackPlan& plan, const Strip* strip, const TrackDisplay* display, MonoOutput output,
              bool sends_move) {
        if (strip != nullptr) plan_envelopes(plan, *strip);
        if (strip != nullptr && is_wide(plan)) tell_wide(plan, *strip);
        plan_mode(plan, display, sends_move);
        if (strip != nullptr) plan_fader(plan, *strip);
        plan_pan(plan, strip, output);
    }

private:
    void add(TrackPlan& plan, const char* block, EnvelopeKind kind, const Lane& lane) {
        if (!lane.moves()) return;
        EnvelopePlan envelope = envelopes_.plan(block, kind, lane, tallies_.envelopes);
        if (!envelope.points.empty()) plan.envelopes.push_back(std::move(envelope));
    }

    void plan_envelopes(TrackPlan& plan, const Strip& strip) {
        add(plan, "VOLENV2", EnvelopeKind::volume, strip.volume_lane);
        add(plan, "MUTEENV", EnvelopeKind::mute, strip.mute_lane);
        if (has_one_pan(plan, strip)) add_pan(plan, strip);
        add(plan, "VOLENV3", EnvelopeKind::volume, strip.trim_lane);
    }

    /// Once for all legs of a strip.
    void tell_wide(const TrackPlan& plan, const Strip& strip) {
        if (!wide_.insert(&strip).second) return;
        tallies_.wide_strips.push_back(plan.name);
        if (moves_panner(strip) || moves_knobs(strip)) ++tallies_.panners_left_still;
    }

    void add_pan(TrackPlan& plan, const Strip& strip) {
        if (!is_dual_panned(strip)) {
            add(plan, "PANENV2", EnvelopeKind::pan, strip.pan_lane);
            return;
        }
        if (is_leg(plan)) {  // has the knob of its side
            const Lane& knob = plan.leg_pan < 0 ? strip.dual_pan_lane : strip.pan_right_lane;
            add(plan, "PANENV2", EnvelopeKind::pan, knob);
            return;
        }
        add(plan, "DUALPANENVL", EnvelopeKind::pan, strip.dual_pan_lane);
        add(plan, "DUALPANENV", EnvelopeKind::pan, strip.pan_right_lane);
        tallies_.dual_pan_points += strip.pan_point_total;
        ++tallies_.dual_pan_tracks;
    }

    /// Trim/Read would apply the fader on top of its own automation, so an automated track of which
    /// no mode is known reads. Where the mode is off, Pro Tools ignores what the lanes hold.
    void plan_mode(TrackPlan& plan, const TrackDisplay* display, bool sends_move) {
        const auto stored = display == nullptr ? std::nullopt : display->automation_mode;
        const bool is_automated = !plan.envelopes.empty() || sends_move;
        const bool is_off = stored == AutomationMode::off;
        const int mode = reaper_mode(stored, is_automated);
        plan.mixer.automation_mode = mode;
        plan.mixer.automation_off = is_off;
        for (EnvelopePlan& envelope : plan.envelopes) {
            envelope.active = !is_off;
            envelope.armed = arms_envelopes(mode) && envelope.block != "VOLENV3";
            // A mute that moves would switch a track on that Pro Tools does not play.
            if (envelope.kind == EnvelopeKind::mute && (plan.inactive || plan.voice_off)) {
                envelope.active = false;
            }
        }
        if (is_off) tallies_.automation_off.push_back(plan.name);
        if (!stored && is_automated) ++tallies_.set_to_read;
        if (mode != read_mode && mode != trim_read_mode) ++tallies_.other_modes;
    }

    /// REAPER multiplies fader and envelope: a fader that moves is parked at unity.
    void plan_fader(TrackPlan& plan, const Strip& strip) {
        plan.muted = plan.muted || strip.muted;
        const bool is_parked = moves(plan, "VOLENV2");
        if (is_parked) ++tallies_.parked_faders;
        if (is_parked) {
            plan.mixer.gain = 1;
        } else if (!strip.midi_only && !plan.is_vca) {
            plan.mixer.gain = gain_of_db(strip.fader_db);
        }
    }

    void plan_pan(TrackPlan& plan, const Strip* strip, MonoOutput output) {
        plan.mixer.pan = plan.has_surround_panner() ? 0 : plan.leg_pan;
        if (plan.strip_is_mono && !plan.has_surround_panner()) plan.pan_mode = balance_pan;
        if (strip != nullptr && has_knobs(plan)) plan_knobs(plan, *strip);
        if (output != MonoOutput::no) play_unpanned(plan, output);
        if (plan.is_basic_folder) plan.pan_mode = dual_pan;
    }

    /// Pro Tools has no pan on an output of one channel: both knobs stand on its side, or each on
    /// its own.
    void play_unpanned(TrackPlan& plan, MonoOutput output) {
        // Of a surround bus the one channel is played that holds the whole track.
        const bool is_channel = output == MonoOutput::channel;
        const bool is_mono = plan.channels == 1 || is_leg(plan);
        if (is_channel) output = is_mono ? MonoOutput::whole : MonoOutput::left;
        const bool is_whole = output == MonoOutput::whole;
        plan.mixer.pan = 0;
        plan.mixer.dual_pan_left = is_whole ? -1 : static_cast<int>(output);
        plan.mixer.dual_pan_right = is_whole ? 1 : static_cast<int>(output);
        plan.pan_mode = dual_pan;
        for (EnvelopePlan& envelope : plan.envelopes) {
            envelope.active = envelope.active && envelope.kind != EnvelopeKind::pan;
        }
        if (!is_whole && !is_channel) tallies_.one_sided.push_back(plan.name);
    }

    static void plan_knobs(TrackPlan& plan, const Strip& strip) {
        if (!is_leg(plan)) set_knobs(plan, strip);
        const bool pan_moves =
            moves(plan, "PANENV2") || moves(plan, "DUALPANENVL") || moves(plan, "DUALPANENV");
        if (pan_moves) plan.mixer.pan = 0;
    }

    /// Where the lanes of the two knobs say where these stand, their word counts: Pro Tools plays a
    /// lane from its start on.
    static void set_knobs(TrackPlan& plan, const Strip& strip) {
        const double left = strip.pan;
        const double right = strip.pan_right;
        plan.mixer.pan = as_pan(strip.stereo ? (left + right) * 0.5 : left);
        if (!strip.stereo) return;
        plan.mixer.dual_pan_left = as_pan(strip.pan_left_lane_value.value_or(left));
        plan.mixer.dual_pan_right = as_pan(strip.pan_right_lane_value.value_or(right));
        plan.pan_mode = dual_pan;
    }

    static double as_pan(double stored) { return std::clamp(stored / hundredths, -1.0, 1.0); }

    static bool moves(const TrackPlan& plan, std::string_view block) {
        return std::any_of(plan.envelopes.begin(), plan.envelopes.end(),
                           [&](const EnvelopePlan& envelope) {
                               return envelope.active && envelope.block == block;
                           });
    }

    EnvelopePlanner& envelopes_;
    LevelTallies& tallies_;
    std::set<const Strip*> wide_;  ///< those that were told
};

/// For each plan whether a send of it moves.
std::vector<bool> find_moving_sends(const std::vector<TrackPlan>& plans) {
    std::vector<bool> sends_move(plans.size(), false);
    for (const TrackPlan& plan : plans) {
        for (const auto* receives : {&plan.key_receives, &plan.receives}) {
            for (const ReceivePlan& receive : *receives) {
                if (!receive.envelopes.empty()) sends_move[receive.source] = true;
            }
        }
    }
    return sends_move;
}

/// Where a track's automation is off, that of its sends is.
void settle_send_envelopes(std::vector<TrackPlan>& plans) {
    for (TrackPlan& plan : plans) {
        for (auto* receives : {&plan.key_receives, &plan.receives}) {
            for (ReceivePlan& receive : *receives) {
                if (!plans[receive.source].mixer.automation_off) continue;
                for (EnvelopePlan& envelope : receive.envelopes) envelope.active = false;
            }
        }
    }
}

}  // namespace

void plan_levels(std::vector<TrackPlan>& plans, const TrackStrips& strips, const Routes& routes,
                 EnvelopePlanner& envelopes, LevelTallies& tallies) {
    Levels levels(envelopes, tallies);
    const std::vector<bool> sends_move = find_moving_sends(plans);
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const TrackStrip& of = strips.of(i);
        const bool has_route = of.row && *of.row < routes.strips.size();
        const auto output = has_route ? routes.strips[*of.row].mono_output : MonoOutput::no;
        levels.plan(plans[i], of.strip, of.display, output, sends_move[i]);
    }
    settle_send_envelopes(plans);
}

std::vector<TrackPlan> plan_strip_tracks(const std::vector<TrackPlan>& plans,
                                         const TrackNameSet& left_out, const MixerRecords& mixer,
                                         EnvelopePlanner& envelopes, LevelTallies& tallies) {
    std::set<std::string_view> taken(left_out.begin(), left_out.end());
    for (const TrackPlan& plan : plans) taken.insert(plan.session_name);
    for (const StripRow& row : mixer.rows) taken.insert({row.original_name, row.current_name});
    Levels levels(envelopes, tallies);
    std::vector<TrackPlan> tracks;
    for (const Strip& strip : mixer.strips) {
        if (!strip.present || !taken.insert(strip.name).second) continue;
        TrackPlan& plan = tracks.emplace_back();
        plan.name = strip.name;
        plan.session_name = strip.name;
        levels.plan(plan, &strip, nullptr, MonoOutput::no, false);
    }
    return tracks;
}

}  // namespace tanrove
