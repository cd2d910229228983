// The timeline's whole road: from the session's clip records to what plays on each channel.
#pragma once

#include <vector>

#include "timeline/place_clips.hpp"

namespace tanrove {

/// The channels with their clips as Pro Tools plays them, in seconds.
std::vector<TimelineTrack> lay_out_timeline(const TimelineInput& input, TimelineTallies& tallies);

}  // namespace tanrove
