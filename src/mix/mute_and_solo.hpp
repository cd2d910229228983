// Which tracks arrive soloed or solo-defeated, once it is known which arrive muted.
#pragma once

#include <vector>

#include "mix/level_tallies.hpp"
#include "mix/track_groups.hpp"
#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"

namespace tanrove {

/// Settles the solos of all plans, behind their mutes and envelopes, while each mute is still what
/// the session says. True if the solo of the session would be lost: every soloed track arrives
/// muted, and an empty one must be soloed in their place.
bool settle_solos(std::vector<TrackPlan>& plans, const TrackStrips& strips,
                  const TrackGroups& groups, SoloTallies& tallies);

}  // namespace tanrove
