// Elastic audio: for each warped clip the points that tie the session's time to its file's samples.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct WarpPoint {
    double position = 0;  ///< session time, in the unit of its map
    double source_sample = 0;
};

using WarpMap = std::vector<WarpPoint>;

/// Where a map's origin lies on the timeline.
struct WarpAnchor {
    double position = 0;
    bool in_ticks = false;  ///< ticks from the session's origin, else samples

    /// In samples, ticks at this tempo.
    double samples(double bpm, double rate_hz) const {
        return in_ticks ? position * 60.0 / (bpm * ticks_per_quarter) * rate_hz : position;
    }
};

/// Maps by clip name. A clip has its map in one of the first two lists.
struct WarpMaps {
    std::map<std::string, WarpMap> in_samples;
    std::map<std::string, WarpMap> in_ticks;  ///< from the session's origin
    std::map<std::string, WarpAnchor> anchors;
};

WarpMaps readWarpMaps(const BlockIndex& index);

}  // namespace tanrove
