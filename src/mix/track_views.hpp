// How the tracks look in REAPER's windows: hidden or shown, and their height.
#pragma once

#include <vector>

#include "mix/level_tallies.hpp"
#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"

namespace tanrove {

/// A track that Pro Tools hides is hidden in both of REAPER's windows; heights are pixels in both.
void settle_views(std::vector<TrackPlan>& plans, const TrackStrips& strips, ViewTallies& tallies);

}  // namespace tanrove
