// The forms of name lists on both sides of their caps.
#include "report/name_lists.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

std::vector<std::string> names(std::size_t count) {
    std::vector<std::string> made;
    for (std::size_t i = 0; i < count; ++i) made.push_back("n" + std::to_string(i));
    return made;
}

TEST(NameLists, ShowExactlyTheirCapAndTheTrueRemainder) {
    EXPECT_EQ(quoted_names(names(0), 2), "");
    EXPECT_EQ(quoted_names(names(2), 2), " \"n0\", \"n1\"");
    EXPECT_EQ(quoted_names(names(3), 2), " \"n0\", \"n1\", ...");
    EXPECT_EQ(quoted_names(names(3), no_cap), " \"n0\", \"n1\", \"n2\"");

    EXPECT_EQ(one_name_a_line(names(2), 2), "      n0\n      n1\n");
    EXPECT_EQ(one_name_a_line(names(5), 2), "      n0\n      n1\n      ... and 3 more\n");

    const std::vector<MeterPoint> meters = {{.bar = 3, .numerator = 4, .denominator = 4},
                                            {.bar = 7, .numerator = 3, .denominator = 8}};
    EXPECT_EQ(meters_at_bars(meters, 2), " 4/4 at bar 3, 3/8 at bar 7");
    EXPECT_EQ(meters_at_bars(meters, 1), " 4/4 at bar 3, ... and 1 more");
}

TEST(NameLists, LetNoNameBreakALineOrReachTheTerminal) {
    const std::vector<std::string> hostile = {std::string("a\n\x1b[2J\0b\x7f", 9), "caf\xc3\xa9"};
    EXPECT_EQ(quoted_names(hostile, no_cap), " \"a  [2J b \", \"caf\xc3\xa9\"");
    EXPECT_EQ(one_name_a_line(hostile, no_cap), "      a  [2J b \n      caf\xc3\xa9\n");
    EXPECT_EQ(counted_names({{.name = hostile[0], .count = 1}, {.name = "b", .count = 2}}),
              "a  [2J b  x1, b x2");
    EXPECT_EQ(control_lanes({{"Pro-Q", "Band 1", 2}, {"\n", "Ratio", 1}}),
              "Pro-Q Band 1 (2),   Ratio (1)");
}

}  // namespace
}  // namespace tanrove
