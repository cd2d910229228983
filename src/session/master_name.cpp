// The first 0x261d is the master fader; the first 0x2619 in it holds its name: u32 count of 1 to
// 255 at offset 9, text at 13.
#include "session/master_name.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t master_type = 0x261d;
constexpr std::uint16_t strip_name_type = 0x2619;
constexpr std::size_t name_length_at = 9;

}  // namespace

std::string readMasterName(const BlockIndex& index) {
    const auto masters = index.of_type(master_type).all();
    if (masters.empty()) return {};
    const Block* block = index.first_child(masters.front(), strip_name_type);
    if (block == nullptr) return {};
    return std::string(
        read_name(index.image(), block->at + name_length_at, block->end()).value_or(""));
}

}  // namespace tanrove
