// From the session's clip records to its channels with their clips in seconds: the one door of
// the timeline's first half. Fades, stretch, gain and covering refine its result.
#pragma once

#include <vector>

#include "timeline/timeline_input.hpp"
#include "timeline/timeline_tallies.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

/// One track for each row of the track list and, behind them, one for each track that only the
/// placements know; clips ordered by their start, equal starts as they are stored.
std::vector<TimelineTrack> place_clips(const TimelineInput& input, TimelineTallies& tallies);

}  // namespace tanrove
