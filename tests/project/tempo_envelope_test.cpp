// Tempo events and meter changes on one line of time.
#include "project/tempo_envelope.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

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

void expect_point(const TempoEnvelopePoint& point, double seconds, double bpm, int meter,
                  TempoPointFlag flag) {
    EXPECT_NEAR(point.position_seconds, seconds, 1e-9);
    EXPECT_NEAR(point.bpm, bpm, 1e-9);
    EXPECT_EQ(point.signature, meter);
    EXPECT_EQ(point.flag, flag);
}

constexpr int signature(int numerator, int denominator) {
    return numerator | denominator << 16;
}

TEST(TempoEnvelope, IsLeftOutWhereTheProjectsOwnTempoSaysItAll) {
    EXPECT_TRUE(plan({}, {}).points.empty());
    EXPECT_TRUE(plan({{0, 90}}, {meter_at(0, 3, 4)}).points.empty());
    EXPECT_TRUE(plan({}, {meter_at(0, 3, 4), meter_at(6 * beat, 3, 4)}).points.empty());
}

TEST(TempoEnvelope, OpensWithTheFirstMeter) {
    const auto planned = plan({{0, 120}, {4 * beat, 60}, {8 * beat, 60}}, {meter_at(0, 6, 8)});
    ASSERT_EQ(planned.points.size(), 3U);
    expect_point(planned.points[0], 0, 120, signature(6, 8), TempoPointFlag::tempo_and_meter);
    expect_point(planned.points[1], 2, 60, 0, TempoPointFlag::tempo);
    expect_point(planned.points[2], 6, 60, 0, TempoPointFlag::tempo);
    EXPECT_EQ(planned.tallies.changes, 1);

    const auto without_meter = plan({{0, 120}, {beat, 60}}, {});
    EXPECT_EQ(without_meter.points[0].signature, signature(4, 4));
}

TEST(TempoEnvelope, AMeterChangeSharesThePointOfATempoEvent) {
    const auto planned =
        plan({{0, 120}, {4 * beat, 60}, {8 * beat, 60}},
             {meter_at(0, 4, 4), meter_at(4 * beat, 3, 4), meter_at(8 * beat, 4, 4)});
    ASSERT_EQ(planned.points.size(), 3U);
    expect_point(planned.points[1], 2, 60, signature(3, 4), TempoPointFlag::tempo_and_meter);
    expect_point(planned.points[2], 6, 60, signature(4, 4), TempoPointFlag::meter_only);
}

TEST(TempoEnvelope, AMeterChangeOnItsOwnRepeatsTheTempoInForce) {
    const auto planned =
        plan({{0, 120}, {4 * beat, 60}},
             {meter_at(0, 4, 4), meter_at(6 * beat, 5, 8), meter_at(2 * beat, 3, 4)});
    ASSERT_EQ(planned.points.size(), 4U);
    expect_point(planned.points[1], 1, 120, signature(3, 4), TempoPointFlag::meter_only);
    expect_point(planned.points[3], 4, 60, signature(5, 8), TempoPointFlag::meter_only);

    const auto without_map = plan({}, {meter_at(0, 4, 4), meter_at(4 * beat, 3, 4)}, 90);
    ASSERT_EQ(without_map.points.size(), 2U);
    expect_point(without_map.points[1], 4 * 60 / 90.0, 90, signature(3, 4),
                 TempoPointFlag::meter_only);
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
    ASSERT_EQ(first.points.size(), 1U);
    expect_point(first.points[0], 0, 120, signature(5, 4), TempoPointFlag::meter_only);
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
