// A session can stretch all clips of a track by one factor and say so only through their spacing.
#pragma once

#include "timeline/stretch_tallies.hpp"
#include "timeline/timeline_track.hpp"
#include "timeline/warp_slice.hpp"

namespace tanrove {

/// Where the clips of a track all overrun, or fall short of, the next one's start by one factor,
/// gives that rate to those with a warp map that did not say so itself.
void infer_stretch(TimelineTrack& track, const WarpSlicer& slicer, StretchTallies& tallies);

}  // namespace tanrove
