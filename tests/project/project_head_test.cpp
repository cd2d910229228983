// The small settings that the head of a project holds.
#include "project/project_head.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace tanrove {
namespace {

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
