// The first 0x261d is the master fader; the first 0x2619 in it holds its name: u32 count of 1 to
// 255 at offset 9, text at 13.
#include "session/master_name.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_length_at = 9;

}  // namespace

std::string readMasterName(const BlockIndex& index) {
    const auto masters = index.of_type(block_type::master_row).all();
    if (masters.empty()) return {};
    const Block* block = index.first_child(masters.front(), block_type::strip_name);
    if (block == nullptr) return {};
    return std::string(
        read_name(index.image(), block->at + name_length_at, block->end()).value_or(""));
}

}  // namespace tanrove
