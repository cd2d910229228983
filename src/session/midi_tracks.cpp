// Which MIDI tracks there are and which clip lies on which, told from the 'Z' of the blocks.
//
// The tracks are the mixer's MIDI and instrument rows, under the names that they have now.
//
// MIDI playlists 0x1058: a 0x1057 a track, with u32 count and text of its name at 9; in it a 0x1056
// a placement, which has at 18 a byte that is kept, 1 or not; in that a placement record 0x104f. An
// alternate playlist has a 0x1057 of its own, under a name that no track bears.
#include "session/midi_tracks.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>

#include "session/block_types.hpp"
#include "session/playlist_walk.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

namespace {

// From a node, 7 behind the 'Z'.
constexpr std::size_t playlist_name_count_at = 2;
constexpr std::size_t kept_byte_at = 11;
constexpr std::size_t placed_bytes = placed_position_at + position_width;

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

std::vector<TrackTableRow> read_midi_track_rows(const BlockIndex& index) {
    const auto rows = readStripRows(index).rows;
    // A row that kept the name it was made under gives it up to one that got it since.
    const auto kept = [](const StripRow& row) { return row.current_name == row.original_name; };
    std::set<std::string_view> given;
    for (const StripRow& row : rows) {
        if (!kept(row)) given.insert(row.current_name);
    }
    std::vector<TrackTableRow> tracks;
    for (const StripRow& row : rows) {
        if (!plays_midi(row.type)) continue;
        const bool is_taken = kept(row) && given.contains(row.current_name);
        tracks.push_back({.id = static_cast<std::uint16_t>(tracks.size()),
                          .name = is_taken ? std::string() : row.current_name});
    }
    return tracks;
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
