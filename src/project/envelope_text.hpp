// The text of an automation envelope: one form for tracks, receives and the master.
#pragma once

#include <string>

#include "base/text_sink.hpp"
#include "mix/track_plan.hpp"

namespace tanrove {

/// Level of the envelopes of a track, and of its receives.
constexpr int track_envelope_level = 2;

/// Writes `envelope` as the block `block`, indented by `level` times two blanks, and returns the
/// number of its points. One without points writes nothing.
int write_envelope(TextSink& out, int level, const std::string& block,
                   const EnvelopePlan& envelope);

/// The same under the envelope's own name.
int write_envelope(TextSink& out, int level, const EnvelopePlan& envelope);

}  // namespace tanrove
