// The name of a clip, by which gain, warp, pitch and effects are kept, and what kind of clip it is:
// clips of several kinds may share a name.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "session/block_index.hpp"

namespace tanrove {

/// What a clip's 0x2628 belongs to, which is the record that it opens.
enum class ClipKind : std::uint8_t {
    audio,  ///< 0x2629
    group,  ///< 0x262b
    other,  ///< MIDI and video
};

ClipKind clip_kind(const BlockIndex& index, const Block& clip);

/// The name in a clip's 0x2628 block: u32 count at 9, 1 to 128 bytes of text. nullopt where it
/// breaks these limits.
std::optional<std::string_view> read_clip_name(ByteView image, const Block& clip);

}  // namespace tanrove
