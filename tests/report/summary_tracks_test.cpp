// The account's sentences about tracks: each by its own counter, in their order.
#include "report/summary_tracks.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

std::string all_sentences(const TimelineTallies& timeline, const TrackTallies& tracks) {
    TextBuffer out;
    print_unmatched_alternates(out, tracks);
    print_surround_folds(out, tracks);
    print_timebases(out, timeline);
    print_matched_alternates_and_merges(out, tracks);
    print_lanes_and_empty_tracks(out, tracks);
    print_tracks_without_strip_row(out, tracks);
    print_silent_tracks_and_names(out, tracks);
    print_dropped_fade_references(out, timeline);
    print_left_out_playlists(out, timeline, tracks);
    return out.text();
}

TEST(SummaryTracks, SaysNothingOfWhatDidNotHappen) {
    EXPECT_EQ(all_sentences({}, {}), "");
    TimelineTallies qualifiers;  // lines that say more about a line that is not there
    qualifiers.unpaired_tracks = qualifiers.judged_without_records = 1;
    EXPECT_EQ(all_sentences(qualifiers, {}), "");
}

TEST(SummaryTracks, PrintsEverySentenceInItsOrder) {
    const TimelineTallies timeline{101, 102, 103, 1, 104, 105, 106, 1, 107, 108};
    const TrackTallies tracks{201, 202, 203, 204, 205, 206, 207, 208, 209, 210, 211, 1};
    const std::string text = all_sentences(timeline, tracks);
    const char* const first_words[] = {
        "  207 alternate playlist(s) could not be matched to a parent track by\n",
        "  202 surround track(s) folded from their Pro Tools legs into one\n",
        "  101 tick-based tracks, 102 sample-based\n",
        "      103 of them could not be paired with their own timebase record.\n",
        "      Every record in this session says tick-based",
        "      105 of them could not be paired with their own timebase record,\n",
        "      104 of them: this session holds no timebase records at all,",
        "  106 clip(s) carry a sync point and are placed by it, as Pro Tools\n",
        "  WARNING: this session has clips with sync points that could not",
        "  203 alternate playlists matched to their parent track\n",
        "  204 alternate playlist(s) folded into a parent that has no clips of its own\n",
        "  201 Pro Tools stereo track(s) merged from split mono\n",
        "  205 written as REAPER fixed lanes\n",
        "  208 track(s) had no clips and were written empty, mixer state intact\n",
        "  209 track(s) matched no strip row and were appended at the end --\n",
        "  210 track(s) were INACTIVE in Pro Tools and are written MUTED --\n",
        "  211 track(s) had VOICE set to OFF in Pro Tools and are\n",
        "  WARNING: this session holds a track type this build does not\n",
        "  107 fade references dropped as clips\n",
        "  108 deleted clip placement(s) are still in this session: edits or takes\n",
        "  205 alternate playlists kept as lanes (--drop-alt-takes to leave them out)\n",
        "  206 alternate playlists set aside (--drop-alt-takes was given)\n",
    };
    std::size_t at = 0;
    for (const char* const words : first_words) {
        SCOPED_TRACE(words);
        const auto found = text.find(words, at);
        ASSERT_NE(found, std::string::npos);
        EXPECT_TRUE(found == 0 || text[found - 1] == '\n');
        at = found + 1;
    }
    EXPECT_EQ(text.back(), '\n');
}

}  // namespace
}  // namespace tanrove
