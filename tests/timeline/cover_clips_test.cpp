// One clip at each moment: overlapping clips against a painter that fills cells, row by row.
#include "timeline/cover_clips.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/formatted_text.hpp"
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
    clip.stretch.edit().stretch_markers = {{0, 100}, {clip.length / 3, 101}, {clip.length, 150}};
    return clip;
}

double heard_at(const ClipItem& clip, double seconds) {
    if (has_stretch_map(clip)) return source_position_at(clip.stretch->stretch_markers, seconds);
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
            // A clip that is met at its head loses that, one that is met later all that follows.
            const int under = seen[cell];
            const bool is_met_later = first > 0 && seen[first - 1] == under;
            for (auto t = cell; t < cells && under != nobody && is_met_later; ++t) {
                if (seen[t] == under) seen[t] = nobody;
            }
            seen[cell] = nobody;
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

TEST(CoverClips, FollowsTheRowsAndTellsFromPositionsAloneWhereThereAreNone) {
    struct Placed {
        double start;
        double length;
        char mark = ' ';  // n over the next, p over the previous, m muted, k tail kept,
                          // x crossfaded, r rendered fade, l next pass of the loop before
    };
    struct {
        const char* what;
        std::vector<Placed> clips;
        const char* played;  // start and length, m where muted; heads, covered and silenced
        bool by_rows = false;
    } const cases[] = {
        {"the later clip lies on top", {{0, 4}, {2, 4}}, "0 2, 2 4: 000"},
        {"a butt edit is none", {{0, 4}, {0.05, 4}}, "0 4, 0.05 4: 000"},
        {"drawn over the next", {{0, 4, 'n'}, {2, 4}}, "0 4, 4 2: 100"},
        {"over all of the next", {{0, 4, 'n'}, {2, 2}}, "0 4, 2 2m: 010"},
        {"no room at the third", {{0, 4, 'n'}, {2, 9}, {4, 1}}, "0 4, 2 2m, 4 1: 010"},
        {"the next has the word", {{0, 4, 'n'}, {2, 4, 'p'}}, "0 2, 2 4: 000"},
        {"a muted clip silences", {{0, 4}, {2, 1, 'm'}}, "0 2, 2 1m: 001"},
        {"but not what lies over it", {{0, 4, 'n'}, {2, 1, 'm'}}, "0 4, 2 1m: 000"},
        {"a crossfade stays", {{0, 4, 'x'}, {3, 4}}, "0 4, 3 4: 000"},
        {"a millisecond is a cut", {{0, 2.001, 'n'}, {2, 4}}, "0 2, 2 4: 000"},
        {"one sample is left", {{2, 4}, {2, 4}}, "2 2.08333e-05m, 2 4: 010", true},
        {"a later row takes a head", {{3, 4}, {1, 4}}, "1 4, 5 2: 100", true},
        {"below half a sample", {{0, 4.00001}, {4, 1}}, "0 4.00001, 4 1: 000", true},
        {"above half a sample", {{0, 4.00002}, {4, 1}}, "0 4, 4 1: 000", true},
        {"a later row ends a loop",
         {{0, 2}, {2, 2, 'l'}, {4, 2, 'l'}, {6, 2, 'l'}, {3, 1}, {1, 1}},
         "0 1, 1 1, 2 1m, 3 1, 4 2m, 6 2m: 010",
         true},
        {"a loop begins under a tail",
         {{0, 6, 'k'}, {1, 2}, {3, 2, 'l'}, {5, 2, 'l'}, {7, 2, 'l'}},
         "0 6, 1 2m, 3 2m, 6 1, 7 2: 110",
         true},
        {"a rendered fade covers nothing", {{0, 4}, {1, 1, 'r'}}, "0 4, 1 1: 000", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<TimelineTrack> tracks(1);
        for (const auto& placed : c.clips) {
            ClipItem& clip = tracks[0].clips.emplace_back();
            clip.start = placed.start;
            clip.length = placed.length;
            clip.muted = placed.mark == 'm';
            clip.drawn_over_next = placed.mark == 'n';
            clip.drawn_over_previous = placed.mark == 'p';
            clip.tail_kept = placed.mark == 'k';
            clip.crossfaded = placed.mark == 'x';
            clip.is_fade_reference = placed.mark == 'r';
            clip.edit_row = static_cast<std::int32_t>(tracks[0].clips.size());
            if (placed.mark != 'l') continue;
            const ClipItem& before = (&clip)[-1];
            clip.edit_row = before.edit_row;
            clip.loop_pass = before.loop_pass + 1;
        }
        tracks[0].row_ordered = c.by_rows;
        CoveringTallies tallies;
        cover_clips(tracks, rate_hz, tallies);
        std::string played;
        for (const auto& clip : tracks[0].clips) {
            played += formatted("%s%g %g%s", played.empty() ? "" : ", ", clip.start, clip.length,
                                clip.muted ? "m" : "");
        }
        played +=
            formatted(": %d%d%d", tallies.later_heads, tallies.muted_clips, tallies.silenced_tails);
        EXPECT_EQ(played, c.played);
    }
}

}  // namespace
}  // namespace tanrove
