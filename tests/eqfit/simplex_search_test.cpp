// The search against the function whose lowest point is known, and the order of its steps.
#include "eqfit/simplex_search.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace tanrove {
namespace {

TEST(SearchSimplex, FindsTheBottomOfABentValley) {
    const SearchedError valley = [](const std::vector<double>& x, double) {
        return 100 * std::pow(x[1] - x[0] * x[0], 2) + std::pow(1 - x[0], 2);
    };
    const SimplexResult found = search_simplex(valley, {-1.2, 1}, {0.5, 0.5}, 400);
    EXPECT_NEAR(found.point[0], 1, 1e-6);
    EXPECT_NEAR(found.point[1], 1, 1e-6);
    EXPECT_EQ(found.error, valley(found.point, 0));
}

TEST(SearchSimplex, TakesItsStepsInOrder) {
    // A slope that falls to the right: expansion each time. The asked points tell the road.
    std::vector<double> asked;
    const SearchedError slope = [&](const std::vector<double>& x, double) {
        asked.push_back(x[0]);
        return -x[0];
    };
    EXPECT_EQ(search_simplex(slope, {0}, {1}, 2).point[0], 6 + 1);
    EXPECT_EQ(asked, (std::vector<double>{0, 1, 2, 3, 5, 7}));
    asked.clear();
    // Nothing is better than the start: contraction, then shrinking.
    const SearchedError spike = [&](const std::vector<double>& x, double) {
        asked.push_back(x[0]);
        return x[0] == 0 ? 0.0 : 1.0;
    };
    EXPECT_EQ(search_simplex(spike, {0}, {1}, 1).point[0], 0);
    EXPECT_EQ(asked, (std::vector<double>{0, 1, -1, 0.5, 0.5}));
}

TEST(SearchSimplex, ComesBackWithTheStartWhereNothingMoves) {
    const SearchedError flat = [](const std::vector<double>&, double) { return 7.0; };
    EXPECT_EQ(search_simplex(flat, {}, {}, 100).error, 7);
    EXPECT_EQ(search_simplex(flat, {3, 4}, {1, 1}, 2000).point, (std::vector<double>{3, 4}));
}

}  // namespace
}  // namespace tanrove
