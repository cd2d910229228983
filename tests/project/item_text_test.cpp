// The text of an audio item, whole, and the few lines that come and go.
#include "project/item_text.hpp"

#include <gtest/gtest.h>

#include "base/formatted_text.hpp"

namespace tanrove {
namespace {

std::string item(const ClipItem& clip, const std::optional<LanePlace>& place = std::nullopt) {
    std::string text;
    TextSink out(text);
    TakeTallies tallies;
    TakePlanner takes(48000, tallies);
    write_audio_item(out, clip, takes.plan(clip), "/song/Audio Files/vox.wav", place);
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
    clip.colour = 0x10000FF;
    clip.playrate = 0.5;
    clip.pitch_shift = -2;
    const std::string text = item(clip, LanePlace{.lane = 1, .count = 3});
    EXPECT_NE(text.find("      MUTE 1 0\n"
                        "      LOCK 1\n"
                        "      SOFFS 0.0000000000\n"
                        "      COLOR 16777471 R\n"
                        "      YPOS 0.333333 0.333333 2\n"
                        "      PLAYRATE 0.500000000 1 -2.000000 -1 0 0.0025\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("      NAME \"\"\n"
                        "      VOLPAN 1.000000000 -1 1 -1\n"
                        "      <SOURCE WAVE\n"),
              std::string::npos)
        << text;
}

TEST(WriteAudioItem, PutsMarkersVolumeAndEnvelopeBetweenNameAndSource) {
    ClipItem clip;
    clip.length = 2;
    clip.playrate = 2;
    clip.polarity_inverted = true;
    clip.fade_in = {.length = 0.5, .shape = 7, .curve = 0.25};
    clip.gain_envelope = {{0, 0}, {48000, -1}};
    for (int i = 0; i < 30; ++i) clip.stretch_markers.push_back({i * 0.5, i * 0.25});
    std::string between = "      SM 0.0000000000 0.0000000000";
    for (int i = 1; i < 30; ++i) {
        between += i == 28 ? "\n      SM " : " + ";
        between += formatted("%.10f %.10f", i * 0.5, i * 0.25);
    }
    between +=
        "\n"
        "      VOLPAN 1.000000000 0 -1 -1\n"
        "      <VOLENV\n"
        "        ACT 1 -1\n"
        "        VIS 1 1 1\n"
        "        LANEHEIGHT 0 0\n"
        "        ARM 0\n"
        "        DEFSHAPE 0 -1 -1\n"
        "        PT 0.0000000000 1.000000000 0\n"
        "        PT 1.0000000000 0.891250938 0\n"
        "      >\n";
    const std::string text = item(clip);
    EXPECT_NE(text.find("      PLAYRATE 1.000000000 1 0.000000 -1 0 0.0025\n"
                        "      CHANMODE 0\n"
                        "      NAME \"\"\n" +
                        between + "      <SOURCE"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("      FADEIN 7 0.5000000000 0 7 0 0.25 0\n"), std::string::npos);
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
