// Alternate playlists become lanes of the track they belong to.
#pragma once

#include <vector>

#include "mix/track_plan.hpp"

namespace tanrove {

/// Moves alternates onto the lanes of the first plan of their strip's name, and unnamed rows
/// behind the track they follow. Alternates without such a plan stand at the end.
std::vector<TrackPlan> attach_alternates(std::vector<TrackPlan> plans);

/// A second chance once every strip has its plan: alternates among `unplaced` whose strip has no
/// clips of its own become lanes of its plan and leave `unplaced`.
void fold_into_empty_parents(std::vector<TrackPlan>& placed, std::vector<TrackPlan>& unplaced);

}  // namespace tanrove
