// The slow way to find blocks: every byte is tried, once, and every question walks the whole list.
// Readers that walk the block index are held against twins that are written with this.
#pragma once

#include <optional>
#include <vector>

#include "session/block_index.hpp"
#include "session/record_forms.hpp"

namespace tanrove {

class SlowScan {
public:
    explicit SlowScan(ByteView bytes) : image(bytes) {
        for (std::size_t p = 0; p + block_payload_at <= image.size(); ++p) {
            if (!isBlockAt(image, p, image.size())) continue;
            all_.push_back({p, image.u32(p + block_size_at), image.u16(p + block_content_at)});
        }
    }

    /// Every block of a type that begins at or behind `from` and ends at or before `end`.
    std::vector<Block> blocks(std::uint16_t type, std::size_t from = 0,
                              std::size_t end = static_cast<std::size_t>(-1)) const {
        std::vector<Block> found;
        for (const Block& block : all_) {
            if (block.content_type == type && block.at >= from && block.end() <= end) {
                found.push_back(block);
            }
        }
        return found;
    }

    std::optional<Block> first(std::uint16_t type, std::size_t from, std::size_t end) const {
        const auto found = blocks(type, from, end);
        return found.empty() ? std::nullopt : std::optional(found.front());
    }

    const ByteView image;

private:
    std::vector<Block> all_;
};

}  // namespace tanrove
