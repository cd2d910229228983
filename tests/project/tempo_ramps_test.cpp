// Ramps for runs of tempo steps: where they open and close, when they are given up, and that the
// beats behind them stay where they were.
#include "project/tempo_ramps.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tanrove {
namespace {

TempoEnvelope steps_at(std::initializer_list<std::pair<double, double>> places) {
    TempoEnvelope steps;
    for (const auto& [seconds, bpm] : places) {
        steps.push_back({.position_seconds = seconds, .bpm = bpm});
    }
    return steps;
}

/// Beats from the first point to a time, by adding up every stretch.
double beats_at(const TempoEnvelope& points, double seconds) {
    double beats = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double start = points[i].position_seconds;
        if (start >= seconds) break;
        const bool is_last = i + 1 == points.size();
        const double end = is_last ? seconds : std::min(points[i + 1].position_seconds, seconds);
        double end_bpm = points[i].bpm;
        if (!is_last && points[i].shape == TempoShape::ramp) {
            const double whole = points[i + 1].position_seconds - start;
            end_bpm += (points[i + 1].bpm - points[i].bpm) * (end - start) / whole;
        }
        beats += (points[i].bpm + end_bpm) / 2 * (end - start) / 60;
    }
    return beats;
}

TEST(TempoRamps, NeedThreePointsOfLikeStepsInOneDirection) {
    const struct {
        const char* what;
        TempoEnvelope steps;
        int written;
        int left_as_steps;
    } cases[] = {
        {"three points", steps_at({{0, 100}, {1, 101}, {2, 102}}), 1, 0},
        {"two points", steps_at({{0, 100}, {1, 101}, {5, 101}}), 0, 0},
        {"there and back", steps_at({{0, 100}, {1, 101}, {2, 100}, {3, 101}}), 0, 0},
        {"up and down", steps_at({{0, 98}, {1, 99}, {2, 100}, {3, 99}, {4, 98}, {5, 97}}), 2, 0},
        {"longest step", steps_at({{0, 100}, {2, 101}, {4, 102}}), 1, 0},
        {"past the longest", steps_at({{0, 100}, {2.001, 101}, {4.002, 102}}), 0, 0},
        {"no time between", steps_at({{0, 100}, {0, 101}, {0, 102}, {0, 103}}), 0, 0},
        {"2 % longer", steps_at({{0, 100}, {1, 101}, {2.0199, 102}}), 1, 0},
        {"more than that", steps_at({{0, 100}, {1, 101}, {2.0201, 102}}), 0, 0},
        {"2 % shorter", steps_at({{0, 100}, {1, 99}, {1.9801, 98}}), 1, 0},
        {"less than that", steps_at({{0, 100}, {1, 99}, {1.9799, 98}}), 0, 0},
        {"alike in beats", steps_at({{0, 50}, {1.2, 60}, {2.2, 75}}), 1, 0},
        {"2 % more beats", steps_at({{0, 50}, {1.2, 60}, {2.219, 75}}), 1, 0},
        {"in neither", steps_at({{0, 50}, {1.2, 60}, {2.221, 75}}), 0, 0},
        {"too uneven", steps_at({{0, 500}, {1, 5.5}, {2.02, 5.4}, {3.04, 5.3}}), 0, 1},
        {"steps too short", steps_at({{0, 100}, {1e-9, 101}, {2e-9, 102}}), 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        RampTallies tallies;
        const TempoEnvelope ramps = ramps_from_steps(c.steps, tallies);
        EXPECT_EQ(tallies.written, c.written);
        EXPECT_EQ(tallies.left_as_steps, c.left_as_steps);
        if (c.written > 0) continue;
        EXPECT_EQ(ramps.size(), c.steps.size());
        EXPECT_EQ(tallies.greatest_difference_seconds, 0);
    }
}

TEST(TempoRamps, OpenOnTheirFirstPointWhereTheOneBeforeIsTooNear) {
    RampTallies tallies;
    const auto ramps =
        ramps_from_steps(steps_at({{0, 90}, {0.5, 100}, {1.5, 101}, {2.5, 102}}), tallies);
    EXPECT_EQ(ramps[1].position_seconds, 0.5);
    EXPECT_EQ(ramps[1].bpm, 100);
    EXPECT_EQ(ramps[1].shape, TempoShape::ramp);
}

/// Holds, leaps and runs of steps that are not quite alike, different for each seed.
TempoEnvelope any_map(std::uint32_t seed) {
    const auto next = [&seed] {
        seed = seed * 1664525U + 1013904223U;
        return (seed >> 8) / static_cast<double>(1 << 24);
    };
    TempoEnvelope steps;
    double seconds = 0;
    for (int part = 0; part < 12; ++part) {
        const double length = 0.05 + next() * 1.5;
        const double slope = (next() - 0.5) * 12;
        const int count = 1 + static_cast<int>(next() * 9);
        double bpm = 110 + next() * 60;
        for (int i = 0; i < count; ++i, bpm += slope) {
            steps.push_back({.position_seconds = seconds, .bpm = bpm});
            seconds += length * (0.995 + 0.01 * next());
        }
        seconds += next() * 4;
    }
    return steps;
}

TEST(TempoRamps, LeaveEveryBeatBehindThemWhereItWas) {
    int written = 0;
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        const TempoEnvelope steps = any_map(seed);
        RampTallies tallies;
        const TempoEnvelope ramps = ramps_from_steps(steps, tallies);
        written += tallies.written;
        int unmoved = 0;
        for (std::size_t i = 0; i < ramps.size(); ++i) {
            const double at = ramps[i].position_seconds;
            ASSERT_TRUE(i == 0 || at > ramps[i - 1].position_seconds);
            ASSERT_GE(ramps[i].bpm, 1);
            ASSERT_LE(ramps[i].bpm, 1000);
            const auto same = std::find_if(steps.begin(), steps.end(), [&](const auto& step) {
                return step.position_seconds == at;
            });
            if (same == steps.end()) continue;
            ++unmoved;
            ASSERT_EQ(same->bpm, ramps[i].bpm);
            ASSERT_NEAR(beats_at(ramps, at), beats_at(steps, at), 1e-9);
        }
        ASSERT_GE(unmoved, tallies.written);
        ASSERT_EQ(ramps.back().position_seconds, steps.back().position_seconds);
    }
    EXPECT_GT(written, 300);
}

TEST(TempoRamps, TellHowFarATempoEventMoves) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        const TempoEnvelope steps = any_map(seed);
        RampTallies tallies;
        const TempoEnvelope ramps = ramps_from_steps(steps, tallies);
        double greatest = 0;
        for (const TempoEnvelopePoint& step : steps) {
            const double beats = beats_at(steps, step.position_seconds);
            double low = step.position_seconds - 2;
            double high = step.position_seconds + 2;
            for (int i = 0; i < 60; ++i) {
                const double middle = (low + high) / 2;
                (beats_at(ramps, middle) < beats ? low : high) = middle;
            }
            if (beats > 0) greatest = std::max(greatest, std::abs(low - step.position_seconds));
        }
        EXPECT_NEAR(tallies.greatest_difference_seconds, greatest, 1e-9);
    }
}

}  // namespace
}  // namespace tanrove
