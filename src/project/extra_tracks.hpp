// The text of tracks that stand behind those of the edit window: strips that nothing else took up,
// and the track that keeps the others silent.
#pragma once

#include <vector>

#include "base/text_sink.hpp"
#include "mix/track_plan.hpp"
#include "project/track_block.hpp"

namespace tanrove {

/// Writes the strips that have a fader and no track: of their plans the mixer, the sends and the
/// envelopes count. The chains are in step with them.
void write_strip_tracks(TextSink& out, const std::vector<TrackPlan>& strips,
                        std::span<const ChainPlan> chains, WrittenTallies& tallies);

/// Writes the empty soloed track.
void write_solo_track(TextSink& out);

}  // namespace tanrove
