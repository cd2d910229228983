// One clip at each moment: which of two that overlap gives way, told by rows or by places. Random
// clips are painted over each other where whole sessions are converted.
#include "timeline/cover_clips.hpp"

#include <gtest/gtest.h>

#include <string>

#include "base/formatted_text.hpp"

namespace tanrove {
namespace {

constexpr double rate_hz = 48000;
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
