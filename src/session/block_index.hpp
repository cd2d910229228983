// Every block of the image, found in one pass right after the session has opened. A reader that
// wants "every block of type T" asks here and gets what a scan of every byte would give it: nested
// blocks beside their parents, and chance matches too, which its own limits then keep out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "base/byte_view.hpp"
#include "session/record_forms.hpp"

namespace tanrove {

/// A block's span in the image: `start` is the 'Z', `end` is behind the last byte. A position lies
/// in it when start < p < end.
struct BlockSpan {
    std::size_t start = 0;
    std::size_t end = 0;

    bool encloses(std::size_t p) const { return start < p && p < end; }
};

/// One block as the index keeps it.
struct Block {
    std::size_t at = 0;      ///< position of the 'Z'
    std::uint32_t size = 0;  ///< bytes behind offset 6
    std::uint16_t content_type = 0;

    std::size_t end() const { return at + block_size_base + size; }
    std::size_t payload() const { return at + block_payload_at; }
    BlockSpan span() const { return {at, end()}; }
};

/// A list of blocks in order of their positions that also answers which stand between two
/// positions, and which is the first behind a position that ends by a limit: at once where the
/// blocks are spread evenly, in logarithmic time wherever they stand.
class BlockList {
public:
    BlockList() = default;
    explicit BlockList(std::vector<Block> blocks);

    std::span<const Block> all() const { return blocks_; }

    /// Blocks that begin at or behind `from` and before `to`, whatever their ends.
    std::span<const Block> between(std::size_t from, std::size_t to) const;

    /// The first block that begins at or behind `from` and ends at or before `limit`; nullptr if
    /// there is none.
    const Block* first_inside(std::size_t from, std::size_t limit) const;

    /// The place in `all` of the first block that begins at or behind `position`; the number of
    /// blocks if none does.
    std::size_t place_from(std::size_t position) const;

    /// From the first block's 'Z' to the furthest end of all: what a search for something that
    /// stands inside these blocks has to pass over. Empty for no blocks.
    BlockSpan reach() const;

private:
    void lay_out_stretches();
    std::size_t first_index_inside(std::size_t index, std::size_t limit) const;

    std::vector<Block> blocks_;
    /// The image from the first block to the last in stretches of equal length: for each the place
    /// of its first block.
    std::vector<std::uint32_t> stretches_;
    unsigned stretch_bits_ = 0;  ///< a stretch has two to this power bytes
    /// Least end of each run of blocks; each level sums up the runs of the one below.
    std::vector<std::vector<std::size_t>> least_ends_;
};

/// Every place of these bytes in the span, in order.
std::vector<std::size_t> find_in(ByteView image, const BlockSpan& span, std::string_view bytes);

/// All blocks of one image.
class BlockIndex {
public:
    /// Walks the image once. A candidate passes `isBlockAt` with the image's end as limit and has
    /// both bytes of its content type in the image. However blocks nest, their headers stand apart,
    /// so an image has room for one in 9 bytes; candidates past that number are left out, which
    /// bounds the memory on bytes that are made to look like headers everywhere.
    explicit BlockIndex(ByteView image);

    ByteView image() const { return image_; }

    /// Every block, in order of position.
    const BlockList& blocks() const { return all_; }

    /// Every block of a content type, in order of position. Empty for a type that is not there.
    const BlockList& of_type(std::uint16_t content_type) const;

    /// Every block of these types, merged in order of position.
    std::vector<Block> of_types(std::span<const std::uint16_t> content_types) const;

    /// The block whose 'Z' stands at `p`; nullptr if none does.
    const Block* at(std::size_t p) const;

    /// The chain of blocks that no other holds, from the file's header on as far as it runs.
    std::vector<Block> top_level() const;

    /// The first block in the payload of `parent` that lies wholly inside it: "its first child".
    const Block* first_child(const Block& parent) const {
        return all_.first_inside(parent.payload(), parent.end());
    }

    /// The first block of a type in the payload of `parent` that lies wholly inside it.
    const Block* first_child(const Block& parent, std::uint16_t content_type) const {
        return of_type(content_type).first_inside(parent.payload(), parent.end());
    }

private:
    ByteView image_;
    BlockList all_;
    std::vector<std::uint32_t>
        list_of_type_;              ///< for each content type its place in `lists_`, or 0
    std::vector<BlockList> lists_;  ///< the first is empty and serves unknown types
};

}  // namespace tanrove
