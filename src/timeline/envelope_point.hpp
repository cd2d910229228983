// A point of a REAPER envelope, of a track or of a take.
#pragma once

namespace tanrove {

/// REAPER's shapes of the way from a point to the next.
constexpr int linear_shape = 0;
constexpr int square_shape = 1;

struct EnvelopePoint {
    double seconds = 0;
    double value = 0;  ///< linear gain, pan, or 0 and 1 of a mute
    int shape = linear_shape;
};

}  // namespace tanrove
