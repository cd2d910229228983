// Gives the clips on the tracks the clip gain that the session keeps under their names: a fixed
// gain, a drawn line, and what the clip group around them adds.
#pragma once

#include <string>
#include <vector>

#include "session/clip_gains.hpp"
#include "session/clip_groups.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

struct ClipGainTallies {
    int clips = 0;                                   ///< with a gain of their own or of their group
    int in_groups_with_gain = 0;                     ///< of `clips`: those whose group adds to it
    int in_groups_with_line = 0;                     ///< the group's drawn line is not carried
    std::vector<std::string> groups_with_line = {};  ///< those groups, in the order they are met
    int lines_past_limit = 0;                        ///< drawn lines left out, to bound memory
    int count_disagreements = 0;                     ///< entries that misstate their point count
};

/// Call it when all clips of all tracks stand where they play: pieces of a clip take its gain by
/// its name. Points of a drawn line come in the order of their positions.
/// A group inside a group adds its gain as well; `groups` tells their names.
void give_clip_gain(std::vector<TimelineTrack>& tracks, const ClipGains& gains,
                    const ClipGroups* groups, ClipGainTallies& tallies);

}  // namespace tanrove
