// The key inputs of plug-ins, as channels of their track behind its own.
#pragma once

#include <vector>

#include "mix/channel_counts.hpp"
#include "mix/plan_routes.hpp"

namespace tanrove {

/// Wires each key to the track that takes its bus, else to all that play into it. Sources come in
/// the order in which the plug-ins name them, each on a pair of its own behind the track's
/// channels. A key that leads nowhere, or back to its own track, is counted.
void plan_key_inputs(std::vector<TrackPlan>& plans, const RoutingView& routing,
                     const SendEnvelope& envelope, RoutingTallies& tallies);

}  // namespace tanrove
