// The key inputs of plug-ins, as channels of their track behind the first pair.
#pragma once

#include <vector>

#include "mix/channel_counts.hpp"
#include "mix/plan_routes.hpp"

namespace tanrove {

/// Of the channels that REAPER gives a track, the first pair is the track's own.
constexpr std::size_t max_key_pairs = max_track_channels / 2 - 1;

/// Wires each key to the track that takes its bus. Sources come in the order in which the plug-ins
/// name them, each on a pair of its own from channels 3/4 on. A key that leads nowhere, or back to
/// its own track, is counted.
void plan_key_inputs(std::vector<TrackPlan>& plans, const RoutingView& routing,
                     RoutingTallies& tallies);

}  // namespace tanrove
