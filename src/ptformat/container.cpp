// Block header: u8 'Z' at 0, u16 block type at 1 (never over 255), u32 size at 3, u16 content type
// at 7. In big-endian sessions all fields are turned round, which puts the type's zero byte first;
// only the numbers of a three-point header, each of as many bytes as it needs, stay little-endian.
#include "ptformat/container.hpp"

#include <algorithm>

#include "ptformat/cipher.hpp"

namespace tanrove::ptformat {

namespace {

constexpr std::uint8_t block_marker = 'Z';
constexpr std::size_t block_header_bytes = 9;
constexpr std::size_t block_size_base = 7;
constexpr std::size_t smallest_block_size = 2;  // the content type itself
constexpr std::uint32_t pointer_block_size = 4;

// A three-point header: u8 flag, u32 of number widths, then the numbers.
constexpr std::size_t widths_at = 1;
constexpr std::size_t numbers_at = 5;
constexpr std::size_t widest_number = 8;
constexpr std::size_t widest_value = 7;  // the top one of 8 bytes marks ticks

std::uint64_t narrow_number(ByteView bytes, std::size_t at, std::size_t width, std::size_t limit) {
    if (width == 0 || width > widest_number) return 0;
    if (at > limit || width > limit - at) return 0;
    return bytes.number(at, std::min(width, widest_value));
}

}  // namespace

bool ChainBlock::is_one_of(std::initializer_list<std::uint16_t> types) const {
    return std::find(types.begin(), types.end(), content_type) != types.end();
}

/// A session's first block holds no type but a position, which can read as any type.
Container::Container(ByteView image)
    : image_(image), big_endian_(ptformat::is_big_endian(image)), chain_at_(header_bytes) {
    const auto first = block_at(header_bytes, image_.size());
    if (first && first->size == pointer_block_size) chain_at_ = first->end();
    std::size_t p = chain_at_;
    while (const auto block = next_block(p, image_.size())) {
        top_level_.push_back(*block);
        p = block->end();
    }
}

std::uint64_t Container::number(std::size_t at, std::size_t width) const {
    if (!big_endian_) return image_.number(at, width);
    if (!image_.holds(at, width)) return 0;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value = value << 8 | image_.u8(at + i);
    return value;
}

std::uint16_t Container::u16(std::size_t at) const {
    return static_cast<std::uint16_t>(number(at, 2));
}

std::uint32_t Container::u32(std::size_t at) const {
    return static_cast<std::uint32_t>(number(at, 4));
}

std::uint64_t Container::u64(std::size_t at) const {
    return number(at, 8);
}

std::uint64_t Container::position(std::size_t at) const {
    return u64(at) & 0x00ffffffffffffffULL;
}

std::string Container::text(std::size_t at, std::size_t bound, std::size_t limit) const {
    limit = std::min(limit, image_.size());
    if (at > limit || limit - at < 4) return {};
    const std::size_t text_at = at + 4;
    const std::size_t count = std::min({std::size_t{u32(at)}, bound, limit - text_at});
    return std::string(image_.text(text_at, count).value_or(""));
}

ClipSpan Container::clip_span(std::size_t at, std::size_t limit) const {
    limit = std::min(limit, image_.size());
    if (at > limit || limit - at < numbers_at) return {};
    const std::uint32_t widths = u32(at + widths_at);
    const std::size_t first = widths >> 4 & 0x0f;
    const std::size_t gap = widths >> 8 & 0x0f;
    const std::size_t second = widths >> 12 & 0x0f;
    const std::size_t third = widths >> 20 & 0x0f;
    const std::size_t second_at = at + numbers_at + first + gap;
    return {
        .source_offset = narrow_number(image_, at + numbers_at, first, limit),
        .length = narrow_number(image_, second_at, second, limit),
        .start = narrow_number(image_, second_at + second, third, limit),
    };
}

std::optional<ChainBlock> Container::block_at(std::size_t p, std::size_t limit) const {
    limit = std::min(limit, image_.size());
    if (p > limit || limit - p < block_header_bytes) return std::nullopt;
    if (image_.u8(p) != block_marker || u16(p + 1) > 0xff) return std::nullopt;
    const ChainBlock block{.at = p, .size = u32(p + 3), .content_type = u16(p + 7)};
    if (block.size < smallest_block_size || block.size > limit - p - block_size_base) {
        return std::nullopt;
    }
    return block;
}

std::optional<ChainBlock> Container::next_block(std::size_t from, std::size_t limit) const {
    const ByteView before_limit = image_.window(0, limit);
    for (std::size_t p = before_limit.find(block_marker, from); p != ByteView::npos;
         p = before_limit.find(block_marker, p + 1)) {
        if (auto block = block_at(p, limit)) return block;
    }
    return std::nullopt;
}

std::optional<ChainBlock> Container::first_of_type(std::uint16_t type) const {
    for (const ChainBlock& block : top_level_) {
        if (block.content_type == type) return block;
    }
    for (auto block = next_block(chain_at_, image_.size()); block;
         block = next_block(block->at + 1, image_.size())) {
        if (block->content_type == type) return block;
    }
    return std::nullopt;
}

std::vector<ChainBlock> Container::scan(std::initializer_list<std::uint16_t> types) const {
    std::vector<ChainBlock> found;
    for (auto block = next_block(chain_at_, image_.size()); block;
         block = next_block(block->at + 1, image_.size())) {
        if (block->is_one_of(types)) found.push_back(*block);
    }
    return found;
}

std::optional<ChainBlock> Container::first_child(const ChainBlock& parent) const {
    return next_block(parent.payload(), parent.end());
}

std::vector<ChainBlock> Container::children(const ChainBlock& parent,
                                            std::initializer_list<std::uint16_t> types) const {
    std::vector<ChainBlock> found;
    for (auto child = first_child(parent); child; child = next_block(child->end(), parent.end())) {
        if (child->is_one_of(types)) found.push_back(*child);
    }
    return found;
}

}  // namespace tanrove::ptformat
