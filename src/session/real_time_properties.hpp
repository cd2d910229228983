// The real-time properties of MIDI and instrument tracks: what Pro Tools does to their notes while
// it plays them.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// The properties of one track. A value counts only where its switch is on.
struct RealTimeProperties {
    bool quantize_on = false;
    bool duration_on = false;
    bool delay_on = false;
    bool velocity_on = false;
    bool transpose_on = false;
    std::int32_t swing = 0;             ///< percent
    std::int32_t delay_ticks = 0;       ///< 960 to a quarter note; below 0 plays early
    std::int32_t velocity_scale = 100;  ///< percent
    std::int32_t velocity_offset = 0;   ///< added behind the scale
    std::int32_t duration_value = 0;
    std::int32_t transpose_octaves = 0;
    std::int32_t transpose_semitones = 0;

    bool operator==(const RealTimeProperties&) const = default;
};

/// One entry a row, in the order of the rows; defaults on rows of other kinds and where nothing is
/// stored. Properties in a playlist whose name one MIDI or instrument row alone bears are that
/// row's; the others go in order to the rows that this leaves.
std::vector<RealTimeProperties> readRealTimeProperties(const BlockIndex& index,
                                                       std::span<const StripRow> rows);

}  // namespace tanrove
