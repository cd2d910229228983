// The media and closing lines: their caps, their alternatives, and what is long.
#include "report/account_media.hpp"

#include <gtest/gtest.h>

#include "report/summary_line.hpp"

namespace tanrove {
namespace {

TEST(MediaLines, NameTheFoldersBesideTheMediaFolderAndSixMissingFiles) {
    const MediaTallies media{3, {{"Takes", 2}, {"Bounced Files", 1}}, {}, 2};
    TextBuffer unused;
    print_sibling_files(unused, media, {});
    EXPECT_NE(unused.text().find("\"Bounced Files\" x1, \"Takes\" x2\n      No clip uses them"),
              std::string::npos);
    TextBuffer not_needed;
    print_missing_files(not_needed, media);
    EXPECT_EQ(not_needed.text(), "") << "files that no clip uses are no warning";
    for (const std::size_t count : {6U, 7U}) {
        TextBuffer out;
        print_missing_files(out, {0, {}, std::vector<std::string>(count, "f.wav"), 0});
        const char* end = count == 6 ? "f.wav\n      REAPER will"
                                     : "f.wav\n      ... and 1 more\n      REAPER will";
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
    const std::pair<LongMedia, const char*> cases[] = {
        {{0, 600, 600}, ""},
        {{1, 601, 0}, "  note: 1 clip(s) over 10 minutes (longest 10.0 min"},
        {{0, 3, 660}, "  note: a source file is over 10 minutes (11.0 min). REAPER builds"}};
    for (const auto& [found, opening] : cases) {
        TextBuffer out;
        print_long_media(out, found);
        EXPECT_TRUE(out.text().starts_with(opening)) << out.text();
        EXPECT_EQ(out.text().empty(), *opening == 0);
    }
}

TEST(SummaryLine, CarriesItsNumbersInOrderAndTheProblem) {
    SummaryLine run{1, 2, 3, 4, 5, 6, false};
    EXPECT_EQ(summary_line(run), "summary tracks=1 clips=2 notes=3 fx=4 written=5 needs_look=6");
    run.problem_recorded = true;
    EXPECT_TRUE(summary_line(run).ends_with("needs_look=6 problem=1"));
}

}  // namespace
}  // namespace tanrove
