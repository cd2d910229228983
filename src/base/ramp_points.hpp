// The points that make a volume ramp of REAPER follow a fader of Pro Tools.
#pragma once

#include <vector>

#include "base/fader_law.hpp"

namespace tanrove {

/// A place on a ramp between two breakpoints.
struct RampPoint {
    double fraction = 0;  ///< of the time between the breakpoints, above 0 and below 1
    double db = 0;
};

/// The points to write between two breakpoints so that straight lines of gain between them stay
/// within 0.1 dB of a fader that moves evenly from `from_db` to `to_db`. Neighbours lie at most
/// 1.5 dB apart, breakpoints on the throw included. None where the two levels are that close
/// already and the throw does not bend between them.
std::vector<RampPoint> ramp_points(FaderThrow fader, double from_db, double to_db);

}  // namespace tanrove
