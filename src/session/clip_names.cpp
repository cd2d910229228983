// One test of a clip's name for all tables that go by it. A 0x2628 stands at 9 of the record that
// it opens.
#include "session/clip_names.hpp"

namespace tanrove {

ClipKind clip_kind(const BlockIndex& index, const Block& clip) {
    constexpr std::uint16_t region_type = 0x2629;
    constexpr std::uint16_t group_type = 0x262b;
    if (clip.at < block_payload_at) return ClipKind::other;
    const Block* record = index.at(clip.at - block_payload_at);
    if (record == nullptr || record->end() < clip.end()) return ClipKind::other;
    if (record->content_type == region_type) return ClipKind::audio;
    return record->content_type == group_type ? ClipKind::group : ClipKind::other;
}

std::optional<std::string_view> read_clip_name(ByteView image, const Block& clip) {
    const auto name = read_name(image, clip.payload(), clip.end());
    return name && !name->empty() ? name : std::nullopt;
}

}  // namespace tanrove
