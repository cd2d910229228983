// How items behave in REAPER: what moves with the tempo, and what is locked.
#pragma once

#include "base/formatted_text.hpp"
#include "project/track_block.hpp"

namespace tanrove {

void print_item_timebase(TextBuffer& out, const WrittenTallies& written);
void print_locked_clips(TextBuffer& out, const WrittenTallies& written);

}  // namespace tanrove
