// Which MIDI tracks there are and which clip lies on which, told from the 'Z' of the blocks.
//
// Strip table 0x2519: a 0x251a a strip, with its u16 type at 9, u32 count and text of its name at
// 11. The table is stored twice over; the strips' rows stand in the mixer in the same order. A
// Basic folder (type 11) has no row there.
//
// MIDI playlists 0x1058: a 0x1057 a track, with u32 count and text of its name at 9; in it a 0x1056
// a placement, which has at 18 a byte that is kept, 1 or not; in that a 0x104f:
//   11  u32 region
//   16  8 bytes position
//   27  u8 not 0: the row holds a clip group
#include "session/midi_tracks.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string_view>

namespace tanrove {

namespace {

constexpr std::array<std::uint16_t, 1> strip_table_types = {0x2519};
constexpr std::uint16_t master_type = 0x261d;
constexpr std::uint16_t audio_type = 0x261b;
constexpr std::uint16_t midi_type = 0x2620;
constexpr std::uint16_t instrument_type = 0x2621;
constexpr std::uint16_t basic_folder_code = 11;

// From a node, 7 behind the 'Z'.
constexpr std::size_t strip_type_at = 2;
constexpr std::size_t strip_name_count_at = 4;
constexpr std::size_t playlist_name_count_at = 2;
constexpr std::size_t kept_byte_at = 11;
constexpr std::size_t placed_region_at = 4;
constexpr std::size_t placed_position_at = 9;
constexpr std::size_t placed_group_at = 20;
constexpr std::size_t placed_bytes = placed_position_at + position_width;

constexpr std::size_t max_stored_name = 512;  // a longer count is no track's

std::size_t end_of(const BlockNode& node) {
    return node.offset + node.size;
}

/// The kinds of the strip rows in mixer order. A master fader holds a 0x261b of its own, which is
/// no row.
std::vector<std::uint16_t> strip_kinds(const BlockIndex& index) {
    constexpr std::array<std::uint16_t, 6> row_types = {audio_type, master_type,     0x261f,
                                                        midi_type,  instrument_type, 0x2623};
    std::vector<std::uint16_t> kinds;
    std::size_t master_end = 0;
    for (const Block& block : index.of_types(row_types)) {
        if (block.content_type == master_type) master_end = std::max(master_end, block.end());
        if (block.content_type == audio_type && block.at < master_end) continue;
        kinds.push_back(block.content_type);
    }
    return kinds;
}

std::vector<const BlockNode*> strip_entries(std::span<const BlockNode> tree) {
    std::vector<const BlockNode*> entries;
    for (const BlockNode& table : tree) {
        if (table.contentType != strip_table_types.front()) continue;
        for (const BlockNode& node : table.children) {
            if (node.contentType == 0x251a) entries.push_back(&node);
        }
    }
    return entries;
}

std::int64_t distance_from_origin(std::uint64_t stored) {
    const auto distance =
        static_cast<std::int64_t>(stored) - static_cast<std::int64_t>(tick_origin);
    return distance < 0 ? -distance : distance;
}

/// Joins placements with tracks and regions, row by row.
class ClipJoiner {
public:
    ClipJoiner(ByteView image, std::span<const TrackTableRow> tracks,
               std::span<const Region> regions)
        : image_(image), tracks_(tracks), regions_(regions) {
        for (const TrackTableRow& track : tracks) track_of_name_.emplace(track.name, &track);
    }

    /// The track that a playlist belongs to: the one of its name, else the one of its number.
    const TrackTableRow* track_of(const BlockNode& playlist, std::size_t number) const {
        const auto name = readCountedText(image_, playlist.offset + playlist_name_count_at,
                                          playlist.size, end_of(playlist));
        const auto named = track_of_name_.find(name.value_or("").substr(0, max_track_name));
        if (name && named != track_of_name_.end()) return named->second;
        return number < tracks_.size() ? &tracks_[number] : nullptr;
    }

    void add(const TrackTableRow& track, const BlockNode& placement, const BlockNode& record) {
        if (!image_.holds(record.offset, placed_bytes)) return;
        const std::uint32_t number = image_.u32(record.offset + placed_region_at);
        if (number >= no_region) return;
        const bool is_group = image_.u8(record.offset + placed_group_at) != 0;
        const auto region = is_group ? number : place_of_region(number);
        if (!region) return;
        rows_.push_back({
            .start =
                distance_from_origin(read_position(image_, record.offset + placed_position_at)),
            .region_index = *region,
            .index = track.id,
            .is_clip_group = is_group,
            .kept = image_.u8(placement.offset + kept_byte_at) == 1,
        });
    }

    std::vector<ClipTrack> take() { return std::move(rows_); }

private:
    std::optional<std::uint32_t> place_of_region(std::uint32_t number) const {
        const auto before = [](const Region& region, std::uint32_t n) { return region.index < n; };
        const auto found = std::lower_bound(regions_.begin(), regions_.end(), number, before);
        if (found == regions_.end() || found->index != number) return std::nullopt;
        return static_cast<std::uint32_t>(found - regions_.begin());
    }

    ByteView image_;
    std::span<const TrackTableRow> tracks_;
    std::span<const Region> regions_;
    std::map<std::string_view, const TrackTableRow*> track_of_name_;
    std::vector<ClipTrack> rows_;
};

}  // namespace

std::vector<TrackTableRow> readMidiTrackRows(const BlockIndex& index,
                                             std::span<const BlockNode> tree) {
    const ByteView image = index.image();
    const auto kinds = strip_kinds(index);
    const auto entries = strip_entries(tree);
    const bool has_rowless = entries.size() != kinds.size() && entries.size() != 2 * kinds.size();
    std::vector<TrackTableRow> rows;
    std::size_t strip = 0;
    for (const BlockNode* entry : entries) {
        const std::uint16_t code = image.u16(entry->offset + strip_type_at);
        if (has_rowless && code == basic_folder_code) continue;
        if (strip >= kinds.size()) break;
        const std::uint16_t kind = kinds[strip++];
        if (kind != midi_type && kind != instrument_type) continue;
        const auto name = readCountedText(image, entry->offset + strip_name_count_at,
                                          max_stored_name, end_of(*entry));
        rows.push_back({.id = static_cast<std::uint16_t>(rows.size()),
                        .name = std::string(name.value_or("").substr(0, max_track_name))});
    }
    return rows;
}

std::vector<TrackTableRow> readMidiTrackRows(const BlockIndex& index) {
    return readMidiTrackRows(index, parse_block_tree_below(index.image(), strip_table_types, 1));
}

std::vector<ClipTrack> read_midi_clips(ByteView image, std::span<const BlockNode> tree,
                                       std::span<const TrackTableRow> tracks,
                                       std::span<const Region> regions) {
    ClipJoiner joiner(image, tracks, regions);
    std::size_t number = 0;
    for (const BlockNode& list : tree) {
        if (list.contentType != 0x1058) continue;
        for (const BlockNode& playlist : list.children) {
            if (playlist.contentType != 0x1057) continue;
            const TrackTableRow* track = joiner.track_of(playlist, number++);
            if (track == nullptr) continue;
            for (const BlockNode& placement : playlist.children) {
                if (placement.contentType != 0x1056) continue;
                for (const BlockNode& record : placement.children) {
                    if (record.contentType == 0x104f) joiner.add(*track, placement, record);
                }
            }
        }
    }
    return joiner.take();
}

}  // namespace tanrove
