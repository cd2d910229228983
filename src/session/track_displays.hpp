// How the edit window shows each strip: shown or hidden, height, row, comment, colour, and the
// solo and automation switches beside them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

enum class AutomationMode : std::uint8_t {
    off = 0,
    read = 1,
    touch = 2,
    latch = 3,
    write = 4,
    touch_latch = 5,
};

/// One a strip row; what a row's record does not say keeps its default.
struct TrackDisplay {
    bool shown = true;             ///< false: hidden in the edit window
    std::uint16_t height = 0;      ///< pixels, as stored
    std::int32_t display_row = 0;  ///< from 1; 0 or less: none stored
    std::optional<bool> soloed;
    std::optional<bool> solo_safe;
    std::optional<AutomationMode> automation_mode;
    std::optional<bool> trim_mode;
    std::optional<bool> tick_based;  ///< false: the track is sample-based
    std::string comment;             ///< any bytes, line ends too; at most 65535
};

/// A colour that the user chose for a track.
struct TrackColour {
    std::string name;        ///< the strip's name as shown
    std::int16_t index = 0;  ///< place on the track palette, as stored
};

/// One entry a row, in the order of the rows.
std::vector<TrackDisplay> readTrackDisplays(const BlockIndex& index,
                                            std::span<const StripRow> rows);

/// The stored colours, in the order of the rows; a track without one has no entry.
std::vector<TrackColour> readTrackColours(const BlockIndex& index, std::span<const StripRow> rows);

/// True if the track palette has this place.
bool is_track_palette_index(std::int16_t index);

}  // namespace tanrove
