// The block index, the tree, the version scan and the damage scan on any image.
#include "fuzz/promise.hpp"
#include "session/block_index.hpp"
#include "session/block_tree.hpp"
#include "session/damage_scan.hpp"
#include "session/session_version.hpp"

namespace {

using namespace tanrove;

void check_tree(std::span<const BlockNode> nodes, std::size_t from, std::size_t limit, int depth) {
    promise(nodes.empty() || depth <= max_block_depth, "the tree has its depth");
    for (const BlockNode& node : nodes) {
        promise(node.offset >= from && node.offset + node.size <= limit, "children lie inside");
        from = node.offset + node.size;
        check_tree(node.children, node.offset - block_content_at, from, depth + 1);
    }
}

void check_index(const BlockIndex& index) {
    const ByteView image = index.image();
    const auto all = index.blocks().all();
    // A first block that only points to another one has no type.
    const bool opens_with_pointer = read_first_pointer(image).has_value();
    std::size_t next = 0;
    for (std::size_t p = 0; image.holds(p, block_payload_at); ++p) {
        if (!isBlockAt(image, p, image.size())) continue;
        if (p == first_block_at && opens_with_pointer) continue;
        promise(next < all.size() && all[next].at == p, "the index has every block, in order");
        promise(all[next].end() <= image.size(), "every block lies inside the image");
        promise(index.at(p) == &all[next++], "every block is found at its place");
    }
    promise(next == all.size(), "the index has nothing else");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const BlockIndex index(input_view(data, size));
    check_index(index);
    check_tree(parseBlockTree(index.image()).blocks(), 0, size, 0);

    const SessionVersion version = scanSessionVersion(index);
    promise(version.version.empty() == version.product.empty(), "a version has its product");
    promise((version.major >= 0) == !version.version.empty(), "a version has its number");
    promise(version.product.rfind("Pro Tools", 0) == 0 || version.product.empty(), "product name");

    const DamageReport damage = scanDamage(index);
    promise(damage.trailing_bytes <= size && damage.break_at <= size, "damage lies in the file");
    const bool points_behind = read_first_pointer(index.image()).value_or(0) >= size;
    const bool incomplete = damage.verdict == DamageVerdict::incomplete;
    promise(incomplete || damage.trailing_bytes == 0, "bytes behind the last block are told");
    promise(!incomplete || damage.trailing_bytes > 0 || points_behind,
            "an incomplete file has bytes behind its last block, or should have");
    return 0;
}
