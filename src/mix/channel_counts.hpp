// How many channels each track is written with, and how many its receives bring.
#pragma once

#include <vector>

#include "mix/plan_routes.hpp"

namespace tanrove {

/// REAPER's tracks have no more channels.
constexpr int max_track_channels = 128;

/// Settles `written_channels`: even, at most REAPER's limit, and enough for the track's own
/// channels, the surround bus that it takes and its key inputs. Then lets the outputs that play
/// into a track bring every channel that fits, and keeps the keys of a track from its parent.
/// Outputs and key inputs come first.
void settle_channel_counts(std::vector<TrackPlan>& plans, const RoutingView& routing,
                           RoutingTallies& tallies);

}  // namespace tanrove
