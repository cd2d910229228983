// The block header and the number and text forms that all session records share.
//
// A block: u8 'Z' at 0, u16 block type at 1 (never over 255), u32 size at 3 (the bytes behind
// offset 6), u16 content type at 7 (counted inside the size), payload from 9. It ends at 7 + size.
// Blocks nest at no fixed place; records are told apart by their content type alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/byte_view.hpp"
#include "base/session_numbers.hpp"

namespace tanrove {

constexpr std::uint8_t block_marker = 'Z';
constexpr std::size_t block_high_type_at = 2;  // zero in every real header
constexpr std::size_t block_size_at = 3;
constexpr std::size_t block_content_at = 7;
constexpr std::size_t block_payload_at = 9;
constexpr std::size_t block_size_base = 7;  // the size counts from here

/// A session's first block stands behind the file's header. It holds no type but a u32: the
/// position of the session's own list of its blocks, which stands last.
constexpr std::size_t first_block_at = 20;
constexpr std::uint32_t pointer_block_size = 4;

/// The position that the first block holds; nullopt where a block of another kind comes first.
std::optional<std::uint32_t> read_first_pointer(ByteView image);

/// Ticks count from `tick_origin`, so many to a quarter note.
constexpr double ticks_per_quarter = 960000.0;

/// Timeline positions are fields of 8 bytes whose top byte tells the unit; the number is what the
/// lower seven hold.
constexpr std::size_t position_width = 7;
constexpr std::uint8_t ticks_top_byte = 0x40;
constexpr std::uint8_t frames_top_byte = 0x10;

/// The four bytes that stand in front of a 64-bit object identity.
constexpr std::string_view identity_marker("*\0\0\0", 4);

/// True if a block begins at `p`: 'Z', a zero high byte of the type, a size that is not zero, and
/// an end that does not pass `limit` (nor the image).
bool isBlockAt(ByteView image, std::size_t p, std::size_t limit);

/// Unsigned number of `k` bytes, 1 to 8; 0 if it passes the image's end.
inline std::uint64_t readWide(ByteView image, std::size_t pos, std::size_t k) {
    return image.number(pos, k);
}

/// A timeline position (56 bits) at `pos`, as stored: samples, or ticks that count from
/// `tick_origin`. 0 if it passes the image's end.
inline std::uint64_t read_position(ByteView image, std::size_t pos) {
    return image.number(pos, position_width);
}

/// How far a stored position lies from the tick origin, on whichever side of it.
constexpr std::uint64_t distance_from_origin(std::uint64_t stored) {
    return stored < tick_origin ? tick_origin - stored : stored - tick_origin;
}

/// Source offset, length and start of a clip, each of as many bytes as its header says.
struct ThreePoint {
    std::uint8_t flag = 0;
    std::uint8_t unit_mark = 0;    ///< what the numbers count: 0 samples, 1 ticks, 2 frames
    std::size_t first_width = 0;   ///< bytes of `source_offset`, 0 to 15 as stored
    std::size_t second_width = 0;  ///< bytes of `length`
    std::size_t third_width = 0;   ///< bytes of `start`
    std::size_t gap_width = 0;     ///< bytes between the first and the second number
    std::uint64_t source_offset = 0;
    std::uint64_t gap = 0;  ///< the number that the gap holds, 0 if wider than 8
    std::uint64_t length = 0;
    std::uint64_t start = 0;
    std::size_t end = 0;  ///< position behind the third number
};

/// The three-point header at `pos`, its numbers ending at or before `limit`. A number whose width
/// is 0 or above 8, or that passes the end, reads as 0; the stored widths are kept, so that each
/// reader can hold them against its own limits. nullopt if the five header bytes do not fit.
std::optional<ThreePoint> readThreePoint(ByteView image, std::size_t pos, std::size_t limit);

/// Text with a u32 count in front: `bound` is the largest count believed, `limit` the position that
/// the text must not pass. nullopt beyond either. An empty text is a text.
std::optional<std::string_view> readCountedText(ByteView image, std::size_t pos, std::size_t bound,
                                                std::size_t limit);

/// Most bytes of a name that stands in a block of its own kind.
constexpr std::size_t max_name_bytes = 255;

/// The name of at most `max_name_bytes` whose count stands at `pos`; nullopt where it is no text or
/// passes `limit`. It can be empty.
std::optional<std::string_view> read_name(ByteView image, std::size_t pos, std::size_t limit);

/// True if every byte is printable ASCII or part of a UTF-8 sequence.
bool is_session_text(std::string_view text);

/// The same for fields that hold ASCII only.
bool is_ascii_text(std::string_view text);

}  // namespace tanrove
