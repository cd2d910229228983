// What clip groups became.
#pragma once

#include "base/formatted_text.hpp"
#include "project/track_block.hpp"
#include "timeline/clip_group_tallies.hpp"

namespace tanrove {

/// Behind the timebases, in front of the stretch rates.
void print_clip_groups(TextBuffer& out, const ClipGroupTallies& tallies,
                       const WrittenTallies& written);

}  // namespace tanrove
