// The steps of the timeline, in the one order in which they give what Pro Tools plays: place the
// clips, measure warped slices, bind fades, stretch and loop, cover, end loops, lay out clip
// groups, give gain.
#include "timeline/lay_out_timeline.hpp"

namespace tanrove {

std::vector<TimelineTrack> lay_out_timeline(const TimelineInput& input, TimelineTallies& tallies) {
    return place_clips(input, tallies);
}

}  // namespace tanrove
