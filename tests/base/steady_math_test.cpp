// The functions that give the same bits everywhere, against those of the library.
#include "base/steady_math.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace tanrove {
namespace {

TEST(SteadyMath, AgreesWithTheLibrary) {
    for (int i = 1; i < 4000; ++i) {
        const double x = std::exp2(i / 40.0 - 50);
        ASSERT_NEAR(steady_log2(x), std::log2(x), 4e-15 * std::max(1.0, std::abs(std::log2(x))));
        ASSERT_NEAR(steady_atan(x), std::atan(x), 2e-15);
        const double power = i / 40.0 - 50;
        ASSERT_NEAR(steady_exp2(power) / std::exp2(power), 1, 1e-14);
        const double angle = i * std::numbers::pi / 8000;
        ASSERT_NEAR(steady_sin(2 * angle), std::sin(2 * angle), 2e-15);
        ASSERT_NEAR(steady_tan(angle) / std::tan(angle), 1, 1e-12);
    }
    EXPECT_EQ(steady_log2(8), 3);
    EXPECT_EQ(steady_exp2(3), 8);
    EXPECT_EQ(steady_gain(0), 1);
    EXPECT_NEAR(steady_exp(1), std::numbers::e, 1e-15);
    EXPECT_NEAR(steady_log(10), std::numbers::ln10, 1e-15);
    // What no search asks for still comes back as a number.
    EXPECT_TRUE(std::isfinite(steady_exp2(1e300)));
    EXPECT_GT(steady_exp2(-1e300), 0);
}

}  // namespace
}  // namespace tanrove
