// The MIDI settings of each MIDI and instrument track: fader, pan, patch, and where it plays to.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

constexpr std::int32_t midi_value_unset = -1;

/// What a track sends when playback starts, each 0 to 127 or `midi_value_unset`, and where to.
struct MidiTrackSettings {
    std::int32_t volume = midi_value_unset;
    std::int32_t pan = midi_value_unset;
    std::int32_t patch = midi_value_unset;
    std::int32_t output = 0;        ///< number of a MIDI output, counted from 1; 0 none
    bool plays_instrument = false;  ///< the one of `instrument`
    /// Identity of an instrument: on its own track, and on each MIDI track that plays it.
    std::optional<std::uint64_t> instrument = {};

    bool operator==(const MidiTrackSettings&) const = default;
};

/// Settings of fewer bytes have no room for an output.
constexpr std::uint32_t least_midi_settings_with_output = 18;

/// What the block holds, as far as its size goes.
MidiTrackSettings read_midi_settings(ByteView image, const Block& block);

/// One entry a row, in the order of the rows; unset on rows of other kinds and where nothing is
/// stored.
std::vector<MidiTrackSettings> readMidiSettings(const BlockIndex& index,
                                                std::span<const StripRow> rows);

}  // namespace tanrove
