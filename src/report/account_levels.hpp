// The account's sentences about faders, pans, solos and the look of the tracks. Each function
// prints what stands together in the summary.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/level_tallies.hpp"

namespace tanrove {

/// Opens the strips.
void print_mixer_strips(TextBuffer& out, const LevelTallies& tallies);

/// Opens the track properties.
void print_views_and_solos(TextBuffer& out, const ViewTallies& views, const SoloTallies& solos);

/// Behind the surround folds, in front of the folders.
void print_soloed_and_muted(TextBuffer& out, const SoloTallies& tallies);

/// Behind the merged stereo tracks, in front of the fixed lanes.
void print_sides_and_wide_strips(TextBuffer& out, const LevelTallies& tallies);

}  // namespace tanrove
