// Sync points: for each audio region the distance from the clip's head to its sync point.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct RegionStart {
    std::string name;
    std::uint64_t sync_samples = 0;  ///< 0 where the record fails or there is no sync point
};

/// One entry a region, in the order of the region lists.
std::vector<RegionStart> readRegionStarts(const BlockIndex& index);

}  // namespace tanrove
