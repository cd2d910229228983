// The event streams again, with what the note lists leave out: controllers and SysEx.
#pragma once

#include <cstdint>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Low byte of a controller's kind. Of a continuous controller the high byte is its number.
enum class MidiControllerType : std::uint8_t { pitch_bend = 1, continuous = 2, aftertouch = 4 };

/// One value of a controller. `position` counts in the time of the notes, as stored.
struct MidiController {
    std::uint16_t kind = 0;
    std::uint64_t position = 0;
    std::uint32_t value = 0;
};

/// The type of a controller kind, and the number that belongs to it.
inline MidiControllerType controller_type(std::uint16_t kind) {
    return static_cast<MidiControllerType>(kind & 0xff);
}
inline std::uint8_t controller_number(std::uint16_t kind) {
    return static_cast<std::uint8_t>(kind >> 8);
}

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
