// The grid and the nudge out of the texts that store them.
#include "session/grid_and_nudge.hpp"

#include <gtest/gtest.h>

#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::values_block;

std::vector<std::uint32_t> read(const Bytes& image) {
    const auto found = readGridAndNudge(BlockIndex(ByteView(image)));
    if (!found) return {};
    return {found->nudge.bars, found->nudge.beats, found->nudge.ticks,
            found->grid.bars,  found->grid.beats,  found->grid.ticks};
}

using Six = std::vector<std::uint32_t>;

TEST(GridAndNudge, TheFirstRecordWithTwoValuesCounts) {
    EXPECT_EQ(read(builder::SessionBuilder().grid_and_nudge({0, 0, 240}, {12, 1, 7}).image()),
              (Six{12, 1, 7, 0, 0, 240}));
    const Bytes one = values_block({{9, 9, 9}});
    const Bytes three = values_block({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_EQ(read(ByteWriter().raw(one).raw(three).bytes()), (Six{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(read(one), Six{});
}

TEST(GridAndNudge, ReadsTextsByTheLetter) {
    const Six taken = {1, 2, 345, 6, 7, 890};
    const struct {
        const char* text;
        bool taken;
    } cases[] = {
        {"\n   1|  2| 345\n6|7|890", true},
        {"\n1|2|345;0000006|0000007|890", true},
        {"\n1|2|345\n00000006|7|890", false},  // eight digits
        {"\n1|2|345\n6|00000007|890", false},
        {"\n1|2|345\n6|7|89", false},
        {"\n1|2|345\n6|7|8901", false},
        {"\n1|2|345\n6 |7|890", false},  // a blank behind a number
        {"\n1|2|345\n6||890", false},
        {"1|2|345\n6|7|890", false},  // the byte in front is the type's own blank
        {"\n1|2|345|6|7|890", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const Bytes payload = ByteWriter().raw(c.text).raw("\n").zeros(20).bytes();
        EXPECT_EQ(read(builder::block(0x2066, payload)), c.taken ? taken : Six{});
    }
}

TEST(GridAndNudge, TheRecordAndItsLastDigitHaveLimits) {
    const std::string text = "\n1|2|345\n6|7|890";
    for (const std::size_t size : {23U, 24U, 4000U, 4001U}) {
        SCOPED_TRACE(size);
        const Bytes payload = ByteWriter().raw(text).zeros(size - 2 - text.size()).bytes();
        EXPECT_EQ(read(builder::block(0x2066, payload)).empty(), size == 23 || size == 4001);
    }
    for (const std::size_t missing : {0U, 1U}) {
        const Bytes payload =
            ByteWriter().zeros(10).raw(text.substr(0, text.size() - missing)).bytes();
        const Bytes block = builder::block(0x2066, payload);
        EXPECT_EQ(read(ByteWriter().raw(block).raw("0\n").bytes()).empty(), missing == 1);
    }
}

TEST(GridQuarterNotes, CountBarsAndBeatsUnderTheMeter) {
    const struct {
        GridSetting grid;
        std::uint32_t numerator, denominator;
        double quarters;  // 0: no grid
    } cases[] = {{{1, 0, 0}, 4, 4, 4},
                 {{1, 0, 0}, 6, 8, 3},
                 {{0, 1, 0}, 6, 8, 0.5},
                 {{0, 0, 240}, 4, 4, 0.25},
                 {{1, 1, 480}, 3, 4, 4.5},
                 {{0, 0, 0}, 4, 4, 0},
                 {{249, 3, 959}, 4, 4, 999 + 959 / 960.0},
                 {{250, 0, 0}, 4, 4, 0},
                 {{9999999, 0, 0}, 99, 1, 0},
                 {{1, 0, 0}, 4, 0, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.grid.bars << ' ' << c.grid.beats << ' ' << c.grid.ticks);
        const auto quarters = grid_quarter_notes(c.grid, c.numerator, c.denominator);
        ASSERT_EQ(quarters.has_value(), c.quarters > 0);
        if (quarters) {
            EXPECT_DOUBLE_EQ(*quarters, c.quarters);
        }
    }
}

}  // namespace
}  // namespace tanrove
