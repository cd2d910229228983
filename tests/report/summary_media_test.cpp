// The media and closing lines: their caps, their alternatives, and what is long.
#include "report/summary_media.hpp"

#include <gtest/gtest.h>

#include "report/summary_line.hpp"

namespace tanrove {
namespace {

TEST(MediaLines, NameTheFoldersBesideTheMediaFolder) {
    const MediaTallies media{.files_in_siblings = 3,
                             .files_by_folder = {{"Takes", 2}, {"Bounced Files", 1}},
                             .missing_files = {}};
    TextBuffer unused;
    print_sibling_files(unused, media, {});
    EXPECT_EQ(unused.text(),
              "  3 audio file(s) the session lists are in its own sibling\n"
              "      folder(s), beside the media folder: \"Bounced Files\" x1, \"Takes\" x2\n"
              "      No clip uses them (freeze renders are not needed: the\n"
              "      tracks they froze play their own clips), so no FILE line\n"
              "      points there.\n");

    TextBuffer used;
    print_sibling_files(used, media, {.clips_in_siblings = 4});
    EXPECT_NE(used.text().find("x2\n      4 clip(s) use them; their FILE lines point there.\n"),
              std::string::npos);
}

TEST(MediaLines, NameSixMissingFilesAndCountTheRest) {
    for (const std::size_t count : {6U, 7U}) {
        SCOPED_TRACE(count);
        MediaTallies media;
        for (std::size_t i = 0; i < count; ++i) {
            media.missing_files.push_back("f" + std::to_string(i) + ".wav");
        }
        TextBuffer out;
        print_missing_files(out, media);
        const std::string end = count == 6
                                    ? "      f5.wav\n      REAPER will"
                                    : "      f5.wav\n      ... and 1 more\n      REAPER will";
        EXPECT_NE(out.text().find(end), std::string::npos) << out.text();
    }
}

TEST(LongMedia, CountsClipsOnLanesAndTheFilesThatClipsPlay) {
    TrackPlan plan;
    ClipItem item;
    item.file = "short.wav";
    item.length = 600;
    plan.clips.push_back(item);
    item.file = "long.wav";
    item.length = 600.5;
    plan.lanes = {{.name = "alt", .clips = {item}}};
    const LongMedia found = find_long_media(
        {plan}, {{"short.wav", 10}, {"long.wav", 1200}, {"played by none.wav", 9000}});
    EXPECT_EQ(found.clips, 1);
    EXPECT_EQ(found.longest_clip_seconds, 600.5);
    EXPECT_EQ(found.longest_source_seconds, 1200);
}

TEST(LongMedia, IsNotedAboveTenMinutesOfClipOrSource) {
    struct {
        LongMedia found;
        bool noted;
    } const cases[] = {
        {{.clips = 0, .longest_clip_seconds = 600, .longest_source_seconds = 600}, false},
        {{.clips = 1, .longest_clip_seconds = 601, .longest_source_seconds = 0}, true},
        {{.clips = 0, .longest_clip_seconds = 3, .longest_source_seconds = 601}, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.found.longest_clip_seconds << ' ' << c.found.longest_source_seconds);
        TextBuffer out;
        print_long_media(out, c.found);
        EXPECT_EQ(!out.text().empty(), c.noted);
    }
}

TEST(SummaryLine, CarriesItsNumbersInOrderAndTheProblem) {
    SummaryLine run{.tracks = 1,
                    .clips = 2,
                    .notes = 3,
                    .plugins = 4,
                    .plugins_with_settings = 5,
                    .needs_look = 6,
                    .problem_recorded = false};
    EXPECT_EQ(summary_line(run), "summary tracks=1 clips=2 notes=3 fx=4 written=5 needs_look=6");
    run.problem_recorded = true;
    EXPECT_TRUE(summary_line(run).ends_with("needs_look=6 problem=1"));
}

}  // namespace
}  // namespace tanrove
