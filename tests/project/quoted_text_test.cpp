// Names in quotes, comments in the notes block: what a session's text must not do to a project.
#include "project/quoted_text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "project/project_notes.hpp"

namespace tanrove {
namespace {

TEST(Quoting, UsesTheFirstQuoteThatTheNameDoesNotHold) {
    const struct {
        std::string name;
        std::string line;
    } cases[] = {
        {"", R"("")"},
        {"Vox", R"("Vox")"},
        {"12\" mix", R"('12" mix')"},
        {"it's", R"("it's")"},
        {"12\" it's", R"(`12" it's`)"},
        {"\"'`", R"("_'`")"},
        {"a\tb\nc\rd", R"("a b c d")"},
        {std::string("a\0b", 3), R"("a b")"},
        {"h\xC3\xA9", "\"h\xC3\xA9\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(tanrove::quoted(c.name), c.line);
        const std::string inside = c.line.substr(1, c.line.size() - 2);
        EXPECT_EQ(is_kept_by_quotes(c.name), c.name == inside);
    }
}

TEST(Numbers, ThatReachAProjectAreFiniteAndHaveNoNegativeZero) {
    EXPECT_FALSE(std::signbit(printable(-0.0)));
    EXPECT_EQ(printable(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(printable(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(printable(-2.5), -2.5);
}

TEST(Notes, StandUnderTheNameOfTheirTrack) {
    const TrackComment comments[] = {
        {"Kick", "in\r\n\r\nout\tof phase\x01\n\n\n"},
        {"Silent", "\n\n"},
        {"Evil\n  >", ">\n  >\nlast"},
    };
    const std::vector<std::string> expected = {
        "Kick: in", "    ", "    out\tof phase", "Evil  >:  >", "      >", "    last",
    };
    EXPECT_EQ(notes_lines(comments), expected);
    MarkerTallies tallies;
    const MemoryLocation locations[] = {{.name = "Verse", .comment = "loud\nsoft", .number = 5},
                                        {.name = "Chorus", .number = 6}};
    EXPECT_EQ(marker_notes_lines(locations, tallies),
              (std::vector<std::string>{"Marker 5 {Verse}: loud", "    soft"}));
    EXPECT_EQ(tallies.comments, 1);
}

}  // namespace
}  // namespace tanrove
