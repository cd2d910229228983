// Which placements the rows of an edit list let stand, and what the rows say about them.
#include <gtest/gtest.h>

#include <sstream>

#include "base/formatted_text.hpp"
#include "timeline/place_clips.hpp"
#include "timeline_scene.hpp"

namespace tanrove {
namespace {

using testing_records::region_numbers;
using testing_records::Row;
using testing_records::Scene;

/// Rows, from "1@5 f0@700": region or fade, and position.
std::vector<Row> rows_of(const char* text) {
    std::vector<Row> rows;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const bool is_fade = word[0] == 'f';
        const auto at = word.find('@');
        rows.push_back(
            {.region_id = static_cast<std::uint32_t>(std::stoul(word.substr(is_fade ? 1 : 0))),
             .position = std::stoull(word.substr(at + 1)),
             .is_fade = is_fade});
    }
    return rows;
}

TEST(MatchRows, DropsRenderedFadesAndDeletedPlacements) {
    struct {
        const char* what;
        const char* placements;
        const char* rows;  // fades 0 and 1 exist
        const char* clips;
        int fades_dropped, deleted;
    } const cases[] = {
        {"each clip has its row", "0@0 1@5", "0@0 1@5", "0@0 1@5 ", 0, 0},
        {"a fade of the clip's number, elsewhere", "0@0 0@700", "0@0 f0@700", "0@0 ", 1, 0},
        {"fade and clip at one place, fade first", "1@5 1@5", "f1@5 1@5", "1@5 ", 1, 0},
        {"a fade in no table is none, and plays nothing", "3@0 0@9", "f3@0 0@9", "0@9 ", 0, 1},
        {"one row for two placements", "0@5 0@5", "0@5 1@0", "0@5 ", 0, 1},
        {"64 away is near", "0@100 0@9064", "0@9000 1@0", "0@9064 ", 0, 1},
        {"on either side", "0@100 0@8936", "0@9000 1@0", "0@8936 ", 0, 1},
        {"65 away is not: the first stays", "0@100 0@9065", "0@9000 1@0", "0@100 ", 0, 1},
        {"65 away, but no other placement wants the row", "0@165", "0@100", "0@165 ", 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Scene scene;
        scene.fade(FadeKind::fade_in).fade(FadeKind::fade_in).track("A");
        for (const Row& row : rows_of(c.placements)) {
            scene.place(row.region_id, static_cast<std::int64_t>(row.position));
        }
        const auto tracks = scene.record("A", false, rows_of(c.rows)).placed();
        ASSERT_EQ(tracks.at(0).record, 0u);
        std::string clips;
        for (const ClipItem& clip : tracks[0].clips) {
            clips += formatted("%u@%d ", clip.region, static_cast<int>(clip.stored_position));
        }
        EXPECT_EQ(clips, c.clips);
        EXPECT_EQ(scene.tallies.fade_references_dropped, c.fades_dropped);
        EXPECT_EQ(scene.tallies.deleted_placements, c.deleted);
    }
}

TEST(MatchRows, KeepsRenderedFadesOnDemandBesideTheirClips) {
    const Row fade_in{.region_id = 0, .position = 5, .is_fade = true};
    const Row clip{.region_id = 0, .position = 5, .locked = true};
    const Row fade_out{.region_id = 0, .position = 90000, .is_fade = true};
    struct {
        const char* what;
        std::vector<std::int64_t> further_clips;  // places of clips that no row stands at
        bool row_ordered;
        const char* ghosts;
    } const cases[] = {
        {"all other clips have rows", {}, true, ""},
        {"two clips without rows stand at one moment", {200000, 200000}, false, "0 "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Scene scene;
        scene.keep_fade_clips = true;
        scene.fade(FadeKind::fade_in);
        scene.track_with_rows("A", false, {fade_in, clip, fade_out});
        for (const auto position : c.further_clips) scene.place(0, position);
        scene.edit_lists[0].rows.resize(3 + c.further_clips.size(), {.position = 500000});
        scene.clip_counts[0] = static_cast<std::uint32_t>(scene.placements.size());

        const auto tracks = scene.placed();
        const auto& clips = tracks.at(0).clips;
        ASSERT_GE(clips.size(), 3u);
        EXPECT_TRUE(clips[0].is_fade_reference);
        EXPECT_EQ(clips[0].edit_row, -1) << "the row is the clip's";
        EXPECT_FALSE(clips[0].locked);
        EXPECT_FALSE(clips[1].is_fade_reference);
        EXPECT_EQ(clips[1].edit_row, 1);
        EXPECT_TRUE(clips[2].is_fade_reference);
        EXPECT_EQ(tracks[0].row_ordered, c.row_ordered);
        EXPECT_EQ(region_numbers(tracks[0].ghost_clips), c.ghosts);
        EXPECT_EQ(scene.tallies.stacked_placements, c.row_ordered ? 0 : 1);
        EXPECT_EQ(scene.tallies.fade_references_dropped, 0);
        EXPECT_EQ(scene.tallies.deleted_placements, 0);
    }
}

TEST(MatchRows, TellsHowEachClipIsDrawnLockedAndMuted) {
    Scene scene;
    scene.fade(FadeKind::fade_in).fade(FadeKind::fade_out);
    scene.track("A").place(3, 900).place(2, 600).place(3, 300);
    scene.record("A", false,
                 {{.region_id = 3, .position = 900, .colour = 7, .locked = true},
                  {.region_id = 1, .position = 900, .is_fade = true},
                  {.region_id = 2, .position = 600, .overlap = 1, .muted = true},
                  {.region_id = 3, .position = 300, .overlap = 2},
                  {.region_id = 0, .position = 300, .is_fade = true}});
    scene.clip_counts = {3};  // what the track finds its record by

    const auto tracks = scene.placed();
    const auto& clips = tracks.at(0).clips;
    EXPECT_TRUE(tracks[0].row_ordered);
    std::string
        drawn;  // region, row, colour; over the previous, the next, tail kept, locked, muted
    for (const ClipItem& clip : clips) {
        drawn += formatted("%u %d %d %d%d%d%d%d; ", clip.region, clip.edit_row, clip.colour_place,
                           clip.drawn_over_previous, clip.drawn_over_next, clip.tail_kept,
                           clip.locked, clip.muted);
    }
    // The first has a fade-in's row behind it, and a fade-out stands on the last one's tail.
    EXPECT_EQ(drawn, "3 3 -2 10000; 2 2 -2 01101; 3 0 7 00110; ");
}

TEST(MatchRows, ADisplacedClipTakesWhatItsNearRowSays) {
    Scene scene;
    scene.track("A").place(0, 110);
    scene.record("A", false, {{.region_id = 0, .position = 100, .colour = 7, .muted = true}});
    const auto tracks = scene.placed();
    const ClipItem& clip = tracks.at(0).clips.at(0);
    EXPECT_EQ(clip.edit_row, -1);
    EXPECT_EQ(clip.colour_place, 7);
    EXPECT_TRUE(clip.muted);
    EXPECT_FALSE(tracks[0].row_ordered);
}

TEST(MatchRows, TellsFarPositionsApartThatShareTheirLowHalf) {
    Scene scene;
    const std::uint64_t far = 0x1'0000'0064;
    scene.track_with_rows("A", false,
                          {{.region_id = 0, .position = far}, {.region_id = 0, .position = 0x64}});
    const auto tracks = scene.placed();
    ASSERT_EQ(tracks.at(0).clips.size(), 2u);
    EXPECT_EQ(tracks[0].clips[0].edit_row, 1);
    EXPECT_EQ(tracks[0].clips[1].edit_row, 0);
}

TEST(StackedClips, TheOneThatFitsTheGapStaysElseTheLongest) {
    struct {
        const char* what;
        std::vector<std::pair<int, double>> clips;  // start in samples, length in seconds
        const char* kept;
        const char* ghosts;
    } const cases[] = {
        {"the shorter fits the gap", {{0, 5}, {0, 1}, {96000, 1}}, "1 2 ", "0 "},
        {"both fit", {{0, 1}, {0, 2}, {96000, 1}}, "1 2 ", "0 "},
        {"none fits", {{0, 3}, {0, 5}, {96000, 1}}, "1 2 ", "0 "},
        {"equal lengths keep the earlier", {{0, 1}, {0, 1}}, "0 ", "1 "},
        {"a hair too long still fits", {{0, 1}, {0, 2.009}, {96000, 1}}, "1 2 ", "0 "},
        {"behind the last there is room for all", {{0, 1}, {96000, 1}, {96000, 9}}, "0 2 ", "1 "},
        {"within a millisecond is one moment", {{48000, 1}, {48040, 2}}, "1 ", "0 "},
        {"the next millisecond is another", {{48000, 1}, {48060, 2}}, "0 1 ", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Scene scene;
        scene.track("A");
        for (std::size_t i = 0; i < c.clips.size(); ++i) {
            scene.place(static_cast<std::int64_t>(i), c.clips[i].first);
            scene.regions[i].length = static_cast<std::int64_t>(c.clips[i].second * 48000);
        }
        const auto tracks = scene.placed();
        EXPECT_EQ(region_numbers(tracks.at(0).clips), c.kept);
        EXPECT_EQ(region_numbers(tracks.at(0).ghost_clips), c.ghosts);
        EXPECT_EQ(scene.tallies.stacked_placements, std::ssize(tracks[0].ghost_clips));
    }
}

}  // namespace
}  // namespace tanrove
