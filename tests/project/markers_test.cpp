// Memory locations into markers and regions.
#include "project/markers.hpp"

#include <gtest/gtest.h>

#include "base/guid.hpp"

namespace tanrove {
namespace {

MemoryLocation location(const char* name, LocationKind kind, double start, double end) {
    return {.name = name, .kind = kind, .start = start, .end = end, .in_samples = true};
}

std::vector<MarkerPlan> planned(const std::vector<MemoryLocation>& locations,
                                MarkerTallies& tallies) {
    return plan_markers(locations, TempoClock({}, 120), 1000, tallies);
}

TEST(Markers, AreNumberedFromOneWithoutTheLocationsThatHaveNoTime) {
    MemoryLocation in_ticks = location("Bridge", LocationKind::selection, 960000, 1920000);
    in_ticks.in_samples = false;
    MarkerTallies tallies;
    const auto plans = planned({location("View", LocationKind::none, 5, 5),
                                location("Verse \"A\"", LocationKind::marker, 1500, 9000),
                                location("Zoom", LocationKind::none, 5, 5), in_ticks,
                                location("Point", LocationKind::selection, 2000, 2000)},
                               tallies);
    std::string text;
    {
        TextSink out(text);
        write_markers(out, plans);
    }
    EXPECT_EQ(text, "  MARKER 1 1.5000000000 'Verse \"A\"' 0 0 1 R " + guid(0x4D41524B + 1) +
                        " 0\n"
                        "  MARKER 2 0.5000000000 \"Bridge\" 1 0 1 R " +
                        guid(0x4D41524B + 2) +
                        " 0\n"
                        "  MARKER 2 1.0000000000 \"\" 1\n"
                        "  MARKER 3 2.0000000000 \"Point\" 0 0 1 R " +
                        guid(0x4D41524B + 3) + " 0\n");
    EXPECT_EQ(tallies.markers, 2);
    EXPECT_EQ(tallies.regions, 1);
    EXPECT_EQ(tallies.without_time, 2);
}

TEST(Markers, HaveTheColourThatTheUserChose) {
    const struct {
        std::int32_t rgb;
        std::int32_t index;
        std::uint32_t colour;
        int coloured;
        int unknown;
    } cases[] = {
        {-1, -1, 0, 0, 0},         {0x123456, -1, 0x1563412, 1, 0},
        {0, 7, 0x1000000, 1, 0},   {0xFFB300, 12, 0, 0, 0},
        {-1, 11, 0, 0, 0},         {-1, 2, 0x1FE0066, 1, 0},
        {-1, 17, 0x132DA00, 1, 0}, {-1, 4, 0, 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.rgb << ' ' << c.index);
        MemoryLocation marker = location("M", LocationKind::marker, 0, 0);
        marker.colour_rgb = c.rgb;
        marker.colour_index = c.index;
        MarkerTallies tallies;
        EXPECT_EQ(planned({marker}, tallies).front().colour, c.colour);
        EXPECT_EQ(tallies.coloured, c.coloured);
        EXPECT_EQ(tallies.unknown_colours, c.unknown);
        EXPECT_EQ(tallies.unknown_colour_slots.count(c.index), static_cast<std::size_t>(c.unknown));
    }
    MemoryLocation slotted = location("M", LocationKind::marker, 0, 0);
    slotted.colour_slot = 17;
    MarkerTallies tallies;
    EXPECT_EQ(planned({slotted}, tallies).front().colour, 0U);
    EXPECT_EQ(tallies.unknown_colour_slots, std::set<int>{17});
}

}  // namespace
}  // namespace tanrove
