// The table of alternate playlists 0x2632 is a list of 0x2629 blocks, one behind the other. They
// begin at offset 9, or at 13 behind a u32 count, as in the region list. An entry, offsets from its
// 'Z', E being the end of its inner block:
//
//   9    a 0x2628; its u32 count of the name at 18, the name at 22
//   E    u32 value
#include "session/alternate_playlists.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t largest_empty_table = 7;

constexpr std::size_t count_width = 4;
constexpr std::size_t inner_at = 9;
constexpr std::size_t name_count_at = 18;
constexpr std::size_t value_width = 4;

/// The block of this type that begins at `at` and ends by `limit`; nullptr if none does.
const Block* block_of_type(const BlockIndex& index, std::size_t at, std::uint16_t type,
                           std::size_t limit) {
    const Block* block = index.at(at);
    const bool fits = block != nullptr && block->content_type == type && block->end() <= limit;
    return fits ? block : nullptr;
}

std::optional<AltPlaylistEntry> read_entry(const BlockIndex& index, const Block& entry) {
    const Block* inner =
        block_of_type(index, entry.at + inner_at, block_type::clip, entry.end() - value_width);
    if (inner == nullptr) return std::nullopt;
    const auto name =
        readCountedText(index.image(), entry.at + name_count_at, inner->size, inner->end());
    if (!name) return std::nullopt;
    return AltPlaylistEntry{std::string(*name), index.image().u32(inner->end())};
}

}  // namespace

std::vector<AltPlaylistEntry> readAltPlaylists(const BlockIndex& index) {
    std::vector<AltPlaylistEntry> entries;
    for (const Block& table : index.of_type(block_type::alternate_playlist_table).all()) {
        if (table.size <= largest_empty_table) continue;
        const auto entry_at = [&](std::size_t at) {
            return block_of_type(index, at, block_type::audio_region, table.end());
        };
        const Block* entry = entry_at(table.payload());
        if (entry == nullptr) entry = entry_at(table.payload() + count_width);
        for (; entry != nullptr; entry = entry_at(entry->end())) {
            auto read = read_entry(index, *entry);
            if (!read) break;
            entries.push_back(std::move(*read));
        }
        break;
    }
    return entries;
}

}  // namespace tanrove
