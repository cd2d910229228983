// The chain of blocks in a decrypted session of either byte order, for the lists that the library
// owes. The program's own readers have a finer index of little-endian sessions; this one knows just
// enough to walk a list of either kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "base/byte_view.hpp"
#include "base/session_numbers.hpp"

namespace tanrove::ptformat {

/// Source offset, length and start of a clip, as stored.
struct ClipSpan {
    std::uint64_t source_offset = 0;
    std::uint64_t length = 0;
    std::uint64_t start = 0;
};

/// One block: 'Z' at `at`, its size counted from offset 7.
struct ChainBlock {
    std::size_t at = 0;
    std::size_t size = 0;
    std::uint16_t content_type = 0;

    std::size_t payload() const { return at + 9; }
    std::size_t end() const { return at + 7 + size; }
    bool is_one_of(std::initializer_list<std::uint16_t> types) const;
};

/// A decrypted session, its byte order, and its chain of top-level blocks. Every read that passes
/// the image's end gives 0.
class Container {
public:
    /// Walks the chain from the header on. Where it breaks it goes on at the next byte that begins
    /// a block, so that a damaged session keeps what lies behind the damage.
    explicit Container(ByteView image);

    ByteView image() const { return image_; }
    bool is_big_endian() const { return big_endian_; }

    std::uint16_t u16(std::size_t at) const;
    std::uint32_t u32(std::size_t at) const;
    std::uint64_t u64(std::size_t at) const;
    /// A timeline position: the lower 56 bits of a field of 8 bytes.
    std::uint64_t position(std::size_t at) const;

    /// The counted text at `at`, cut to `bound` bytes and to what lies before `limit`.
    std::string text(std::size_t at, std::size_t bound, std::size_t limit) const;

    /// The three-point header at `at`; a number that is wider than 8 bytes or passes `limit` is 0.
    ClipSpan clip_span(std::size_t at, std::size_t limit) const;

    const std::vector<ChainBlock>& top_level() const { return top_level_; }

    /// The first top-level block of a type; where the chain has none, the first block of that type
    /// anywhere.
    std::optional<ChainBlock> first_of_type(std::uint16_t type) const;

    /// Blocks of these types anywhere in the image, in order of position.
    std::vector<ChainBlock> scan(std::initializer_list<std::uint16_t> types) const;

    /// The first block in the payload of `parent` that lies wholly inside it.
    std::optional<ChainBlock> first_child(const ChainBlock& parent) const;

    /// The direct children of `parent` that have one of these types.
    std::vector<ChainBlock> children(const ChainBlock& parent,
                                     std::initializer_list<std::uint16_t> types) const;

private:
    std::uint64_t number(std::size_t at, std::size_t width) const;
    std::optional<ChainBlock> block_at(std::size_t p, std::size_t limit) const;
    std::optional<ChainBlock> next_block(std::size_t from, std::size_t limit) const;

    ByteView image_;
    bool big_endian_ = false;
    std::size_t chain_at_ = 0;  ///< where the blocks begin that have a type
    std::vector<ChainBlock> top_level_;
};

}  // namespace tanrove::ptformat
