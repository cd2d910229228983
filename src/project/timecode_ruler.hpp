// The project's start time and ruler, from the session's frame rate and Session Start.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "session/timecode.hpp"

namespace tanrove {

/// REAPER's names for how a ruler counts frames.
enum class DropMode : std::int8_t {
    none = 0,
    drop = 1,
    non_drop = 2,  ///< a rate of 1000/1001 that drops no number
};

/// What the project's two lines hold, and what the account says about them.
struct TimecodeRuler {
    bool written = false;       ///< false: nothing stored, or what REAPER does by itself
    double offset_seconds = 0;  ///< of the project's start
    int nominal_fps = 30;
    DropMode drop_mode = DropMode::none;

    std::string_view rate;   ///< "29.97 drop"; empty where the session stores no rate
    std::string_view label;  ///< "29.97 fps drop frame"; likewise
    std::string start;       ///< Session Start as timecode
    bool session_drops_frames = false;
    std::string_view runs_at;  ///< rate that stands in for one that REAPER cannot drop frames at
    bool may_be_pulled_down = false;  ///< 24, where 23.976 would be stored alike
};

TimecodeRuler plan_timecode_ruler(const std::optional<FrameRate>& base,
                                  const std::optional<ExtendedTimecode>& extended);

/// A count of frames as "01:00:00:00", behind `dropped_a_minute` above 0 as "01:00:00;00": that
/// many frame numbers are then left out each minute but the tenths.
std::string timecode_text(std::uint32_t frames, int nominal_fps, int dropped_a_minute);

}  // namespace tanrove
