// The account's sentences about fades: how many there are, and what became of their shapes.
#pragma once

#include "base/formatted_text.hpp"
#include "timeline/fade_tallies.hpp"
#include "timeline/take_envelope.hpp"

namespace tanrove {

/// Behind the stretched clips, in front of the clip gain.
void print_fade_counts(TextBuffer& out, const FadeTallies& tallies);

/// Behind the dropped fade references, in front of the volume ramps.
void print_fade_shapes(TextBuffer& out, const FadeTallies& tallies, const TakeTallies& takes);

/// Behind the stretched clips that cross a tempo change, in front of the deleted placements.
void print_neutral_s_curves(TextBuffer& out, const FadeTallies& tallies);

}  // namespace tanrove
