// The tree parse with its odd stride. Children are sought by memchr for the next 'Z', so bytes that
// begin no block cost next to nothing.
#include "session/block_tree.hpp"

#include <algorithm>
#include <optional>

#include "session/record_forms.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t smallest_parent = 2;
constexpr std::size_t nodes_a_store = 4096;

/// Parses blocks and what is in them. `levels` is how many levels of children are still followed.
class TreeParser {
public:
    TreeParser(ByteView image, BlockTree& tree) : image_(image), tree_(tree) {}

    std::optional<BlockNode> parse_block(std::size_t p, std::size_t limit, int levels) {
        if (p + 8 >= image_.size() || image_.u8(p) != block_marker) return std::nullopt;
        if (image_.u8(p + block_high_type_at) != 0) return std::nullopt;
        BlockNode node{
            .offset = p + block_content_at,
            .size = image_.u32(p + block_size_at),
            .blockType = image_.u16(p + 1),
            .contentType = image_.u16(p + block_content_at),
            .children = {},
        };
        const std::size_t room = limit - p;
        if (room < block_size_base || node.size > room - block_size_base) return std::nullopt;
        if (node.size >= smallest_parent && levels > 0) {
            const std::size_t before = found_.size();
            find_children(p, levels, node);
            node.children = tree_.keep(std::span(found_).subspan(before));
            found_.resize(before);
        }
        return node;
    }

private:
    /// Children are sought from the byte behind the 'Z'. The walk is tested once a step, with the
    /// position that the step leads to: tested any earlier, a small last child would be lost.
    void find_children(std::size_t p, int levels, const BlockNode& parent) {
        const std::size_t end = p + block_size_base + parent.size;
        const ByteView up_to_end = image_.window(0, end);
        std::size_t i = 1;
        while (true) {
            const std::size_t next = up_to_end.find(block_marker, p + i);
            if (next == ByteView::npos || next - p >= parent.size) return;
            i = next - p;
            std::size_t step = 1;
            if (auto child = parse_block(p + i, end, levels - 1)) {
                step = child->size + block_size_base;
                found_.push_back(*child);
            }
            if (p + i + step >= end || i + step >= parent.size) return;
            i += step;
        }
    }

    ByteView image_;
    BlockTree& tree_;
    std::vector<BlockNode> found_;  ///< children of the blocks that are being parsed right now
};

/// The odd stride of the top level; `levels_of` says how deep a block of that type is followed.
template <typename LevelsOf>
BlockTree parse_top_level(ByteView image, LevelsOf levels_of) {
    BlockTree tree;
    TreeParser parser(image, tree);
    std::vector<BlockNode> blocks;
    std::size_t last_size = 0;
    std::size_t p = first_block_at;
    if (read_first_pointer(image)) p += block_size_base + pointer_block_size;
    while (p < image.size()) {
        const int levels = levels_of(image.u16(p + block_content_at));
        if (auto block = parser.parse_block(p, image.size(), levels)) {
            last_size = block->size + block_size_base;
            blocks.push_back(*block);
        }
        p += last_size == 0 ? 1 : last_size;
    }
    tree.keep_top_level(blocks);
    return tree;
}

}  // namespace

BlockNodes BlockTree::keep(std::span<const BlockNode> children) {
    if (children.empty()) return {};
    if (stores_.empty() || stores_.back().capacity() - stores_.back().size() < children.size()) {
        stores_.emplace_back().reserve(std::max(children.size(), nodes_a_store));
    }
    std::vector<BlockNode>& store = stores_.back();
    const std::size_t at = store.size();
    store.insert(store.end(), children.begin(), children.end());
    return {store.data() + at, children.size()};
}

BlockTree parseBlockTree(ByteView image) {
    return parse_top_level(image, [](std::uint16_t) { return max_block_depth; });
}

BlockTree parse_block_tree_below(ByteView image, std::span<const std::uint16_t> content_types,
                                 int levels) {
    return parse_top_level(image, [&](std::uint16_t type) {
        const auto found = std::find(content_types.begin(), content_types.end(), type);
        return found == content_types.end() ? 0 : std::min(levels, max_block_depth);
    });
}

}  // namespace tanrove
