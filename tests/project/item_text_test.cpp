// The line of an audio item that says where it snaps.
#include "project/item_text.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

std::string item(const ClipItem& clip) {
    std::string text;
    TextSink out(text);
    TakeTallies tallies;
    TakePlanner takes(48000, tallies);
    write_audio_item(out, clip, takes.plan(clip), "/song/Audio Files/vox.wav", std::nullopt);
    return text;
}

TEST(WriteAudioItem, WritesASyncPointOnlyWhereItLiesInsideTheClip) {
    struct {
        double sync_offset;
        std::string line;
    } const cases[] = {
        {0.5, "SNAPOFFS 0.5\n"},       {0.33333333333, "SNAPOFFS 0.3333333333\n"},
        {1.9999, "SNAPOFFS 1.9999\n"}, {2.0, "SNAPOFFS 0\n"},
        {3.0, "SNAPOFFS 0\n"},         {-0.5, "SNAPOFFS 0\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.sync_offset);
        ClipItem clip;
        clip.length = 2;
        clip.sync_offset = c.sync_offset;
        EXPECT_NE(item(clip).find("      " + c.line), std::string::npos);
    }
}

}  // namespace
}  // namespace tanrove
