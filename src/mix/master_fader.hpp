// What becomes of the session's master fader: REAPER has one master, and runs its plug-ins in front
// of its fader where Pro Tools runs a master fader's plug-ins behind it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "mix/level_tallies.hpp"
#include "mix/track_envelopes.hpp"
#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"
#include "session/master_strip.hpp"

namespace tanrove {

/// The project's master as it is written, and the track that takes its fader where it must.
struct MasterPlan {
    bool has_fader = false;       ///< the session has a master fader
    bool automation_off = false;  ///< Pro Tools plays none of its envelopes
    bool muted = false;
    double gain = 1;
    double pan = 0;
    int channels = 2;                     ///< as many as the widest track plays to it
    std::vector<EnvelopePlan> envelopes;  ///< volume, mute

    std::string name;                             ///< the master fader's
    double fader_db = 0;                          ///< for the track of its own
    std::uint32_t colour = default_track_colour;  ///< of the track of its own
    bool wants_own_track = false;  ///< else the plug-ins would run in front of the fader
    std::optional<std::string> track_in_front_of;  ///< of which it stands; none: it stands last
};

struct MasterTallies {
    int master_faders = 0;
    int insert_count = 0;  ///< plug-ins on the first one
    bool is_automated = false;
    bool is_moved_before_plugins = false;  ///< it stays on the master although plug-ins follow it
    bool track_failed = false;  ///< it had to stay on the master although plug-ins follow it
    std::string name;
    int tracks_through_master = 0;  ///< above 0: the fader became a track
};

struct MasterInput {
    MasterStrips masters;
    int insert_count = 0;         ///< plug-ins on the first master fader
    bool plain_master = false;    ///< the user wants the fader on REAPER's master
    bool automation_off = false;  ///< of the first master fader
};

/// Gain, mute, envelopes and the decision where the fader goes.
MasterPlan plan_master(const MasterInput& input, EnvelopePlanner& planner,
                       LevelTallies& level_tallies, MasterTallies& tallies);

/// Names the written track in front of which the master fader stood: that of the first row below
/// the master's that has one.
void place_master_track(MasterPlan& master, std::size_t master_row, const TrackStrips& strips,
                        const std::vector<TrackPlan>& tracks);

}  // namespace tanrove
