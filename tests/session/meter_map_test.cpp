// The meter map, its limits and its two copies.
#include "session/meter_map.hpp"

#include <gtest/gtest.h>

#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::meter_block;
using builder::SessionBuilder;

std::vector<MeterPoint> read(const Bytes& image) {
    return readMeterMap(BlockIndex(ByteView(image)));
}

TEST(MeterMap, ReadsOneCopyOfTheMap) {
    const auto points =
        read(SessionBuilder().meter(0, 1, 4, 4).meter(191832480000, 91180, 3, 8).image());
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1].tick, 191832480000) << "beyond five bytes";
    EXPECT_EQ(points[1].bar, 91180U);
    EXPECT_EQ(points[1].numerator, 3U);
    EXPECT_EQ(points[1].denominator, 8U);
    EXPECT_EQ(points[1].extra, 3U);
    EXPECT_EQ(read(meter_block({{-5, 1, 3, 4}})).at(0).tick, 0) << "in front of the origin";
}

TEST(MeterMap, OneBrokenEntryMakesItNoMap) {
    const struct {
        std::uint32_t numerator, denominator;
        bool taken;
    } cases[] = {{1, 1, true},    {99, 64, true}, {0, 4, false},
                 {100, 4, false}, {4, 0, false},  {4, 65, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.numerator << '/' << c.denominator);
        const Bytes map = meter_block({{0, 1, 4, 4}, {960000, 2, c.numerator, c.denominator}});
        const Bytes behind = meter_block({{0, 1, 5, 4}});
        EXPECT_EQ(read(ByteWriter().raw(map).raw(behind).bytes()).size(), c.taken ? 2U : 0U);
    }
}

TEST(MeterMap, BelievesACountThatFitsTheBlock) {
    EXPECT_TRUE(read(meter_block({})).empty());
    const Bytes empty_copy = meter_block({});
    EXPECT_EQ(read(ByteWriter().raw(empty_copy).raw(meter_block({{}})).bytes()).size(), 1U);
    EXPECT_EQ(read(meter_block(std::vector<builder::MeterSpec>(4096))).size(), 4096U);
    EXPECT_TRUE(read(meter_block(std::vector<builder::MeterSpec>(4097))).empty());
    const Bytes whole = meter_block({{}, {}});
    for (const std::size_t bytes : {96U, 95U}) {  // two entries just fit, and do not
        const Bytes cut(whole.begin() + 9, whole.begin() + static_cast<std::ptrdiff_t>(bytes));
        EXPECT_EQ(read(builder::block(0x2029, cut)).size(), bytes == 96 ? 2U : 0U);
    }
}

}  // namespace
}  // namespace tanrove
