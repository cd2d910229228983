// One clip at each moment: overlapping clips against a painter that fills cells, row by row.
#include "timeline/cover_clips.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "timeline/stretch_markers.hpp"

namespace tanrove {
namespace {

constexpr double rate_hz = 48000;
constexpr int cells = 60;
constexpr int nobody = -1;

ClipItem random_clip(std::mt19937& random, std::uint32_t number) {
    ClipItem clip;
    clip.region = number;
    clip.edit_row = static_cast<std::int32_t>(number);
    clip.start = static_cast<double>(random() % 40);
    clip.length = 1 + static_cast<double>(random() % 12);
    clip.source_offset = 100;
    clip.tail_kept = random() % 3 == 0;
    clip.crossfaded = random() % 6 == 0;
    clip.muted = random() % 6 == 0;
    if (random() % 2 == 0) return clip;
    clip.stretch_markers = {{0, 100}, {clip.length / 3, 101}, {clip.length, 150}};
    return clip;
}

double heard_at(const ClipItem& clip, double seconds) {
    if (has_stretch_map(clip)) return source_position_at(clip.stretch_markers, seconds);
    return clip.source_offset + clip.playrate * seconds;
}

/// Who is seen in each cell of a second; what a crossfade adds behind the next clip's start counts
/// for nobody.
std::vector<int> painted(const std::vector<ClipItem>& rows) {
    std::vector<int> seen(cells, nobody);
    std::vector<bool> is_kept(cells, false);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool shares = rows[i].crossfaded && i + 1 < rows.size();
        auto cell = static_cast<std::size_t>(rows[i].start);
        const auto end = static_cast<std::size_t>(rows[i].start + rows[i].length);
        while (cell < end && is_kept[cell]) ++cell;
        const auto first = cell;
        for (; cell < end && !is_kept[cell]; ++cell) {
            const int under = seen[cell];
            for (auto t = first; t < cells && under != nobody; ++t) {
                if (seen[t] == under && t >= cell) seen[t] = nobody;
            }
            if (!shares || static_cast<double>(cell) < rows[i + 1].start) {
                seen[cell] = static_cast<int>(i);
                is_kept[cell] = false;
            }
        }
        for (auto t = first; t < cell && rows[i].tail_kept && !shares; ++t) is_kept[t] = true;
    }
    return seen;
}

TEST(CoverClips, OneClipPlaysAtEachMomentAndItIsTheOneDrawnOnTop) {
    std::mt19937 random(617);
    for (int round = 0; round < 3000; ++round) {
        std::vector<ClipItem> rows;
        for (std::uint32_t i = 0; i < 2 + random() % 7; ++i) {
            rows.push_back(random_clip(random, i));
        }
        std::vector<TimelineTrack> tracks(1);
        tracks[0].row_ordered = true;
        tracks[0].clips = rows;
        order_by_start(tracks[0].clips);
        CoveringTallies tallies;
        cover_clips(tracks, rate_hz, tallies);

        const auto seen = painted(rows);
        for (std::size_t cell = 0; cell < cells; ++cell) {
            const double at = static_cast<double>(cell) + 0.5;
            int playing = nobody;
            for (const ClipItem& clip : tracks[0].clips) {
                const ClipItem& row = rows[clip.region];
                if (clip.muted || at < clip.start || at >= clip.start + clip.length) continue;
                ASSERT_NEAR(heard_at(clip, at - clip.start), heard_at(row, at - row.start), 1e-9);
                const bool shares = row.crossfaded && clip.region + 1 < rows.size();
                if (shares && at > rows[clip.region + 1].start) continue;
                ASSERT_EQ(playing, nobody) << round << ": two clips at " << at;
                playing = static_cast<int>(clip.region);
            }
            const bool silent =
                seen[cell] != nobody && rows[static_cast<std::size_t>(seen[cell])].muted;
            ASSERT_EQ(playing, silent ? nobody : seen[cell]) << round << ": at " << at;
        }
    }
}

TEST(CoverClips, TellsFromPositionsAloneWhereThereAreNoRows) {
    struct Placed {
        double start;
        double length;
        bool over_next = false;
        bool muted = false;
        bool over_previous = false;
    };
    struct {
        const char* what;
        std::vector<Placed> clips;
        const char* played;  // start and length, m where muted
        int heads, covered, silenced;
    } const cases[] = {
        {"the later clip lies on top", {{0, 4}, {2, 4}}, "0 2, 2 4, ", 0, 0, 0},
        {"a butt edit is none", {{0, 4}, {0.05, 4}}, "0 4, 0.05 4, ", 0, 0, 0},
        {"drawn over the next", {{0, 4, true}, {2, 4}}, "0 4, 4 2, ", 1, 0, 0},
        {"over all of the next", {{0, 4, true}, {2, 2}}, "0 4, 2 2m, ", 0, 1, 0},
        {"no room in front of the third",
         {{0, 4, true}, {2, 9}, {4, 1}},
         "0 4, 2 2m, 4 1, ",
         0,
         1,
         0},
        {"the next has the word",
         {{0, 4, true}, {2, 4, false, false, true}},
         "0 2, 2 4, ",
         0,
         0,
         0},
        {"a muted clip silences", {{0, 4}, {2, 1, false, true}}, "0 2, 2 1m, ", 0, 0, 1},
        {"but not what lies over it", {{0, 4, true}, {2, 1, false, true}}, "0 4, 2 1m, ", 0, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<TimelineTrack> tracks(1);
        for (const auto& placed : c.clips) {
            ClipItem& clip = tracks[0].clips.emplace_back();
            clip.start = placed.start;
            clip.length = placed.length;
            clip.muted = placed.muted;
            clip.drawn_over_next = placed.over_next;
            clip.drawn_over_previous = placed.over_previous;
        }
        CoveringTallies tallies;
        cover_clips(tracks, rate_hz, tallies);
        std::string played;
        for (const auto& clip : tracks[0].clips) {
            char text[64];
            std::snprintf(text, sizeof text, "%g %g%s, ", clip.start, clip.length,
                          clip.muted ? "m" : "");
            played += text;
        }
        EXPECT_EQ(played, c.played);
        EXPECT_EQ(tallies.later_heads, c.heads);
        EXPECT_EQ(tallies.muted_clips, c.covered);
        EXPECT_EQ(tallies.silenced_tails, c.silenced);
    }
}

}  // namespace
}  // namespace tanrove
