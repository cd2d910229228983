// Tables of messages: which texts are taken, which rows are printed.
#include "report/count_rows.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

struct SendTallies {
    int written = 0, muted = 0, exact = 0, without_bus = 0, keyed = 0;
};

constexpr CountRow<SendTallies> send_rows[] = {
    {&SendTallies::written, "%d written\n"},
    {&SendTallies::muted, "%d of them muted\n", qualifies_previous},
    {&SendTallies::exact, "%d of them to 0.1%%\n", qualifies_previous},
    {&SendTallies::without_bus, "%d left\nout\n"},
    {&SendTallies::keyed, "100%% keyed: %d\n", qualifies_previous},
};

TEST(PrintRows, PrintsWhatIsCountedAndAQualifyingRowOnlyBehindTheRowItQualifies) {
    const std::pair<SendTallies, const char*> cases[] = {
        {{1, 2, 3, 4, 5},
         "1 written\n2 of them muted\n3 of them to 0.1%\n4 left\nout\n100% keyed: 5\n"},
        {{0, 1, 1, 0, 1}, ""},
        {{1, 0, 1, 0, 1}, "1 written\n1 of them to 0.1%\n"},  // of the next group, not of this
        {{-1, 1, 0, 0, 0}, ""},
    };
    for (const auto& [tallies, text] : cases) {
        TextBuffer out;
        print_rows(out, tallies, send_rows);
        EXPECT_EQ(out.text(), text);
    }
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
