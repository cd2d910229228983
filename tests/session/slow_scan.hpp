// The slow way to find blocks: every byte is tried. Readers that walk the block index are held
// against twins that are written with these.
#pragma once

#include <optional>
#include <vector>

#include "session/block_index.hpp"
#include "session/block_scan.hpp"

namespace tanrove::slow {

/// Every block of a type that begins at or behind `from` and ends at or before `end`.
inline std::vector<Block> blocks(ByteView image, std::uint16_t type, std::size_t from,
                                 std::size_t end) {
    std::vector<Block> found;
    for (std::size_t p = from; p + block_payload_at <= std::min(end, image.size()); ++p) {
        if (isBlockAt(image, p, end) && image.u16(p + block_content_at) == type) {
            found.push_back({p, image.u32(p + block_size_at), type});
        }
    }
    return found;
}

inline std::vector<Block> blocks(ByteView image, std::uint16_t type) {
    return blocks(image, type, 0, image.size());
}

inline std::optional<Block> first(ByteView image, std::uint16_t type, std::size_t from,
                                  std::size_t end) {
    const auto found = blocks(image, type, from, end);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

}  // namespace tanrove::slow
