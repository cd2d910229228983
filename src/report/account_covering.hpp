// What became of clips that lie under other clips.
#pragma once

#include "base/formatted_text.hpp"
#include "timeline/cover_clips.hpp"

namespace tanrove {

/// Behind the tracks that are silent, in front of the fades.
void print_covering(TextBuffer& out, const CoveringTallies& tallies);

}  // namespace tanrove
