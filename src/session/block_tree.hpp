// The image as a tree of blocks. Only the session lists are read from it: they want the direct
// children of top-level blocks, which a flat scan cannot tell from deeper ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/byte_view.hpp"

namespace tanrove {

/// Deepest nesting that is followed; blocks below it are left out of the tree.
constexpr int max_block_depth = 32;

struct BlockNode;

/// Blocks side by side, kept by their tree: a span that a node can hold of its own kind.
class BlockNodes {
public:
    BlockNodes() = default;
    BlockNodes(const BlockNode* first, std::size_t count) : first_(first), count_(count) {}

    const BlockNode* begin() const { return first_; }
    const BlockNode* end() const;
    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    const BlockNode& front() const { return *first_; }

private:
    const BlockNode* first_ = nullptr;
    std::size_t count_ = 0;
};

/// One block and the blocks found in it. Records told by a node count from its `offset`.
struct BlockNode {
    std::size_t offset = 0;  ///< position of the content type field, the 'Z' plus 7
    std::uint32_t size = 0;
    std::uint16_t blockType = 0;
    std::uint16_t contentType = 0;
    BlockNodes children;
};

inline const BlockNode* BlockNodes::end() const {
    return first_ + count_;
}

/// The blocks of an image, top level first, with all that is below them. Copies would share the
/// nodes of the one they were made from, so there are none.
class BlockTree {
public:
    BlockTree() = default;
    BlockTree(BlockTree&&) = default;
    BlockTree& operator=(BlockTree&&) = default;

    std::span<const BlockNode> blocks() const { return blocks_; }

    /// Takes children over and tells where they stay.
    BlockNodes keep(std::span<const BlockNode> children);
    void keep_top_level(std::span<const BlockNode> blocks) { blocks_ = keep(blocks); }

private:
    std::span<const BlockNode> blocks_;
    /// Each grows no further than the room it was made with, so that nothing in it moves.
    std::vector<std::vector<BlockNode>> stores_;
};

/// The first position behind the block.
inline std::size_t end_of(const BlockNode& node) {
    return node.offset + node.size;
}

/// The whole tree, for those who look into a session (tools/session_dump): the top-level blocks,
/// from position 20 on. Where no block starts the walk goes on behind the length of the last block
/// it read, as real sessions want it.
BlockTree parseBlockTree(ByteView image);

/// The same top-level blocks, children only below those of these types and so many levels deep: a
/// reader that wants one kind of list need not pay for the rest.
BlockTree parse_block_tree_below(ByteView image, std::span<const std::uint16_t> content_types,
                                 int levels);

}  // namespace tanrove
