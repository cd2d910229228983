// The MIDI fader, pan and patch of each MIDI and instrument track.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

constexpr std::int32_t midi_value_unset = -1;

/// What a track sends when playback starts; 0 to 127, or `midi_value_unset`.
struct MidiTrackSettings {
    std::int32_t volume = midi_value_unset;
    std::int32_t pan = midi_value_unset;
    std::int32_t patch = midi_value_unset;
};

/// One entry a row, in the order of the rows; unset on rows of other kinds and where nothing is
/// stored.
std::vector<MidiTrackSettings> readMidiSettings(const BlockIndex& index,
                                                std::span<const StripRow> rows);

}  // namespace tanrove
