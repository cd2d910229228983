// The project's pan law, from the session's pan depth.
#pragma once

#include <optional>

namespace tanrove {

struct PanLaw {
    int stored = -1;       ///< the session's own code; -1 where it has none
    bool known = false;    ///< false: the code is not one of ours, Pro Tools' default stands in
    double depth_db = -3;  ///< of a centred track
    double gain = 0.7079457844;  ///< as REAPER stores that setting
    int flags = 0;               ///< of the PANLAWFLAGS line, 0 for no line
    double worst_error_db = 0;   ///< of a track panned part of the way
};

PanLaw pan_law(std::optional<int> pan_depth);

}  // namespace tanrove
