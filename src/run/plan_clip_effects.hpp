// Clip Effects: gives the items of the clips that have them their take's polarity and FX.
#pragma once

#include "chains/chain_tallies.hpp"
#include "run/plan_project.hpp"
#include "session/clip_effects.hpp"

namespace tanrove {

/// Every item of a clip's name gets what the session keeps under that name.
void plan_clip_effects(ProjectPlan& project, const ClipEffects& effects,
                       ClipEffectsTallies& tallies);

}  // namespace tanrove
