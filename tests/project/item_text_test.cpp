// The text of an audio item, whole, and the few lines that come and go.
#include "project/item_text.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

std::string item(const ClipItem& clip, const std::optional<LanePlace>& place = std::nullopt) {
    std::string text;
    TextSink out(text);
    write_audio_item(out, clip, "/song/Audio Files/vox.wav", place);
    return text;
}

TEST(WriteAudioItem, WritesAPlainClipWithEveryLineInItsPlace) {
    ClipItem clip;
    clip.name = "Vox-01";
    clip.start = 1.5;
    clip.length = 2.25;
    clip.source_offset = 0.125;
    EXPECT_EQ(item(clip),
              "    <ITEM\n"
              "      POSITION 1.5000000000\n"
              "      SNAPOFFS 0\n"
              "      LENGTH 2.2500000000\n"
              "      LOOP 0\n"
              "      ALLTAKES 0\n"
              "      FADEIN 0 0.0000000000 0 0 0 0 0\n"
              "      FADEOUT 0 0.0000000000 0 0 0 0 0\n"
              "      MUTE 0 0\n"
              "      SOFFS 0.1250000000\n"
              "      PLAYRATE 1.000000000 1 0.000000 -1 0 0.0025\n"
              "      CHANMODE 0\n"
              "      NAME \"Vox-01\"\n"
              "      <SOURCE WAVE\n"
              "        FILE \"/song/Audio Files/vox.wav\"\n"
              "      >\n"
              "    >\n");
}

TEST(WriteAudioItem, PutsTheLinesOfALockedLegOnALaneBetweenTheOthers) {
    ClipItem clip;
    clip.length = 1;
    clip.muted = true;
    clip.locked = true;
    clip.take_pan = -1;
    const std::string text = item(clip, LanePlace{.lane = 1, .count = 3});
    EXPECT_NE(text.find("      MUTE 1 0\n"
                        "      LOCK 1\n"
                        "      SOFFS 0.0000000000\n"
                        "      YPOS 0.333333 0.333333 2\n"
                        "      PLAYRATE"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("      NAME \"\"\n"
                        "      VOLPAN 1.000000000 -1 1 -1\n"
                        "      <SOURCE WAVE\n"),
              std::string::npos)
        << text;
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
