// Frame rates into REAPER's rulers. REAPER has them all but drop frame at 30 and at the multiples:
// there the ruler runs without dropping, at the right speed.
#include "project/timecode_ruler.hpp"

#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

/// A base rate as REAPER has it. The rates of 1000/1001 are written as REAPER shows them.
struct BaseRate {
    std::uint32_t code;
    std::string_view text;
    std::string_view label;
    double frames_a_second;
    int nominal_fps;
    DropMode drop_mode;
    bool drops_frames;
};

constexpr std::uint32_t code_24 = 1;

constexpr BaseRate base_rates[] = {
    {code_24, "24", "24 fps", 24, 24, DropMode::none, false},
    {2, "25", "25 fps", 25, 25, DropMode::none, false},
    {3, "29.97", "29.97 fps", 29.97002997, 30, DropMode::non_drop, false},
    {5, "29.97 drop", "29.97 fps drop frame", 29.97002997, 30, DropMode::drop, true},
    {8, "30 drop", "30 fps drop frame", 30, 30, DropMode::none, true},
    {9, "23.976", "23.976 fps", 23.97602398, 24, DropMode::non_drop, false},
};

constexpr BaseRate any_other_rate = {7, "30", "30 fps", 30, 30, DropMode::none, false};

constexpr int dropped_a_minute_at_30 = 2;

const BaseRate& base_rate(std::uint32_t code) {
    for (const BaseRate& rate : base_rates) {
        if (rate.code == code) return rate;
    }
    return any_other_rate;
}

TimecodeRuler ruler_at(const BaseRate& rate, int multiplier, std::uint32_t start_frames) {
    TimecodeRuler ruler;
    ruler.offset_seconds = start_frames / (multiplier * rate.frames_a_second);
    ruler.nominal_fps = rate.nominal_fps * multiplier;
    ruler.drop_mode = rate.drop_mode;
    ruler.rate = rate.text;
    ruler.label = rate.label;
    ruler.session_drops_frames = rate.drops_frames;
    const int dropped = rate.drops_frames ? dropped_a_minute_at_30 * multiplier : 0;
    ruler.start = timecode_text(start_frames, ruler.nominal_fps, dropped);
    return ruler;
}

}  // namespace

TimecodeRuler plan_timecode_ruler(const std::optional<FrameRate>& base,
                                  const std::optional<ExtendedTimecode>& extended) {
    if (!base) return {};
    const BaseRate& rate = base_rate(base->base_code);
    const TimecodeInfo* row = find_timecode(*base, extended);
    const bool is_high_rate = extended && row != nullptr && row->multiplier > 1;

    TimecodeRuler ruler =
        is_high_rate ? ruler_at(rate, static_cast<int>(row->multiplier), extended->start_frames)
                     : ruler_at(rate, 1, base->start_frames);
    if (row != nullptr) {
        ruler.label = row->name;
        ruler.runs_at = row->falls_back_to;
    } else if (ruler.session_drops_frames && ruler.drop_mode == DropMode::none) {
        ruler.runs_at = any_other_rate.text;
    }
    if (is_high_rate) {
        ruler.rate = row->short_name;
        if (ruler.drop_mode == DropMode::drop) ruler.drop_mode = DropMode::non_drop;
    }
    const bool is_default = base->start_frames == 0 && ruler.drop_mode == DropMode::none &&
                            ruler.nominal_fps == any_other_rate.nominal_fps;
    ruler.written = is_high_rate || !is_default;
    ruler.may_be_pulled_down = base->base_code == code_24 && !extended;
    return ruler;
}

std::string timecode_text(std::uint32_t frames, int nominal_fps, int dropped_a_minute) {
    const long long fps = nominal_fps;
    const long long dropped = dropped_a_minute;
    const long long minute = fps * 60 - dropped;
    const long long ten_minutes = minute * 10 + dropped;
    const long long in_ten_minutes = frames % ten_minutes;

    // The frame's number: what was counted, and the numbers left out on the way to it.
    long long number = frames + 9 * dropped * (frames / ten_minutes);
    if (in_ten_minutes >= fps * 60) {
        number += dropped * ((in_ten_minutes - dropped) / minute);
    }
    const long long seconds = number / fps;
    return formatted("%02lld:%02lld:%02lld%c%02lld", seconds / 3600, seconds / 60 % 60,
                     seconds % 60, dropped > 0 ? ';' : ':', number % fps);
}

}  // namespace tanrove
