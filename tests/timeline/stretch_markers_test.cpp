// Cuts through stretch markers: what is left plays at each moment what it played before.
#include "timeline/stretch_markers.hpp"

#include <gtest/gtest.h>

#include <random>

namespace tanrove {
namespace {

TEST(StretchMarkers, KeepWhatIsHeardAtEachMomentThroughCuts) {
    std::mt19937 random(63);
    std::uniform_real_distribution<double> step(0.01, 2.0);
    for (int round = 0; round < 200; ++round) {
        ClipItem clip;
        auto& markers = clip.stretch.edit().stretch_markers;
        markers = {{0, step(random)}};
        for (int i = 1 + round % 6; i > 0; --i) {
            const StretchMarker last = markers.back();
            markers.push_back(
                {last.item_position + step(random), last.source_position + step(random)});
        }
        const auto whole = markers;
        const double end = whole.back().item_position;
        // Every other round cuts its tail at a marker's own place, the others their head.
        const bool tail_at_marker = round % 2 == 0;
        const double tail = tail_at_marker ? whole[(whole.size() + 1) / 2].item_position : end;
        const double head =
            tail_at_marker || whole.size() < 3 ? tail * 0.3 : whole[1].item_position;
        truncate_marker_tail(clip, tail);
        const auto start = cut_marker_head(clip, head);
        ASSERT_TRUE(start.has_value());
        EXPECT_NEAR(*start, source_position_at(whole, head), 1e-12);
        EXPECT_NEAR(markers.back().item_position, tail - head, 1e-12);
        for (double at = 0; at < tail - head; at += 0.01) {
            const double heard = has_stretch_map(clip) ? source_position_at(markers, at)
                                                       : *start + at * clip.playrate;
            ASSERT_NEAR(heard, source_position_at(whole, head + at), 1e-9) << round << ' ' << at;
        }
    }
}

TEST(StretchMarkers, StandWhereACutLiesAtTheirEndsOrOutside) {
    const std::vector<StretchMarker> markers = {{0, 5}, {1, 6}, {2, 8}};
    for (const double cut : {-1.0, 0.0, 2.0 - 1e-10, 2.0, 3.0}) {
        SCOPED_TRACE(cut);
        auto cut_markers = markers;
        EXPECT_FALSE(cut_head(cut_markers, cut).has_value());
        EXPECT_FALSE(truncate_tail(cut_markers, cut));
        EXPECT_EQ(cut_markers.size(), markers.size());
    }
}

}  // namespace
}  // namespace tanrove
