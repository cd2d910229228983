// The session's meters as the project needs them: the first one, and each record that changes it.
#pragma once

#include <span>
#include <vector>

#include "session/meter_map.hpp"

namespace tanrove {

struct MeterChanges {
    bool has_map = false;                   ///< false: the session records no meter, 4/4 throughout
    MeterPoint first = {};                  ///< 4/4 without a map
    int measure_offset = 0;                 ///< of the session's first bar from bar 1
    std::vector<MeterPoint> changes = {};   ///< behind the first, in the order of the records
    std::vector<MeterPoint> repeated = {};  ///< records that repeat the meter in force; not written
};

/// Tells the changes of meter from the records that repeat the one before.
MeterChanges meter_changes(std::span<const MeterPoint> meters);

}  // namespace tanrove
