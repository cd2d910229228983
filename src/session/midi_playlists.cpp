// MIDI playlists 0x1057 and their placements 0x1056; the layouts stand with the walk of playlists.
// Two readers take them flat, without the walk's tests.
#include "session/midi_playlists.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"
#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

// Limits of the flat rows.
constexpr std::uint32_t least_playlist = 12;
constexpr std::uint32_t largest_playlist = 400000;
constexpr std::uint32_t least_placement = 20;
constexpr std::uint32_t largest_placement = 4000;
constexpr std::uint32_t largest_empty_record = 11;

PlaylistDetail read_midi_detail(ByteView image, const PlaylistWalk& playlist) {
    PlaylistDetail detail = read_playlist_detail(image, playlist);
    if (!detail.in_ticks) return detail;
    for (PlacementRow& row : detail.rows) row.position = distance_from_origin(row.position);
    return detail;
}

/// The name of a playlist that may break other limits; empty where it cannot be read.
std::string_view playlist_name(ByteView image, const Block& playlist) {
    return readCountedText(image, playlist.payload(), max_name_bytes, playlist.end()).value_or("");
}

/// Calls `use(name, placement)` for each placement in a playlist with a name.
/// Playlists do not overlap: a placement belongs to the first that holds it.
template <typename Accept, typename Use>
void for_each_placement(const BlockIndex& index, Accept accept, Use use) {
    std::size_t next_placement = 0;
    for (const Block& playlist : index.of_type(block_type::midi_playlist).all()) {
        const auto name = playlist_name(index.image(), playlist);
        if (name.empty() || !accept(playlist)) continue;
        const std::size_t from = std::max(playlist.payload(), next_placement);
        for (const Block& row :
             index.of_type(block_type::midi_placement).between(from, playlist.end())) {
            next_placement = row.at + 1;
            if (row.end() <= playlist.end()) use(name, row);
        }
    }
}

}  // namespace

MidiPlaylists readMidiPlaylists(const BlockIndex& index) {
    MidiPlaylists midi;
    PlaylistWalker walker(index);
    const auto blocks = index.of_type(block_type::midi_playlist).all();
    std::vector<std::size_t> starts;
    for (const Block& block : blocks) starts.push_back(block.at);
    const auto lists =
        smallest_enclosing(index.of_type(block_type::midi_playlist_list).all(), starts);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const auto playlist = walker.walk(blocks[i]);
        if (!playlist && lists[i] == nullptr) continue;
        PlaylistDetail detail;
        if (playlist) {
            detail = read_midi_detail(index.image(), *playlist);
        } else {
            detail.is_read = false;
            detail.name = playlist_name(index.image(), blocks[i]);
        }
        midi.playlists.records.push_back({detail.name, detail.in_ticks});
        midi.playlists.clip_counts.push_back(playlist ? playlist->placed : 0);
        midi.details.push_back(std::move(detail));
    }
    return midi;
}

std::map<std::string, int> readMidiClipCounts(const BlockIndex& index) {
    std::map<std::string, int> counts;
    const auto any = [](const Block&) { return true; };
    for_each_placement(index, any, [&](std::string_view name, const Block& row) {
        const Block* record = index.first_child(row, block_type::placement_record);
        if (record != nullptr && holds_clip_group(index.image(), record->at)) {
            ++counts[std::string(name)];
        }
    });
    return counts;
}

std::vector<MidiPlaylistRow> readMidiPlaylistRows(const BlockIndex& index) {
    const ByteView image = index.image();
    std::vector<Block> large_records;
    for (const Block& record : index.of_type(block_type::placement_record).all()) {
        if (record.size > largest_empty_record) large_records.push_back(record);
    }
    const BlockList records(std::move(large_records));
    const auto fits = [](const Block& playlist) {
        return playlist.size >= least_playlist && playlist.size <= largest_playlist;
    };
    std::vector<MidiPlaylistRow> rows;
    for_each_placement(index, fits, [&](std::string_view name, const Block& row) {
        if (row.size < least_placement || row.size > largest_placement) return;
        const Block* record = records.first_inside(row.payload(), row.end());
        if (record == nullptr) return;
        rows.push_back({std::string(name), image.u32(record->at + placed_id_at),
                        read_position(image, record->at + placed_position_at)});
    });
    return rows;
}

}  // namespace tanrove
