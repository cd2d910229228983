// On a track whose clips are known by their positions alone, several can stand at one moment; a
// track of Pro Tools plays one.
#pragma once

#include "timeline/timeline_track.hpp"

namespace tanrove {

/// Leaves one clip of those that start in the same millisecond: the one that fits the gap to the
/// next moment, of several or none the longest. The others become `ghost_clips`. Fade references
/// stay, whatever they stand beside. Clips must be ordered by `start`.
void reduce_stacked_clips(TimelineTrack& track);

}  // namespace tanrove
