// The account's sentences about frozen tracks.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/frozen_plan.hpp"

namespace tanrove {

/// Behind the tracks without a strip row, in front of the inactive tracks.
void print_frozen_tracks(TextBuffer& out, const FrozenTallies& tallies);

}  // namespace tanrove
