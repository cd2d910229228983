// The faders of Pro Tools and the ramps that follow them, heard the way REAPER plays them: in
// straight lines of gain from point to point.
#include "base/fader_law.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "base/ramp_points.hpp"

namespace tanrove {
namespace {

double db_of(double gain) {
    return 20 * std::log10(gain);
}
double gain_of(double db) {
    return std::pow(10, db / 20);
}

TEST(FaderLaw, IsStraightBetweenItsCornersAndRunsBackTheSameWay) {
    struct {
        FaderThrow fader;
        double db, position;
    } const cases[] = {
        {FaderThrow::track, 17.244, -1.0721},
        {FaderThrow::track, 6, 0},
        {FaderThrow::track, -10, 1.4392},
        {FaderThrow::track, -108.25, 3.92585},
        {FaderThrow::clip, 36, 0},
        {FaderThrow::clip, 24, 0.9753},
        {FaderThrow::clip, -30, 5.36255},
        {FaderThrow::clip, -144, 6.5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.db << " dB");
        EXPECT_NEAR(fader_position(c.fader, c.db), c.position, 1e-9);
        EXPECT_NEAR(fader_db(c.fader, c.position), c.db, 1e-9);
    }
    EXPECT_EQ(fader_position(FaderThrow::track, -200), 4.0);
    EXPECT_EQ(fader_db(FaderThrow::track, 9), -144.5);
    EXPECT_EQ(fader_position(FaderThrow::clip, 50), 0.0);
    EXPECT_EQ(fader_db(FaderThrow::clip, -1), 36.0);
    EXPECT_EQ(fader_db(FaderThrow::clip, 9), -144.0);
}

TEST(RampPoints, KeepEveryRampWithinATenthOfADecibelOfTheFader) {
    for (const FaderThrow fader : {FaderThrow::track, FaderThrow::clip}) {
        for (double from = -140; from <= 36; from += 4.7) {
            for (const double to :
                 {from - 1.4, from + 1.6, -139.0, -40.6, -19.3, 0.0, 11.0, 30.0}) {
                SCOPED_TRACE(testing::Message() << from << " dB to " << to << " dB");
                if (fader == FaderThrow::clip && to > 36) continue;
                auto points = ramp_points(fader, from, to);
                points.push_back({1, to});
                const double start = fader_position(fader, from);
                const double end = fader_position(fader, to);
                RampPoint last{0, from};
                for (const auto& point : points) {
                    if (end != start) {
                        ASSERT_GT(point.fraction, last.fraction);
                    }
                    ASSERT_LE(std::abs(point.db - last.db), 1.5 + 1e-9);
                    for (double along = 0.05; along < 1; along += 0.05) {
                        const double played =
                            db_of(std::lerp(gain_of(last.db), gain_of(point.db), along));
                        const double at = std::lerp(last.fraction, point.fraction, along);
                        ASSERT_NEAR(played, fader_db(fader, std::lerp(start, end, at)), 0.1);
                    }
                    last = point;
                }
            }
        }
    }
    EXPECT_TRUE(ramp_points(FaderThrow::track, 0.7, -0.7).empty());
    EXPECT_TRUE(ramp_points(FaderThrow::track, -150, -190).empty());
}

}  // namespace
}  // namespace tanrove
