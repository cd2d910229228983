// Sentences on elastic audio and looped clips.
#pragma once

#include "base/formatted_text.hpp"
#include "timeline/loop_tallies.hpp"
#include "timeline/stretch_tallies.hpp"

namespace tanrove {

void print_stretch(TextBuffer& out, const StretchTallies& tallies);

/// The tracks whose stretch only the spacing of their clips told.
void print_inferred_tracks(TextBuffer& out, const StretchTallies& tallies);

void print_stretch_across_tempo_changes(TextBuffer& out, const StretchTallies& tallies);

void print_loops(TextBuffer& out, const LoopTallies& tallies);

}  // namespace tanrove
