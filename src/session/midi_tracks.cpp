// Which MIDI tracks there are and which clip lies on which, told from the 'Z' of the blocks.
//
// Strip table 0x2519: a 0x251a a strip, with its u16 type at 9, u32 count and text of its name at
// 11. The table is stored twice over; the strips' rows stand in the mixer in the same order. A
// Basic folder (type 11) has no row there.
//
// MIDI playlists 0x1058: a 0x1057 a track, with u32 count and text of its name at 9; in it a 0x1056
// a placement, which has at 18 a byte that is kept, 1 or not; in that a placement record 0x104f. An
// alternate playlist has a 0x1057 of its own, under a name that no track bears.
#include "session/midi_tracks.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string_view>

#include "session/block_types.hpp"
#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t basic_folder_code = 11;

// From a node, 7 behind the 'Z'.
constexpr std::size_t strip_type_at = 2;
constexpr std::size_t strip_name_count_at = 4;
constexpr std::size_t playlist_name_count_at = 2;
constexpr std::size_t kept_byte_at = 11;
constexpr std::size_t placed_bytes = placed_position_at + position_width;

constexpr std::size_t max_stored_name = 512;  // a longer count is no track's

std::size_t end_of(const BlockNode& node) {
    return node.offset + node.size;
}

/// The kinds of the strip rows in mixer order. A master fader holds a 0x261b of its own, which is
/// no row.
std::vector<std::uint16_t> strip_kinds(const BlockIndex& index) {
    constexpr std::array<std::uint16_t, 6> row_types = {
        block_type::audio_row, block_type::master_row,     block_type::vca_row,
        block_type::midi_row,  block_type::instrument_row, block_type::video_row};
    std::vector<std::uint16_t> kinds;
    std::size_t master_end = 0;
    for (const Block& block : index.of_types(row_types)) {
        if (block.content_type == block_type::master_row) {
            master_end = std::max(master_end, block.end());
        }
        if (block.content_type == block_type::audio_row && block.at < master_end) continue;
        kinds.push_back(block.content_type);
    }
    return kinds;
}

/// The children of type `entry` in the lists of type `list`.
std::vector<const BlockNode*> entries_of(std::span<const BlockNode> tree, std::uint16_t list,
                                         std::uint16_t entry) {
    std::vector<const BlockNode*> entries;
    for (const BlockNode& node : tree) {
        if (node.contentType != list) continue;
        for (const BlockNode& child : node.children) {
            if (child.contentType == entry) entries.push_back(&child);
        }
    }
    return entries;
}

/// Joins placements with tracks and regions, row by row.
class ClipJoiner {
public:
    ClipJoiner(ByteView image, std::span<const TrackTableRow> tracks,
               std::span<const Region> regions)
        : image_(image), tracks_(tracks), regions_(regions) {
        for (const TrackTableRow& track : tracks) track_of_name_.emplace(track.name, &track);
    }

    /// To be called for every playlist before the first is asked for its track.
    void note_name(const BlockNode& playlist) {
        if (const auto name = name_of(playlist)) playlist_names_.insert(*name);
    }

    /// The track that a playlist belongs to: the one of its name, else the one of its number if
    /// that has no playlist of its own name.
    const TrackTableRow* track_of(const BlockNode& playlist, std::size_t number) const {
        const auto name = name_of(playlist);
        const auto named = track_of_name_.find(name.value_or(""));
        if (name && named != track_of_name_.end()) return named->second;
        if (number >= tracks_.size() || playlist_names_.contains(tracks_[number].name)) {
            return nullptr;
        }
        return &tracks_[number];
    }

    void add(const TrackTableRow& track, const BlockNode& placement, const BlockNode& node) {
        const std::size_t record = node.offset - block_content_at;
        if (!image_.holds(record, placed_bytes)) return;
        const std::uint32_t number = image_.u32(record + placed_id_at);
        if (number >= no_region) return;
        const bool is_group = holds_clip_group(image_, record);
        const auto region = is_group ? number : place_of_region(number);
        if (!region) return;
        rows_.push_back({
            .start = static_cast<std::int64_t>(
                distance_from_origin(read_position(image_, record + placed_position_at))),
            .region_index = *region,
            .index = track.id,
            .is_clip_group = is_group,
            .kept = image_.u8(placement.offset + kept_byte_at) == 1,
        });
    }

    std::vector<ClipTrack> take() { return std::move(rows_); }

private:
    std::optional<std::string_view> name_of(const BlockNode& playlist) const {
        const auto name = readCountedText(image_, playlist.offset + playlist_name_count_at,
                                          playlist.size, end_of(playlist));
        return name ? std::optional(name->substr(0, max_track_name)) : std::nullopt;
    }

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
    std::set<std::string_view> playlist_names_;
    std::vector<ClipTrack> rows_;
};

}  // namespace

std::vector<TrackTableRow> read_midi_track_rows(const BlockIndex& index,
                                                std::span<const BlockNode> tree) {
    const ByteView image = index.image();
    const auto kinds = strip_kinds(index);
    const auto entries = entries_of(tree, block_type::strip_table, block_type::strip_table_entry);
    const bool has_rowless = entries.size() != kinds.size() && entries.size() != 2 * kinds.size();
    std::vector<TrackTableRow> rows;
    std::size_t strip = 0;
    for (const BlockNode* entry : entries) {
        const std::uint16_t code = image.u16(entry->offset + strip_type_at);
        if (has_rowless && code == basic_folder_code) continue;
        if (strip >= kinds.size()) break;
        const std::uint16_t kind = kinds[strip++];
        if (kind != block_type::midi_row && kind != block_type::instrument_row) continue;
        const auto name = readCountedText(image, entry->offset + strip_name_count_at,
                                          max_stored_name, end_of(*entry));
        rows.push_back({.id = static_cast<std::uint16_t>(rows.size()),
                        .name = std::string(name.value_or("").substr(0, max_track_name))});
    }
    return rows;
}

std::vector<ClipTrack> read_midi_clips(ByteView image, std::span<const BlockNode> tree,
                                       std::span<const TrackTableRow> tracks,
                                       std::span<const Region> regions) {
    const auto playlists =
        entries_of(tree, block_type::midi_playlist_list, block_type::midi_playlist);
    ClipJoiner joiner(image, tracks, regions);
    for (const BlockNode* playlist : playlists) joiner.note_name(*playlist);
    for (std::size_t number = 0; number < playlists.size(); ++number) {
        const TrackTableRow* track = joiner.track_of(*playlists[number], number);
        if (track == nullptr) continue;
        for (const BlockNode& placement : playlists[number]->children) {
            if (placement.contentType != block_type::midi_placement) continue;
            for (const BlockNode& record : placement.children) {
                if (record.contentType == block_type::placement_record) {
                    joiner.add(*track, placement, record);
                }
            }
        }
    }
    return joiner.take();
}

}  // namespace tanrove
