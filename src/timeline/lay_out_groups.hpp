// Lays the clip groups of the tracks out flat: one item for each clip that a group plays.
#pragma once

#include <vector>

#include "timeline/clip_group_pieces.hpp"
#include "timeline/place_clips.hpp"

namespace tanrove {

/// Adds the pieces of the groups in each track's edit list to its clips and orders these by
/// `start`. Groups draw as one clip: their pieces lie as they are, and nothing covers them. Groups
/// of tracks without an edit list count as unreadable.
void lay_out_groups(std::vector<TimelineTrack>& tracks, const TimelineInput& input,
                    ClipGroupTallies& tallies, FadeTallies& fade_tallies);

}  // namespace tanrove
