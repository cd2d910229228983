// The text of audio items, whole: a plain one, a locked leg on a lane, an elastic one.
#include "project/item_text.hpp"

#include <gtest/gtest.h>

#include "support/golden_text.hpp"

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

TEST(WriteAudioItem, PrintsClipsToTheLetter) {
    ClipItem plain;
    plain.name = "Vox-01";
    plain.start = 1.5;
    plain.length = 2.25;
    plain.source_offset = 0.125;
    ClipItem leg;
    leg.length = 1;
    leg.muted = leg.locked = true;
    leg.take_pan = -1;
    leg.colour = 0x10000FF;
    leg.playrate = 0.5;
    leg.stretch.edit().pitch_shift = -2;
    ClipItem elastic;
    elastic.length = 2;
    elastic.playrate = 2;
    elastic.polarity_inverted = true;
    elastic.fades.edit().fade_in = {.length = 0.5, .shape = 7, .curve = 0.25};
    elastic.gain.edit().gain_envelope = {{0, 0}, {48000, -1}};
    for (int i = 0; i < 30; ++i)
        elastic.stretch.edit().stretch_markers.push_back({i * 0.5, i * 0.25});
    builder::expect_golden(
        TANROVE_TEXTS_FOLDER "/written_items.txt",
        item(plain) + item(leg, LanePlace{.lane = 1, .count = 3}) + item(elastic));
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
