// The throw of Pro Tools' faders: where on its way down a fader stands at a level. Automation and
// drawn clip gain move the fader in a straight line, not the level.
#pragma once

#include <cstdint>
#include <span>

namespace tanrove {

/// A clip's gain has a throw of its own, with more room above 0 dB.
enum class FaderThrow : std::uint8_t { track, clip };

/// A place where the throw bends; it is straight in dB between two of them.
struct FaderCorner {
    double db = 0;
    double position = 0;  ///< grows on the way down
};

/// The corners of a throw from its top down.
std::span<const FaderCorner> fader_corners(FaderThrow fader);

/// The factor of a level in dB.
double gain_of_db(double db);

/// Where the fader stands at `db`. Everything below the lowest corner stands on it; above the
/// highest a track's fader goes on in a straight line, a clip's stays.
double fader_position(FaderThrow fader, double db);

/// The level at `position`: the inverse of `fader_position`, with the same ends.
double fader_db(FaderThrow fader, double position);

}  // namespace tanrove
