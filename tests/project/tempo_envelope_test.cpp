// Tempo events and meter changes on one line of time.
#include "project/tempo_envelope.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/formatted_text.hpp"

namespace tanrove {
namespace {

constexpr std::int64_t beat = 960000;

struct Planned {
    TempoEnvelope points;
    TempoTallies tallies;
};

Planned plan(const TempoMap& map, const std::vector<MeterPoint>& meters, double bpm = 120,
             bool ramps = false) {
    const TempoClock clock(map, bpm);
    Planned planned;
    planned.points = plan_tempo_envelope({map, bpm, false}, clock, meter_changes(meters), ramps,
                                         planned.tallies);
    return planned;
}

MeterPoint meter_at(std::int64_t tick, std::uint32_t numerator, std::uint32_t denominator) {
    return {.tick = tick, .numerator = numerator, .denominator = denominator};
}

/// A point a piece: seconds, tempo, meter where it sets one, "m" where it sets nothing else.
std::string text_of(const TempoEnvelope& points) {
    std::string text;
    for (const auto& point : points) {
        text += formatted("%s%g %g", text.empty() ? "" : ", ", point.position_seconds, point.bpm);
        if (point.signature == 0) continue;
        text += formatted(" %d/%d", point.signature & 0xffff, point.signature >> 16);
        if (point.flag == TempoPointFlag::meter_only) text += "m";
    }
    return text;
}

TEST(TempoEnvelope, PutsTempoEventsAndMeterChangesOnOneLine) {
    const TempoMap slower = {{0, 120}, {4 * beat, 60}, {8 * beat, 60}};
    const MeterPoint common = meter_at(0, 4, 4);
    const struct {
        const char* what;
        TempoMap map;
        std::vector<MeterPoint> meters;
        const char* points;
        double bpm = 120;
        int changes = 0;
    } cases[] = {
        {"nothing changes", {}, {}, ""},
        {"one tempo", {{0, 90}}, {meter_at(0, 3, 4)}, ""},
        {"one meter", {}, {meter_at(0, 3, 4), meter_at(6 * beat, 3, 4)}, ""},
        {"opens with its meter", slower, {meter_at(0, 6, 8)}, "0 120 6/8, 2 60, 6 60", 120, 1},
        {"without a meter", {{0, 120}, {beat, 60}}, {}, "0 120 4/4, 0.5 60", 120, 1},
        {"shares the points of tempo events",
         slower,
         {common, meter_at(4 * beat, 3, 4), meter_at(8 * beat, 4, 4)},
         "0 120 4/4, 2 60 3/4, 6 60 4/4m",
         120,
         1},
        {"repeats the tempo in force",
         {{0, 120}, {4 * beat, 60}},
         {common, meter_at(6 * beat, 5, 8), meter_at(2 * beat, 3, 4)},
         "0 120 4/4, 1 120 3/4m, 2 60, 4 60 5/8m",
         120,
         1},
        {"without tempo events",
         {},
         {common, meter_at(4 * beat, 3, 4)},
         "0 90 4/4, 2.66667 90 3/4m",
         90},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto planned = plan(c.map, c.meters, c.bpm);
        EXPECT_EQ(text_of(planned.points), c.points);
        EXPECT_EQ(planned.tallies.changes, c.changes);
    }
}

TEST(TempoEnvelope, MeterChangesMeetPointsWithinATenthOfAMicrosecond) {
    const auto ticks = [](double seconds) { return std::llround(seconds * 120 / 60 * beat); };
    const std::int64_t place = ticks(2);
    const struct {
        std::int64_t tick;
        std::size_t points;
    } cases[] = {{place, 2}, {place - 1, 3}, {place + 1, 3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tick - place);
        const auto planned = plan({{0, 120}, {static_cast<double>(place), 120}},
                                  {meter_at(0, 4, 4), meter_at(c.tick, 3, 4)});
        EXPECT_EQ(planned.points.size(), c.points);
    }
    // At 499 a minute a tick is 125 nanoseconds, and part of a tick can be stored in a tempo event.
    const auto near = plan({{0, 499}, {4.5 * beat + 0.5, 499}},
                           {meter_at(0, 4, 4), meter_at(9 * beat / 2, 3, 4)});
    EXPECT_EQ(near.points.size(), 2U);

    // The first point never counts as a change of tempo.
    const auto first = plan({}, {meter_at(0, 4, 4), meter_at(0, 3, 4), meter_at(0, 5, 4)});
    EXPECT_EQ(text_of(first.points), "0 120 5/4m");
}

TEST(TempoEnvelope, AMeterChangeOnARampHasTheRampsTempo) {
    TempoMap map{{0, 60}};
    double tick = 10 * beat;
    for (int i = 0; i < 4; ++i) {
        map.push_back({tick, 61.0 + i});
        tick += map.back().bpm / 60 * static_cast<double>(beat);  // one second
    }
    const auto inside = std::llround(10.75 * beat);
    const auto planned = plan(map, {meter_at(0, 4, 4), meter_at(inside, 3, 4)}, 60, true);
    const auto mark = std::find_if(planned.points.begin() + 1, planned.points.end(),
                                   [](const auto& point) { return point.signature != 0; });
    ASSERT_NE(mark, planned.points.end());
    EXPECT_EQ(mark->flag, TempoPointFlag::tempo_and_meter);
    EXPECT_EQ(mark->shape, TempoShape::ramp) << "else the bars behind it move";
    const auto before = mark - 1;
    const auto behind = mark + 1;
    const double slope =
        (behind->bpm - before->bpm) / (behind->position_seconds - before->position_seconds);
    EXPECT_GT(slope, 0);
    EXPECT_NEAR((mark->bpm - before->bpm) / (mark->position_seconds - before->position_seconds),
                slope, 1e-9);
    EXPECT_EQ(planned.tallies.ramps.written, 1);
    EXPECT_EQ(plan(map, {}, 60, false).tallies.ramps.written, 0);
}

}  // namespace
}  // namespace tanrove
