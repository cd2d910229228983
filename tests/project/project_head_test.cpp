// The head of a project as text, whole, and the small settings that it holds.
#include "project/project_head.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "support/golden_text.hpp"

namespace tanrove {
namespace {

std::string head_text(const HeadPlan& plan) {
    std::string text;
    TextSink out(text);
    write_project_head(out, plan);
    return text;
}

TEST(ProjectHead, StatesWhatTheSessionDoesAndNoMore) {
    const std::vector<MeterPoint> meters = {
        {.tick = 0, .bar = -4, .numerator = 3, .denominator = 4},
        {.tick = 1920000, .numerator = 6, .denominator = 8}};
    const std::vector<MemoryLocation> locations = {
        {.name = "In", .kind = LocationKind::marker, .start = 22050, .in_samples = true}};
    HeadTallies tallies;
    HeadPlan plan = plan_project_head({.sample_rate = 44100,
                                       .tempo = {{{0, 90.5}, {1920000, 60}}, 90.5},
                                       .meters = meters,
                                       .locations = locations,
                                       .frame_rate = FrameRate{3, 0},
                                       .audio_format = AudioFormat::wav,
                                       .bit_depth = BitDepth{32, true},
                                       .pan_depth = 1,
                                       .grid_and_nudge = GridAndNudge{{0, 0, 1}, {0, 1, 240}}},
                                      false, tallies);
    plan.notes = {"Kick: loud", "    >"};
    plan.master.has_fader = plan.master.muted = true;
    plan.master.gain = 0.5;
    builder::expect_golden(
        TANROVE_TEXTS_FOLDER "/project_head.txt",
        head_text(plan_project_head({}, false, tallies)) + "----\n" + head_text(plan));
}

TEST(PanLaw, HasAFlagsLineForTwoDepthsOnly) {
    const struct {
        std::optional<int> stored;
        double depth_db;
        int flags;
        bool known;
    } cases[] = {
        {1, -2.5, 3, true}, {2, -3, 0, true},  {3, -4.5, 0, true},           {4, -6, 2, true},
        {0, -3, 0, false},  {5, -3, 0, false}, {std::nullopt, -3, 0, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.stored.value_or(-1));
        const PanLaw law = pan_law(c.stored);
        EXPECT_EQ(law.depth_db, c.depth_db);
        EXPECT_EQ(law.flags, c.flags);
        EXPECT_EQ(law.known, c.known);
        // REAPER's stored gains lie close to the depth, but are not it.
        EXPECT_NEAR(20 * std::log10(law.gain), c.depth_db, 0.03);
    }
}

TEST(RecordFormat, IsWrittenForWavThatIsNotTheDefault) {
    const struct {
        AudioFormat format;
        std::optional<BitDepth> depth;
        bool written;
    } cases[] = {
        {AudioFormat::wav, BitDepth{16, false}, true},
        {AudioFormat::wav, BitDepth{24, false}, false},
        {AudioFormat::wav, BitDepth{32, true}, true},
        {AudioFormat::unknown, BitDepth{16, false}, true},
        {AudioFormat::aiff, BitDepth{16, false}, false},
        {AudioFormat::aiff, BitDepth{32, true}, false},
        {AudioFormat::wav, std::nullopt, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(c.format));
        EXPECT_EQ(plan_record_format(c.format, c.depth).written, c.written);
    }
    EXPECT_EQ(wav_record_config(16), "ZXZhdxAAAQ==");
}

}  // namespace
}  // namespace tanrove
