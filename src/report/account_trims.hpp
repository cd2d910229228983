// The account's sentences about Avid's Trim, whose gain and polarity REAPER's own means carry.
#pragma once

#include "base/formatted_text.hpp"
#include "chains/chain_tallies.hpp"

namespace tanrove {

void print_trims(TextBuffer& out, const TrimTallies& tallies);
void print_trims_of_sides(TextBuffer& out, const TrimTallies& tallies);
void print_trims_switched_off(TextBuffer& out, const TrimTallies& tallies);
void print_strips_without_switch(TextBuffer& out, const TrimTallies& tallies);

}  // namespace tanrove
