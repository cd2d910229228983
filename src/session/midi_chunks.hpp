// The event streams again, with what the note lists leave out: controllers and SysEx.
#pragma once

#include <cstdint>
#include <vector>

#include "session/block_index.hpp"
#include "session/midi_event_lists.hpp"

namespace tanrove {

/// One value of a controller. `position` counts in the time of the notes, as stored.
struct MidiController {
    std::uint16_t kind = 0;
    std::uint64_t position = 0;
    std::uint32_t value = 0;
};

/// A system exclusive message as stored. `position` as that of a controller.
struct MidiSysex {
    std::uint64_t position = 0;
    std::vector<std::uint8_t> data;
};

/// All but the notes of one stream. `note_count` is what the note list states, so that a chunk can
/// be held against the stream it is to belong to.
struct MidiChunk {
    std::uint64_t origin = tick_origin;  ///< as stored; `tick_origin` where there are no notes
    std::uint32_t note_count = 0;
    std::vector<MidiController> controllers;
    std::vector<MidiSysex> sysex;
};

/// One chunk a stream, in stream order, an empty stream included. A list that breaks a limit is
/// left out and costs no other.
std::vector<MidiChunk> readMidiChunks(const BlockIndex& index);

}  // namespace tanrove
