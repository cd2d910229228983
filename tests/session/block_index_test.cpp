// The block index against a slow walk over every byte, and the tree parse with its odd stride.
#include "session/block_index.hpp"

#include <gtest/gtest.h>

#include <random>

#include "session/block_tree.hpp"
#include "support/byte_writer.hpp"

namespace tanrove {
namespace {

using builder::block;
using builder::Bytes;
using builder::ByteWriter;

std::vector<std::size_t> scan_every_byte(ByteView image) {
    std::vector<std::size_t> found;
    for (std::size_t p = 0; p + 9 <= image.size(); ++p) {
        if (isBlockAt(image, p, image.size())) found.push_back(p);
    }
    return found;
}

const Block* slow_first_inside(std::span<const Block> blocks, std::size_t from, std::size_t limit) {
    for (const Block& b : blocks) {
        if (b.at >= from && b.end() <= limit) return &b;
    }
    return nullptr;
}

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
        std::vector<std::size_t> found;
        std::size_t by_type = 0;
        for (const Block& b : index.blocks().all()) {
            found.push_back(b.at);
            if (index.of_type(b.content_type).all().front().at == b.at) {
                by_type += index.of_type(b.content_type).all().size();
            }
        }
        ASSERT_EQ(found, scan_every_byte(ByteView(bytes)));
        ASSERT_GT(found.size(), 100U);
        EXPECT_EQ(by_type, found.size());
        std::mt19937 random(seed);
        for (int i = 0; i < 2000; ++i) {
            const std::size_t from = random() % bytes.size();
            const std::size_t limit = from + random() % 4000;
            ASSERT_EQ(index.blocks().first_inside(from, limit),
                      slow_first_inside(index.blocks().all(), from, limit));
        }
    }
}

TEST(BlockIndex, AHeaderNeedsASizeThatFits) {
    Bytes bytes = block(0x2028, Bytes(10));
    const std::size_t size_at = 3;
    const struct {
        std::uint32_t size;
        bool is_block;
    } cases[] = {{0, false}, {1, true}, {12, true}, {13, false}, {0xffffffff, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.size);
        for (std::size_t i = 0; i < 4; ++i) {
            bytes[size_at + i] = static_cast<std::uint8_t>(c.size >> (8 * i));
        }
        EXPECT_EQ(isBlockAt(ByteView(bytes), 0, bytes.size()), c.is_block);
        EXPECT_EQ(BlockIndex(ByteView(bytes)).blocks().all().size(), c.is_block ? 1U : 0U);
    }
}

TEST(BlockIndex, KeepsNoMoreBlocksThanHaveRoom) {
    Bytes bytes(7000000, 0);
    for (std::size_t i = 0; i < bytes.size(); i += 4) bytes[i] = bytes[i + 1] = 'Z';
    const BlockIndex index{ByteView(bytes)};
    EXPECT_EQ(index.blocks().all().size(), bytes.size() / 9);
}

TEST(BlockTree, KeepsSmallLastChildrenAndNesting) {
    const Bytes small = block(0x1111, {});
    const Bytes inner = block(0x2222, small);
    const Bytes image = ByteWriter()
                            .zeros(20)
                            .block(0x3333, ByteWriter().u32(7).raw(inner).raw(small).bytes())
                            .block(0x4444, {})
                            .bytes();
    const auto tree = parseBlockTree(ByteView(image));
    ASSERT_EQ(tree.size(), 2U);
    ASSERT_EQ(tree[0].children.size(), 2U);
    EXPECT_EQ(tree[0].children[0].contentType, 0x2222);
    ASSERT_EQ(tree[0].children[0].children.size(), 1U);
    EXPECT_EQ(tree[0].children[1].contentType, 0x1111);
    EXPECT_EQ(tree[1].contentType, 0x4444);
}

TEST(BlockTree, AfterABreakTheWalkJumpsByTheLastBlocksLength) {
    const Bytes long_block = block(0x1111, Bytes(91));  // 100 bytes in all
    const Bytes image = ByteWriter()
                            .zeros(20)
                            .raw(long_block)
                            .zeros(3)
                            .raw(block(0x2222, Bytes(10)))
                            .zeros(97 - 19)
                            .raw(block(0x3333, Bytes(10)))
                            .bytes();
    const auto tree = parseBlockTree(ByteView(image));
    ASSERT_EQ(tree.size(), 2U) << "the block in the shadow of the jump is not seen";
    EXPECT_EQ(tree[1].contentType, 0x3333);
}

TEST(BlockTree, NestsNoDeeperThanItsLimitAndDoesNotLoseTheRest) {
    Bytes deep = block(0x1111, {});
    for (int i = 0; i < 5000; ++i) deep = block(0x2222, deep);
    const Bytes image = ByteWriter().zeros(20).raw(deep).block(0x3333, {}).bytes();
    const auto tree = parseBlockTree(ByteView(image));
    ASSERT_EQ(tree.size(), 2U);
    int depth = 0;
    for (const auto* node = &tree[0]; !node->children.empty(); node = &node->children[0]) ++depth;
    EXPECT_EQ(depth, max_block_depth);
}

TEST(ThreePoint, WidthsAreStoredAndEightByteNumbersLoseTheirMark) {
    const Bytes bytes = ByteWriter()
                            .u8(1)
                            .u8(0x20)
                            .u8(0x31)
                            .u8(0x80)
                            .u8(0)
                            .number(0x1234, 2)
                            .number(9, 1)
                            .number(0x56789a, 3)
                            .ticks(5)
                            .bytes();
    const auto point = readThreePoint(ByteView(bytes), 0, bytes.size());
    ASSERT_TRUE(point.has_value());
    EXPECT_EQ(point->flag, 1);
    EXPECT_EQ(point->source_offset, 0x1234U);
    EXPECT_EQ(point->gap, 9U);
    EXPECT_EQ(point->length, 0x56789aU);
    EXPECT_EQ(point->start, tick_origin + 5);
    EXPECT_EQ(point->end, bytes.size());
    EXPECT_EQ(readThreePoint(ByteView(bytes), 0, bytes.size() - 1)->start, 0U);
    EXPECT_FALSE(readThreePoint(ByteView(bytes), bytes.size() - 4, bytes.size()).has_value());
}

}  // namespace
}  // namespace tanrove
