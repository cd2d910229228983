// A point of a REAPER envelope, of a track or of a take.
#pragma once

namespace tanrove {

struct EnvelopePoint {
    double seconds = 0;
    double value = 0;  ///< linear gain, pan, or 0 and 1 of a mute
    int shape = 0;     ///< 0 linear, 1 square
};

}  // namespace tanrove
