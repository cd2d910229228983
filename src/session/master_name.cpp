// The first 0x261d is the master fader; the first 0x2619 in it holds its name: u32 count of 1 to 64
// at offset 9, text at 13.
#include "session/master_name.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t master_type = 0x261d;
constexpr std::uint16_t strip_name_type = 0x2619;
constexpr std::size_t name_length_at = 9;
constexpr std::size_t max_name_bytes = 64;

}  // namespace

std::string readMasterName(const BlockIndex& index) {
    const auto masters = index.of_type(master_type).all();
    if (masters.empty()) return {};
    const Block* block = index.first_child(masters.front(), strip_name_type);
    if (block == nullptr) return {};
    const auto name =
        readCountedText(index.image(), block->at + name_length_at, max_name_bytes, block->end());
    return name && is_session_text(*name) ? std::string(*name) : std::string();
}

}  // namespace tanrove
