// Memory locations: markers, selections, and locations with no time property.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

enum class LocationKind : std::uint8_t { none = 0, marker = 1, selection = 2 };

struct MemoryLocation {
    std::string name;
    std::string comment = {};
    std::uint32_t number = 0;  ///< the session's own number of the location
    std::uint32_t flags = 0;   ///< as stored
    LocationKind kind = LocationKind::none;
    double start = 0;  ///< ticks from the origin, or samples if `in_samples`
    double end = 0;    ///< likewise
    std::int32_t colour_slot = -2;
    std::int32_t colour_index = -1;
    std::int32_t colour_rgb = -1;  ///< 0xRRGGBB
    bool in_samples = false;
};

/// In session order, second copies left out.
std::vector<MemoryLocation> readMemoryLocations(const BlockIndex& index);

}  // namespace tanrove
