// From a place on a palette of Pro Tools to the colour that REAPER shows, in both themes.
#pragma once

#include <cstdint>
#include <optional>

namespace tanrove {

/// REAPER's mark of a colour that was chosen.
constexpr std::uint32_t colour_is_set = 0x1000000U;

/// How a colour was made.
enum class ColourQuality : std::uint8_t {
    measured = 1,
    tinted = 2,
    invented = 3,      ///< only meant to keep what shares a place together
    not_measured = 9,  ///< there is none
};

/// The colour of a track with this place, 0x1BBGGRR. A place off the palette gets a colour of its
/// own.
std::uint32_t trackColour(std::int32_t index, ColourQuality& quality);

/// The body of a clip with this place in the Classic theme, 0x1BBGGRR; nullopt where its shade was
/// never measured, and the clip keeps its track's colour.
std::optional<std::uint32_t> clipColour(std::int32_t index, ColourQuality& quality);

/// A clip's body in the Classic theme where a coding draws it, by the place that the coding gives.
struct ClipTint {
    std::uint32_t colour = 0;  ///< 0x1BBGGRR
    bool measured = false;     ///< else made by a rule that comes close to the measured ones
};

/// The tint for a place on the track palette; one that is on no palette is tinted as its colour is.
ClipTint clip_tint(std::int32_t place);

/// A clip's body in the Dark theme.
struct DarkColour {
    std::uint32_t colour = 0;  ///< 0x1BBGGRR
    bool measured = false;     ///< else derived from the Classic theme's
};

/// What the Dark theme makes of a clip that is `colour` (0xBBGGRR) in the Classic theme.
DarkColour darkClipColour(std::uint32_t colour);

/// True if Pro Tools gives the place out by itself, in front of those that a hand can pick.
bool is_auto_assigned(std::int32_t index);

/// A clip's body for an auto-assigned place in the Dark theme; nullopt for the last of each row.
std::optional<DarkColour> darkIndexColour(std::int32_t index);

/// Place on the track palette of the track in this row of the edit window, counted from 1.
std::int32_t rowIndex(std::int64_t row);

}  // namespace tanrove
