// The block test and the primitives of all session records.
#include "session/record_forms.hpp"

#include <algorithm>

namespace tanrove {

namespace {

constexpr std::size_t three_point_head = 5;
constexpr std::size_t widest_number = 8;

bool is_text_byte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= 0x20 && byte <= 0x7e) || (byte >= 0x80 && byte <= 0xbf) ||
           (byte >= 0xc2 && byte <= 0xf4);
}

bool is_ascii_byte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte <= 0x7e;
}

/// The number of `width` bytes at `at` if it ends at or before `limit`, else 0. Of eight bytes the
/// top one marks ticks and is no part of the number.
std::uint64_t bounded_number(ByteView image, std::size_t at, std::size_t width, std::size_t limit) {
    if (width == 0 || width > widest_number) return 0;
    if (at > limit || width > limit - at) return 0;
    return image.number(at, std::min(width, position_width));
}

}  // namespace

bool isBlockAt(ByteView image, std::size_t p, std::size_t limit) {
    limit = std::min(limit, image.size());
    if (p > limit || limit - p < block_size_base) return false;
    if (image.u8(p) != block_marker || image.u8(p + block_high_type_at) != 0) return false;
    const std::size_t size = image.u32(p + block_size_at);
    return size != 0 && size <= limit - p - block_size_base;
}

std::optional<ThreePoint> readThreePoint(ByteView image, std::size_t pos, std::size_t limit) {
    limit = std::min(limit, image.size());
    if (pos > limit || limit - pos < three_point_head) return std::nullopt;
    ThreePoint point;
    point.flag = image.u8(pos);
    point.unit_mark = image.u8(pos + 1) & 0x0f;
    point.first_width = image.u8(pos + 1) >> 4;
    point.second_width = image.u8(pos + 2) >> 4;
    point.gap_width = image.u8(pos + 2) & 0x0f;
    point.third_width = image.u8(pos + 3) >> 4;
    std::size_t at = pos + three_point_head;
    point.source_offset = bounded_number(image, at, point.first_width, limit);
    at += point.first_width;
    point.gap = bounded_number(image, at, point.gap_width, limit);
    at += point.gap_width;
    point.length = bounded_number(image, at, point.second_width, limit);
    at += point.second_width;
    point.start = bounded_number(image, at, point.third_width, limit);
    point.end = at + point.third_width;
    return point;
}

std::optional<std::string_view> readCountedText(ByteView image, std::size_t pos, std::size_t bound,
                                                std::size_t limit) {
    constexpr std::size_t count_width = 4;
    limit = std::min(limit, image.size());
    if (pos > limit || limit - pos < count_width) return std::nullopt;
    const std::size_t count = image.u32(pos);
    const std::size_t text_at = pos + count_width;
    if (count > bound || count > limit - text_at) return std::nullopt;
    return image.text(text_at, count);
}

std::optional<std::uint32_t> read_first_pointer(ByteView image) {
    const bool is_pointer = isBlockAt(image, first_block_at, image.size()) &&
                            image.u32(first_block_at + block_size_at) == pointer_block_size;
    if (!is_pointer) return std::nullopt;
    return image.u32(first_block_at + block_size_base);
}

std::optional<std::string_view> read_name(ByteView image, std::size_t pos, std::size_t limit) {
    const auto name = readCountedText(image, pos, max_name_bytes, limit);
    return name && is_session_text(*name) ? name : std::nullopt;
}

bool is_session_text(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return is_text_byte(c); });
}

bool is_ascii_text(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return is_ascii_byte(c); });
}

}  // namespace tanrove
