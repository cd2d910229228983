// The text of what a track receives from other tracks: key inputs, outputs into its bus, and sends
// with their automation.
#pragma once

#include "base/text_sink.hpp"
#include "mix/track_plan.hpp"

namespace tanrove {

/// The key inputs of the track's plug-ins, with their envelopes; returns the number of their
/// points.
int write_key_receives(TextSink& out, const TrackPlan& plan);

/// The outputs that play into the bus of the track.
void write_channel_receives(TextSink& out, const TrackPlan& plan);

/// The sends, each with its envelopes behind it; returns the number of their points.
int write_sends(TextSink& out, const TrackPlan& plan);

}  // namespace tanrove
