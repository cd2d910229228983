// One test of a clip's name for all tables that go by it. A 0x2628 stands at 9 of the record that
// it opens.
#include "session/clip_names.hpp"

#include "session/block_types.hpp"

namespace tanrove {

ClipKind clip_kind(const BlockIndex& index, const Block& clip) {
    if (clip.at < block_payload_at) return ClipKind::other;
    const Block* record = index.at(clip.at - block_payload_at);
    if (record == nullptr || record->end() < clip.end()) return ClipKind::other;
    if (record->content_type == block_type::audio_region) return ClipKind::audio;
    return record->content_type == block_type::clip_group ? ClipKind::group : ClipKind::other;
}

std::optional<std::string_view> read_clip_name(ByteView image, const Block& clip) {
    const auto name = read_name(image, clip.payload(), clip.end());
    return name && !name->empty() ? name : std::nullopt;
}

}  // namespace tanrove
