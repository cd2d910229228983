// Colours a planned mix: tracks first, then what lies on them.
#pragma once

#include <vector>

#include "mix/clip_colours.hpp"
#include "mix/colour_coding.hpp"
#include "mix/colour_tallies.hpp"
#include "mix/master_fader.hpp"
#include "mix/track_plan.hpp"
#include "mix/video_plan.hpp"
#include "session/colour_schemes.hpp"
#include "session/midi_outputs.hpp"
#include "session/track_displays.hpp"

namespace tanrove {

struct ColourInput {
    ColourSchemes schemes;
    ColourTheme theme;
    std::vector<TrackColour> track_colours;
    std::vector<MidiOutput> midi_outputs;
    std::vector<MarkerColour> markers;
    int coloured_placements = 0;  ///< of clips and clip groups, on all playlists
    bool no_track_colours = false;
    bool no_clip_colours = false;
};

/// All that is coloured.
struct ColouredPlans {
    std::vector<TrackPlan>& tracks;
    std::vector<TrackPlan>& strip_tracks;
    MasterPlan& master;
    VideoPlan& video;
};

/// Gives each track and clip its colour, video included, and the master where it becomes a track.
/// With colours switched off they are counted and not given.
void plan_colours(const ColouredPlans& plans, const ColourInput& input, const ColourCoding& coding,
                  const TrackGroups& groups, ColourTallies& tallies);

}  // namespace tanrove
