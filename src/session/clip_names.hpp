// The name of a clip, by which gain, warp, pitch and effects are kept.
#pragma once

#include <optional>
#include <string_view>

#include "session/block_index.hpp"

namespace tanrove {

constexpr std::uint16_t clip_name_type = 0x2628;

/// The name in a clip's 0x2628 block: u32 count at 9, 1 to 128 bytes of text. nullopt where it
/// breaks these limits.
std::optional<std::string_view> read_clip_name(ByteView image, const Block& clip);

}  // namespace tanrove
