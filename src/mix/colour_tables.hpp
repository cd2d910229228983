// The palettes of Pro Tools, measured on its screen. Colours are 0xBBGGRR, as REAPER keeps them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tanrove {

/// Columns of a palette row. The places are counted in rows of 24, of which the last is not drawn.
constexpr std::size_t palette_columns = 23;
constexpr std::int32_t palette_row_places = 24;

/// The track palette, row by row: full, darker, darkest.
extern const std::array<std::uint32_t, 3 * palette_columns> track_palette;

/// Bodies of clips in the Classic theme, by the place in the row; 0 not measured.
extern const std::array<std::uint32_t, palette_row_places> clip_palette;

/// A colour that is given out unasked and was measured, by the place in the row, counted from 1.
struct MeasuredShade {
    std::int32_t place;
    std::uint32_t colour;
};

/// Tracks of the row in front of the palette.
extern const std::array<MeasuredShade, 2> low_row;

/// Clips of the Dark theme.
extern const std::array<MeasuredShade, 4> dark_shades;

/// One clip body in both themes, both 0xRRGGBB.
struct ThemePair {
    std::uint32_t classic_rgb;
    std::uint32_t dark_rgb;
};

extern const std::array<ThemePair, 10> dark_pairs;

/// The tint that the Classic theme draws a clip in for a place on the track palette, 0xRRGGBB:
/// those of ten rows of the cycle, told apart by their hue.
struct MeasuredTint {
    std::int32_t place;
    std::uint32_t rgb;
};

extern const std::array<MeasuredTint, 10> clip_tints;

/// Places on the track palette of tracks that nobody coloured, by the row in the edit window.
extern const std::array<std::int32_t, 16> row_cycle;

}  // namespace tanrove
