// Tables of messages: which texts are taken, which rows are printed.
#include "report/count_rows.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

struct SendTallies {
    int written = 0;
    int muted = 0;
    int exact = 0;
    int without_bus = 0;
    int keyed = 0;
};

constexpr CountRow<SendTallies> send_rows[] = {
    {&SendTallies::written, "  %d send(s) carried\n"},
    {&SendTallies::muted, "      %d of them start muted\n", qualifies_previous},
    {&SendTallies::exact, "      %d of them are exact to 0.1%%\n", qualifies_previous},
    {&SendTallies::without_bus, "  WARNING: %d send(s) lead to no bus\n      and were left out\n"},
    {&SendTallies::keyed, "      (100%% keyed: %d)\n", qualifies_previous},
};

std::string printed(const SendTallies& tallies) {
    TextBuffer out;
    print_rows(out, tallies, send_rows);
    return out.text();
}

TEST(PrintRows, PrintsWhatIsCountedInTheOrderOfTheTable) {
    EXPECT_EQ(printed({.written = 1, .muted = 2, .exact = 3, .without_bus = 4, .keyed = 5}),
              "  1 send(s) carried\n"
              "      2 of them start muted\n"
              "      3 of them are exact to 0.1%\n"
              "  WARNING: 4 send(s) lead to no bus\n      and were left out\n"
              "      (100% keyed: 5)\n");
    EXPECT_EQ(printed({}), "");
}

TEST(PrintRows, PrintsAQualifyingRowOnlyBehindTheRowItQualifies) {
    EXPECT_EQ(printed({.muted = 1, .exact = 1, .keyed = 1}), "");
    EXPECT_EQ(printed({.written = 1, .exact = 1, .keyed = 1}),
              "  1 send(s) carried\n      1 of them are exact to 0.1%\n")
        << "the row between them may be missing, the row above the next group does not count";
    EXPECT_EQ(printed({.written = -1, .muted = 1}), "") << "a count below 0 prints nothing";
}

TEST(CountText, TakesExactlyOneCount) {
    struct {
        std::string_view text;
        bool taken;
    } const cases[] = {
        {"%d", true},        {"a %d b\n", true}, {"100%% of %d", true}, {"%d%%", true},
        {"", false},         {"none", false},    {"%d and %d", false},  {"%s", false},
        {"%d of %s", false}, {"%%d", false},     {"%d %", false},       {"%5d", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(only_count_field(c.text) != std::string_view::npos, c.taken);
    }
}

}  // namespace
}  // namespace tanrove
