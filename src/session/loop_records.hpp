// Looped clips (Clip > Loop): the settings that stand with a placement.
#pragma once

#include <cstdint>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct LoopRecord {
    std::uint64_t key = 0;      ///< low half of the stored position, then the region, 32 bits each
    std::size_t placed_at = 0;  ///< where the placement's 0x104f begins in the image
    std::uint32_t mode = 0;     ///< 1 Loop Length, 2 number of loops
    std::uint32_t count = 0;    ///< passes
    std::uint32_t length = 0;   ///< samples
    std::uint32_t loop_extra = 0;
    std::uint16_t parent_type = 0;  ///< 0x1050 audio, 0x1056 MIDI, 0 where no block stands there
    bool in_group = false;          ///< the placement's region is the number of a clip group
    bool known_shape = false;       ///< false: the numbers could not be read
};

/// The key under which a placement's loop record stands.
constexpr std::uint64_t loop_key(std::uint64_t stored_position, std::uint32_t region) {
    return (stored_position & 0xffffffff) << 32 | region;
}

/// One record for each placement with loop settings, in image order.
std::vector<LoopRecord> readLoopRecords(const BlockIndex& index);

}  // namespace tanrove
