// The bytes of one settings block as the searches for its state see them: everything up to the
// chunk limit, and the few ways of looking at bytes that the searches share. Plug-ins write
// big-endian numbers where the session itself never does.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/byte_view.hpp"

namespace tanrove {

// Places in a settings block, counted from its 'Z'.
constexpr std::size_t settings_code_at = 25;
constexpr std::size_t settings_code_bytes = 8;
constexpr std::size_t settings_text_at = 33;

/// One settings block. Positions are offsets into the image.
struct StateSpan {
    ByteView image;
    std::size_t start = 0;      ///< the block's 'Z'
    std::size_t limit = 0;      ///< the chunk limit: the state ends in front of it
    std::size_t block_end = 0;  ///< behind the block's last byte

    /// The image cut at the chunk limit, so that no read passes it.
    ByteView bytes() const { return image.window(0, limit); }

    /// True if `count` bytes at `at` end at or before the chunk limit.
    bool holds(std::size_t at, std::size_t count) const {
        return at <= limit && count <= limit - at;
    }
};

inline std::uint32_t big_endian_u32(ByteView bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | bytes.u8(at + i);
    return value;
}

inline double big_endian_f64(ByteView bytes, std::size_t at) {
    const std::uint64_t high = big_endian_u32(bytes, at);
    return std::bit_cast<double>(high << 32 | big_endian_u32(bytes, at + 4));
}

inline bool is_printable(std::uint8_t byte) {
    return byte >= 0x20 && byte <= 0x7e;
}

/// Printable, or a tab or line end: a byte of a state that is text.
inline bool is_state_text(std::uint8_t byte) {
    return is_printable(byte) || byte == '\t' || byte == '\n' || byte == '\r';
}

/// Bytes from `at` on that are printable, up to `most`.
inline std::size_t printable_length(ByteView bytes, std::size_t at, std::size_t most) {
    std::size_t count = 0;
    while (count < most && bytes.holds(at + count, 1) && is_printable(bytes.u8(at + count))) {
        ++count;
    }
    return count;
}

/// True if the `count` bytes at `at` are printable text with nothing but zeros behind it.
inline bool is_padded_text(ByteView bytes, std::size_t at, std::size_t count) {
    const auto field = bytes.window(at, count).span();
    const auto tail = field.subspan(printable_length(bytes, at, field.size()));
    return std::all_of(tail.begin(), tail.end(), [](std::uint8_t byte) { return byte == 0; });
}

/// True if a zlib stream may begin at `at`: the two bytes of its header.
inline bool is_zlib_header(ByteView bytes, std::size_t at) {
    if (!bytes.holds(at, 2) || bytes.u8(at) != 'x') return false;
    const auto level = bytes.u8(at + 1);
    return level == 0x9c || level == 0x01 || level == 0xda || level == 0x5e;
}

/// A length as records keep it.
inline std::uint32_t chunk_bytes(std::size_t count) {
    constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::min(count, most));
}

}  // namespace tanrove
