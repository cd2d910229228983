// REAPER's surround panner as the last slot of a track's chain, its whole state made from the plan.
#pragma once

#include <cstdint>
#include <string>

#include "mix/track_plan.hpp"
#include "plugins/fx_slot.hpp"

namespace tanrove {

/// The state of the panner, byte by byte as the plug-in stores it.
std::string panner_state(const PannerPlan& plan);

/// The slot of a track that has a panner; `index` is the track's place in the project.
FxSlot panner_slot(const TrackPlan& track, std::uint32_t index);

}  // namespace tanrove
