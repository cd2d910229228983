// Sync points: for each audio region the distance from the clip's head to its sync point.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/byte_view.hpp"
#include "session/block_tree.hpp"

namespace tanrove {

struct RegionStart {
    std::string name;
    std::uint64_t sync_samples = 0;  ///< 0 where the record fails or there is no sync point
};

/// One entry a region, in the order of the region lists. `tree` is that of the session's lists.
std::vector<RegionStart> readRegionStarts(ByteView image, std::span<const BlockNode> tree);

}  // namespace tanrove
