// What clip groups became.
#pragma once

#include "base/formatted_text.hpp"
#include "timeline/clip_group_pieces.hpp"

namespace tanrove {

/// Behind the timebases, in front of the stretch rates.
void print_clip_groups(TextBuffer& out, const ClipGroupTallies& tallies);

}  // namespace tanrove
