// Inactive: a strip table entry 0x251a of the long form, 72 + n bytes in size with n the bytes of
// its name (u32 n of 1 to 255 at offset 11, text at 15), says it by a 0 at offset size + 1.
//
// Voice off: the voice record 0x200b has two zero bytes in front of its 'Z' where other tracks have
// ff ff. It stands behind the row in the 0x261c that holds both; a row that no 0x261c holds may
// have one of its own, with the record in it.
#include "session/inactive_tracks.hpp"

#include <string_view>

#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_length_at = 11;
constexpr std::size_t size_without_name = 72;
constexpr std::size_t active_behind_size = 1;

constexpr std::size_t voice_mark_bytes = 2;

std::optional<std::string> inactive_name(ByteView image, const Block& entry) {
    const auto name = read_name(image, entry.at + name_length_at, entry.end());
    if (!name || name->empty() || entry.size != size_without_name + name->size()) {
        return std::nullopt;
    }
    if (image.u8(entry.at + entry.size + active_behind_size) != 0) return std::nullopt;
    return std::string(*name);
}

/// The voice records that are switched off.
BlockList silent_voices(const BlockIndex& index) {
    std::vector<Block> silent;
    for (const Block& voice : index.of_type(block_type::voice).all()) {
        if (voice.at < voice_mark_bytes) continue;
        if (index.image().u16(voice.at - voice_mark_bytes) == 0) silent.push_back(voice);
    }
    return BlockList(std::move(silent));
}

/// The 0x261c blocks that hold a silent voice record, not at their very start.
BlockList silent_identities(const BlockIndex& index, const BlockList& voices) {
    std::vector<Block> silent;
    for (const Block& block : index.of_type(block_type::strip_identity).all()) {
        if (voices.first_inside(block.at + voice_mark_bytes, block.end()) != nullptr) {
            silent.push_back(block);
        }
    }
    return BlockList(std::move(silent));
}

}  // namespace

TrackNameSet readInactiveNames(const BlockIndex& index) {
    TrackNameSet names;
    for (const Block& entry : index.of_type(block_type::strip_table_entry).all()) {
        if (auto name = inactive_name(index.image(), entry)) names.insert(std::move(*name));
    }
    return names;
}

TrackNameSet readVoiceOffNames(const BlockIndex& index, std::span<const StripRow> rows) {
    const BlockList voices = silent_voices(index);
    const BlockList identities = silent_identities(index, voices);
    std::vector<std::size_t> starts;
    starts.reserve(rows.size());
    for (const StripRow& row : rows) starts.push_back(row.start);
    const auto holders =
        smallest_enclosing(index.of_type(block_type::strip_identity).all(), starts);

    // A renamed track's first name may be another's by now: that one is not silent for it.
    std::set<std::string_view> current_names;
    for (const StripRow& row : rows) current_names.insert(row.current_name);

    TrackNameSet names;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const StripRow& row = rows[i];
        const Block* holder = holders[i];
        const bool is_off = holder != nullptr
                                ? voices.first_inside(row.end, holder->end()) != nullptr
                                : identities.first_inside(row.start + 1, row.end) != nullptr;
        if (!is_off) continue;
        if (!row.current_name.empty()) names.insert(row.current_name);
        if (!row.original_name.empty() && !current_names.contains(row.original_name)) {
            names.insert(row.original_name);
        }
    }
    return names;
}

}  // namespace tanrove
