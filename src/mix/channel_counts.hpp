// How many channels each track is written with, and how many its receives bring.
#pragma once

#include <vector>

#include "mix/plan_routes.hpp"

namespace tanrove {

/// REAPER's tracks have no more channels.
constexpr int max_track_channels = 128;

/// Makes strips of which the session says no width as wide as the surround bus that they take. To
/// be called before the outputs are planned.
void settle_unknown_widths(std::vector<TrackPlan>& plans, const RoutingView& routing);

/// The channels of a track itself, in front of those that hold keys: even, at least a pair, at most
/// REAPER's limit, enough for what lies on it, for its panner and for the surround bus that it
/// takes.
int own_channels(const std::vector<TrackPlan>& plans, std::size_t plan, const RoutingView& routing);

/// Settles `written_channels`, enough for the track's own channels and its key inputs, and on a
/// folder for what plays through it. Then lets outputs and sends bring every channel that fits,
/// and keeps the keys of a track from its parent. Outputs, sends, key inputs and folders come
/// first.
void settle_channel_counts(std::vector<TrackPlan>& plans, const RoutingView& routing,
                           RoutingTallies& tallies);

}  // namespace tanrove
