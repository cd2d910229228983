// The session's meters: the first one and every change, at ticks.
#pragma once

#include <cstdint>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct MeterPoint {
    std::int64_t tick = 0;  ///< from the session's origin
    std::int32_t bar = 0;
    std::uint32_t numerator = 4;
    std::uint32_t denominator = 4;
    std::uint32_t extra = 0;  ///< as stored, used by no one
};

/// In order of the record; empty where the session has no meter map or a broken one.
std::vector<MeterPoint> readMeterMap(const BlockIndex& index);

}  // namespace tanrove
