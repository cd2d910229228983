// Fade records (0x262f): one per fade or crossfade, numbered in image order; fade rows of the
// playlists name them by that number.
#pragma once

#include <cstdint>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

enum class FadeKind : std::uint8_t { unusable = 0, crossfade = 1, fade_out = 2, fade_in = 3 };

struct FadeRecord {
    FadeKind kind = FadeKind::unusable;
    double pre = 0;           ///< samples in front of the fade's centre
    double length = 0;        ///< samples of the whole fade
    std::uint32_t slope = 0;  ///< curve family
    bool linked = false;
    std::int32_t x = 0;  ///< handle pair
    std::int32_t y = 0;
    bool has_handles = false;
    std::int32_t in_type = 0;
    std::int32_t in_setting = 0;
    std::int32_t out_type = 0;
    std::int32_t out_setting = 0;
    bool has_shapes = false;
};

/// Every fade block gives a record, `kind` unusable included.
std::vector<FadeRecord> readFades(const BlockIndex& index);

}  // namespace tanrove
