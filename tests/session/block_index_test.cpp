// The block index against a slow walk over every byte, and the tree parse with its odd stride.
#include "session/block_index.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "reading.hpp"
#include "session/block_tree.hpp"
#include "slow_scan.hpp"
#include "support/byte_writer.hpp"

namespace tanrove {
namespace {

using namespace builder;

Bytes noisy_image(unsigned seed) {
    std::mt19937 random(seed);
    Bytes bytes(20000);
    for (auto& byte : bytes) {
        const auto value = random() % 8;
        byte = static_cast<std::uint8_t>(value < 2 ? 'Z' : value < 6 ? 0 : random() % 256);
    }
    return bytes;
}

TEST(BlockIndex, FindsWhatAScanOfEveryByteFinds) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const Bytes bytes = noisy_image(seed);
        const BlockIndex index{ByteView(bytes)};
        const SlowScan scan{ByteView(bytes)};
        const auto blocks = index.blocks().all();
        std::size_t next = 0;
        for (std::size_t p = 0; p + 9 <= bytes.size(); ++p) {
            if (!isBlockAt(ByteView(bytes), p, bytes.size())) continue;
            ASSERT_LT(next, blocks.size());
            ASSERT_EQ(blocks[next].at, p);
            const auto same = index.of_type(blocks[next++].content_type).all();
            ASSERT_EQ(same.size(), scan.blocks(same.front().content_type).size());
        }
        ASSERT_EQ(next, blocks.size());
        ASSERT_GT(next, 100U);
        std::mt19937 random(seed);
        for (int i = 0; i < 2000; ++i) {
            const std::size_t from = random() % bytes.size();
            const std::size_t limit = from + random() % 4000;
            const auto first = std::ranges::find_if(
                blocks, [&](const Block& b) { return b.at >= from && b.end() <= limit; });
            ASSERT_EQ(index.blocks().first_inside(from, limit),
                      first == blocks.end() ? nullptr : &*first);
        }
    }
}

TEST(BlockIndex, AHeaderNeedsASizeThatFits) {
    for (const std::uint32_t size : {0U, 1U, 12U, 13U, 0xffffffffU}) {
        Bytes bytes = block(0x2028, Bytes(10));
        for (std::size_t i = 0; i < 4; ++i) {
            bytes[3 + i] = static_cast<std::uint8_t>(size >> (8 * i));
        }
        const bool is_block = size == 1 || size == 12;
        EXPECT_EQ(isBlockAt(ByteView(bytes), 0, bytes.size()), is_block) << size;
        EXPECT_EQ(BlockIndex(ByteView(bytes)).blocks().all().size(), is_block ? 1U : 0U);
    }
}

TEST(BlockIndex, KeepsNoMoreBlocksThanHaveRoom) {
    Bytes bytes(7000000, 0);
    for (std::size_t i = 0; i < bytes.size(); i += 4) bytes[i] = bytes[i + 1] = 'Z';
    const BlockIndex index{ByteView(bytes)};
    EXPECT_EQ(index.blocks().all().size(), bytes.size() / 9);
}

std::string types_of(std::span<const BlockNode> blocks) {
    std::string text;
    for (const auto& b : blocks) text += std::to_string(b.contentType) + types_of(b.children);
    return "(" + text + ")";
}

TEST(BlockTree, KeepsSmallLastChildrenAndAfterABreakJumpsByTheLastBlocksLength) {
    const Bytes small = block(1, {});
    const Bytes outer = ByteWriter().u32(7).block(2, small).raw(small).bytes();
    const Bytes nested = ByteWriter().zeros(20).block(3, outer).block(4, {}).bytes();
    EXPECT_EQ(types_of(parseBlockTree(ByteView(nested)).blocks()), "(3(2(1())1())4())");
    // The first block has 100 bytes in all; the second one lies in the shadow of the jump.
    ByteWriter broken;
    broken.zeros(20).block(1, Bytes(91)).zeros(3).block(2, Bytes(10)).zeros(97 - 19).block(3, {});
    EXPECT_EQ(types_of(parseBlockTree(ByteView(broken.bytes())).blocks()), "(1()3())");
}

TEST(BlockTree, NestsNoDeeperThanItsLimitAndDoesNotLoseTheRest) {
    Bytes deep = block(0x1111, {});
    for (int i = 0; i < 5000; ++i) deep = block(0x2222, deep);
    const Bytes image = ByteWriter().zeros(20).raw(deep).block(0x3333, {}).bytes();
    const BlockTree whole = parseBlockTree(ByteView(image));
    const auto tree = whole.blocks();
    ASSERT_EQ(tree.size(), 2U);
    int depth = 0;
    for (const auto* node = &tree[0]; !node->children.empty(); node = node->children.begin())
        ++depth;
    EXPECT_EQ(depth, max_block_depth);
}

TEST(ThreePoint, WidthsAreStoredAndEightByteNumbersLoseTheirMark) {
    ByteWriter writer;
    writer.u8(1).u8(0x20).u8(0x31).u8(0x80).u8(0);
    writer.number(0x1234, 2).number(9, 1).number(0x56789a, 3).ticks(5);
    const Bytes bytes = writer.bytes();
    const auto point = readThreePoint(ByteView(bytes), 0, bytes.size());
    ASSERT_TRUE(point.has_value());
    EXPECT_EQ(fields(point->flag, point->source_offset, point->gap, point->length, point->start),
              fields(1, 0x1234, 9, 0x56789a, tick_origin + 5));
    EXPECT_EQ(point->end, bytes.size());
    EXPECT_EQ(readThreePoint(ByteView(bytes), 0, bytes.size() - 1)->start, 0U);
    EXPECT_FALSE(readThreePoint(ByteView(bytes), bytes.size() - 4, bytes.size()).has_value());
}

}  // namespace
}  // namespace tanrove
