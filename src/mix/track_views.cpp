// Takes what the edit window says about the look of each track, and the timebase of those that no
// playlist tells it of.
#include "mix/track_views.hpp"

namespace tanrove {

void settle_views(std::vector<TrackPlan>& plans, const TrackStrips& strips, ViewTallies& tallies) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        TrackPlan& plan = plans[i];
        const TrackDisplay* display = strips.of(i).display;
        if (display == nullptr) continue;
        plan.hidden = !display->shown;
        plan.height_pixels = display->height;
        if (plan.timebase == TrackTimebase::unknown && display->tick_based) {
            plan.timebase =
                *display->tick_based ? TrackTimebase::beats_position : TrackTimebase::time;
        }
        tallies.hidden_tracks += plan.hidden ? 1 : 0;
        tallies.tracks_with_height += plan.height_pixels > 0 ? 1 : 0;
    }
}

}  // namespace tanrove
