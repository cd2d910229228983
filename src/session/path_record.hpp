// What the two records of an I/O path have in common, the hardware's (0x1021) and the session's own
// (0x2602): how they begin, n being the bytes of the name and c the channels.
//
//   9            u8 type
//   10           u8 width code
//   11           u32 n, 1 to 255, name at 15
//   15 + n       u32 c, then c u16 channel numbers
//   behind them  u16 place of the path it is a part of, 0xffff for none
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "session/io_paths.hpp"

namespace tanrove::path_record {

constexpr std::size_t type_at = 9;
constexpr std::size_t width_at = 10;
constexpr std::size_t name_length_at = 11;
constexpr std::size_t name_at = 15;
constexpr std::size_t count_width = 4;
constexpr std::size_t channel_width = 2;
constexpr std::size_t max_channels = 16;

inline void read_channels(ByteView image, std::size_t at, std::size_t count, IoPath& path) {
    for (std::size_t i = 0; i < count; ++i) {
        path.channels.push_back(image.u16(at + i * channel_width));
    }
}

/// The identity behind the marker that begins at `marker`.
inline void read_identity(ByteView image, std::size_t marker, IoPath& path) {
    path.identity_low = image.u32(marker + identity_marker.size());
    path.identity_high = image.u32(marker + identity_marker.size() + 4);
}

inline std::optional<std::uint16_t> read_parent(ByteView image, std::size_t behind_channels) {
    constexpr std::uint16_t none = 0xffff;
    const std::uint16_t parent = image.u16(behind_channels);
    return parent == none ? std::nullopt : std::optional(parent);
}

}  // namespace tanrove::path_record
