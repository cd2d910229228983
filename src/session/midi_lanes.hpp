// Automation of MIDI tracks beside their mute.
#pragma once

#include <cstddef>
#include <span>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// How many lanes with points the rows of MIDI and instrument tracks hold, their mute's apart. A
/// row with a channel of its own is an audio strip's and counts none.
std::size_t count_other_midi_lanes(const BlockIndex& index, std::span<const StripRow> rows);

}  // namespace tanrove
