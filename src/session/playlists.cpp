// Audio playlists (0x1052), a channel each, with the rows of their edit lists; the layout stands
// with the walk of playlists.
#include "session/playlists.hpp"

#include <limits>
#include <map>
#include <utility>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint8_t kind_ticks = 2;

/// The running number of each playlist in its list, by where it begins.
std::map<std::size_t, std::uint16_t> playlist_numbers(std::span<const BlockNode> tree) {
    std::map<std::size_t, std::uint16_t> numbers;
    for (const BlockNode& list : tree) {
        if (list.contentType != block_type::audio_playlist_list) continue;
        std::size_t number = 0;
        for (const BlockNode& node : list.children) {
            if (node.contentType != block_type::audio_playlist) continue;
            if (number > std::numeric_limits<std::uint16_t>::max()) break;
            numbers.try_emplace(node.offset - block_content_at,
                                static_cast<std::uint16_t>(number++));
        }
    }
    return numbers;
}

}  // namespace

PlaylistDetail read_playlist_detail(ByteView image, const PlaylistWalk& playlist) {
    PlaylistDetail detail;
    detail.name = playlist.name;
    detail.in_ticks = playlist.kind == kind_ticks;
    detail.rows.reserve(playlist.row_at.size());
    for (const std::size_t at : playlist.row_at) {
        if (const auto row = read_placement_row(image, at)) detail.rows.push_back(*row);
    }
    return detail;
}

// The clip group table keeps its member lists in the same form: they are the contents of clips and
// lie on no track.
std::vector<PlaylistWalk> walk_playlists(const BlockIndex& index) {
    std::vector<PlaylistWalk> playlists;
    PlaylistWalker walker(index);
    const auto tables = index.of_type(block_type::group_list_table).all();
    std::size_t next_table = 0;
    std::size_t tables_end = 0;
    for (const Block& block : index.of_type(block_type::audio_playlist).all()) {
        for (; next_table < tables.size() && tables[next_table].at < block.at; ++next_table) {
            if (tables[next_table].end() > tables_end) tables_end = tables[next_table].end();
        }
        if (block.at < tables_end) continue;
        if (auto playlist = walker.walk(block)) playlists.push_back(std::move(*playlist));
    }
    return playlists;
}

Playlists readPlaylists(std::span<const PlaylistWalk> walks, std::span<const BlockNode> tree) {
    const auto numbers = playlist_numbers(tree);
    Playlists playlists;
    for (const PlaylistWalk& playlist : walks) {
        PlaylistRecord record = {std::string(playlist.name), playlist.kind == kind_ticks};
        const auto number = numbers.find(playlist.at);
        if (number != numbers.end()) record.number = number->second;
        playlists.records.push_back(std::move(record));
        playlists.clip_counts.push_back(playlist.placed);
    }
    return playlists;
}

std::vector<PlaylistDetail> readPlaylistDetails(ByteView image,
                                                std::span<const PlaylistWalk> walks) {
    std::vector<PlaylistDetail> details;
    details.reserve(walks.size());
    for (const PlaylistWalk& playlist : walks) {
        details.push_back(read_playlist_detail(image, playlist));
    }
    return details;
}

}  // namespace tanrove
