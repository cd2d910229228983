// The session's frame rate and start time.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "session/block_index.hpp"

namespace tanrove {

/// The base record: frame rate code and session start in frames of the base rate.
struct FrameRate {
    std::uint32_t base_code = 0;
    std::uint32_t start_frames = 0;
};

/// The second record: a high frame rate's own code and the start in frames of that rate.
struct ExtendedTimecode {
    std::uint32_t code = 0;
    std::uint32_t start_frames = 0;
};

/// One row of the table of frame rates.
struct TimecodeInfo {
    std::uint32_t extended_code = 0;
    std::uint32_t base_code = 0;
    std::uint32_t multiplier = 1;
    std::string_view short_name;     ///< "29.97 drop"
    std::string_view name;           ///< "29.97 fps drop frame"
    std::string_view falls_back_to;  ///< rate used instead where REAPER lacks this one; else empty
};

/// nullopt where the session has no timecode record.
std::optional<FrameRate> readFrameRate(const BlockIndex& index);
/// nullopt where that record ends before the second form, as sessions of Pro Tools 12 do.
std::optional<ExtendedTimecode> readExtendedTimecode(const BlockIndex& index);

/// The row that a session's two records name: without an extended record the first row of the base
/// code with multiplier 1; with one, the first row of that base code whose extended code is the
/// record's and whose start, divided by the multiplier, is the base record's. nullptr if none is.
const TimecodeInfo* find_timecode(const FrameRate& base,
                                  const std::optional<ExtendedTimecode>& extended);

}  // namespace tanrove
