// What the summary says about clip gain, fixed and drawn.
#pragma once

#include "base/formatted_text.hpp"
#include "timeline/clip_gain_plan.hpp"
#include "timeline/take_envelope.hpp"

namespace tanrove {

/// Clips that were given gain, and what of their groups' gain came along.
void print_clip_gain(TextBuffer& out, const ClipGainTallies& gain);

/// Drawn lines, and the entries of the gain table that contradict themselves.
void print_clip_gain_envelopes(TextBuffer& out, const ClipGainTallies& gain,
                               const TakeTallies& takes);

}  // namespace tanrove
