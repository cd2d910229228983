// Outputs and sends, as the tracks that receive them have them.
#pragma once

#include <functional>
#include <vector>

#include "mix/routing_tallies.hpp"
#include "mix/strip_routes.hpp"
#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"

namespace tanrove {

/// Makes the envelope of a lane of a send; of "AUXVOLENV" or "AUXMUTEENV".
using SendEnvelope =
    std::function<EnvelopePlan(const char* block, EnvelopeKind kind, const Lane& lane)>;

struct RoutingView {
    const TrackStrips& strips;
    const Routes& routes;
    const RoutingRecords& records;
};

/// The send of a track as each track that it leads to receives it, but for its pan.
ReceivePlan receive_of(std::size_t source, const RoutingSend& send, const SendEnvelope& envelope);

/// Sends the output of each track to the tracks that take its bus, to the master, or nowhere. The
/// indices of the plans must be final.
void plan_outputs(std::vector<TrackPlan>& plans, const RoutingView& routing,
                  RoutingTallies& tallies);

/// Gives each track the sends that lead to it, in the order of the tracks that send. No track
/// receives itself.
void plan_sends(std::vector<TrackPlan>& plans, const RoutingView& routing,
                const SendEnvelope& envelope, RoutingTallies& tallies);

/// Pro Tools keeps the pre-fader sends of a muted track playing, REAPER's mute would silence them:
/// such a track is unmuted with its fader down, unless it has volume or mute automation. To be
/// called when mutes, faders and envelopes are settled.
void keep_pre_fader_sends(std::vector<TrackPlan>& plans, RoutingTallies& tallies);

}  // namespace tanrove
