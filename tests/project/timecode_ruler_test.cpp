// Frame rates and starts into the project's ruler.
#include "project/timecode_ruler.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

constexpr double pull_down = 1000.0 / 1001.0;

TEST(TimecodeRuler, FollowsTheBaseRate) {
    const struct {
        std::uint32_t code;
        std::uint32_t start;
        bool written;
        double offset;
        int fps;
        DropMode mode;
        std::string_view rate;
        std::string start_text;
    } cases[] = {
        {1, 0, true, 0, 24, DropMode::none, "24", "00:00:00:00"},
        {2, 90000, true, 3600, 25, DropMode::none, "25", "01:00:00:00"},
        {3, 0, true, 0, 30, DropMode::non_drop, "29.97", "00:00:00:00"},
        {3, 108000, true, 3600 / pull_down, 30, DropMode::non_drop, "29.97", "01:00:00:00"},
        {5, 107892, true, 3596.4 / pull_down, 30, DropMode::drop, "29.97 drop", "01:00:00;00"},
        {7, 0, false, 0, 30, DropMode::none, "30", "00:00:00:00"},
        {7, 1, true, 1.0 / 30, 30, DropMode::none, "30", "00:00:00:01"},
        {8, 0, false, 0, 30, DropMode::none, "30 drop", "00:00:00;00"},
        {8, 1800, true, 60, 30, DropMode::none, "30 drop", "00:01:00;02"},
        {9, 86400, true, 3600 / pull_down, 24, DropMode::non_drop, "23.976", "01:00:00:00"},
        {4, 30, true, 1, 30, DropMode::none, "30", "00:00:01:00"},
        {255, 0, false, 0, 30, DropMode::none, "30", "00:00:00:00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.code << " from " << c.start);
        const auto ruler = plan_timecode_ruler(FrameRate{c.code, c.start}, std::nullopt);
        EXPECT_EQ(ruler.written, c.written);
        EXPECT_NEAR(ruler.offset_seconds, c.offset, 1e-6);
        EXPECT_EQ(ruler.nominal_fps, c.fps);
        EXPECT_EQ(ruler.drop_mode, c.mode);
        EXPECT_EQ(ruler.rate, c.rate);
        EXPECT_EQ(ruler.start, c.start_text);
    }
    EXPECT_FALSE(plan_timecode_ruler(std::nullopt, std::nullopt).written);
}

TEST(TimecodeRuler, FollowsAHighRateWhereTheTwoStartsAgree) {
    const struct {
        FrameRate base;
        ExtendedTimecode extended;
        double offset;
        int fps;
        DropMode mode;
        std::string_view runs_at;
        std::string start_text;
    } cases[] = {
        {{2, 25}, {10, 51}, 51 / 50.0, 50, DropMode::none, "", "00:00:01:01"},
        {{2, 0}, {17, 3}, 3 / 100.0, 100, DropMode::none, "", "00:00:00:03"},
        {{7, 0}, {13, 0}, 0, 60, DropMode::none, "", "00:00:00:00"},
        {{5, 1800}, {12, 3600}, 60 / pull_down, 60, DropMode::non_drop, "59.94", "00:01:00;04"},
        {{8, 0}, {14, 0}, 0, 60, DropMode::none, "60", "00:00:00;00"},
        // The starts differ, or the record names another rate: the base record stands.
        {{2, 25}, {10, 52}, 1, 25, DropMode::none, "", "00:00:01:00"},
        {{2, 25}, {11, 50}, 1, 25, DropMode::none, "", "00:00:01:00"},
        {{2, 25}, {2, 25}, 1, 25, DropMode::none, "", "00:00:01:00"},
        {{8, 1800}, {8, 5}, 60, 30, DropMode::none, "30", "00:01:00;02"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.base.base_code << ' ' << c.extended.code);
        const auto ruler = plan_timecode_ruler(c.base, c.extended);
        EXPECT_TRUE(ruler.written);
        EXPECT_NEAR(ruler.offset_seconds, c.offset, 1e-6);
        EXPECT_EQ(ruler.nominal_fps, c.fps);
        EXPECT_EQ(ruler.drop_mode, c.mode);
        EXPECT_EQ(ruler.runs_at, c.runs_at);
        EXPECT_EQ(ruler.start, c.start_text);
    }
}

TEST(TimecodeText, LeavesOutTheFirstNumbersOfEachMinuteButTheTenths) {
    const int frames_a_minute = 30 * 60 - 2;
    const int frames_in_ten_minutes = 10 * frames_a_minute + 2;
    EXPECT_EQ(timecode_text(1799, 30, 2), "00:00:59;29");
    EXPECT_EQ(timecode_text(1800, 30, 2), "00:01:00;02");
    EXPECT_EQ(timecode_text(1800 + frames_a_minute, 30, 2), "00:02:00;02");
    EXPECT_EQ(timecode_text(frames_in_ten_minutes - 1, 30, 2), "00:09:59;29");
    EXPECT_EQ(timecode_text(frames_in_ten_minutes, 30, 2), "00:10:00;00");
    EXPECT_EQ(timecode_text(24 * 3600 * 25, 25, 0), "24:00:00:00");
}

}  // namespace
}  // namespace tanrove
