// The timeline's whole road: from the session's clip records to what plays on each channel.
#pragma once

#include <vector>

#include "timeline/timeline_input.hpp"
#include "timeline/timeline_tallies.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

/// The channels with their clips as Pro Tools plays them, in seconds.
std::vector<TimelineTrack> lay_out_timeline(const TimelineInput& input, TimelineTallies& tallies);

}  // namespace tanrove
