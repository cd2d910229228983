// The session settings record (0x1028): audio format, pan depth, bit depth; and the click's switch.
#pragma once

#include <cstdint>
#include <optional>

#include "session/block_index.hpp"

namespace tanrove {

enum class AudioFormat : std::uint8_t { unknown, wav, aiff };

struct BitDepth {
    int bits = 0;  ///< 16, 24 or 32
    bool is_float = false;
};

/// `unknown` where the session has no settings record.
AudioFormat readAudioFormat(const BlockIndex& index);
std::optional<BitDepth> readBitDepth(const BlockIndex& index);
/// The stored pan depth code; nullopt where there is none to read.
std::optional<int> readPanDepth(const BlockIndex& index);

/// 1 on, 0 off, -1 unknown.
int readClickSetting(const BlockIndex& index);

}  // namespace tanrove
