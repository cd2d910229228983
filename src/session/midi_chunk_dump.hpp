// What the controller streams of a session hold, as text for a bug report.
#pragma once

#include <span>
#include <string>

#include "session/midi_chunks.hpp"

namespace tanrove {

/// A line for each chunk, below it one for each of its controllers, at the end their sums.
std::string midi_chunk_dump(std::span<const MidiChunk> chunks);

}  // namespace tanrove
