// Playlists and what is placed on them, row by row.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/block_tree.hpp"
#include "session/playlist_walk.hpp"

namespace tanrove {

/// A playlist's name and timebase.
struct PlaylistRecord {
    std::string name;
    bool in_ticks = false;  ///< true: positions are ticks; false: samples
    /// Running number among all playlists of its list (0x1054), those that cannot be read included:
    /// the channel that it is of. Nothing for a playlist outside such a list.
    std::optional<std::uint16_t> number = {};
};

/// Records and, in the same order, how many placements each has: by that count tracks are paired
/// where no numbers do it.
struct Playlists {
    std::vector<PlaylistRecord> records;
    std::vector<std::uint32_t> clip_counts;
};

/// The edit list of one playlist, in the order Pro Tools keeps its rows, which is the order it
/// draws them in. A placement without a record has no row.
struct PlaylistDetail {
    std::string name;
    bool is_read = true;  ///< false: the playlist breaks a limit, and only keeps its place
    bool in_ticks = false;
    std::vector<PlacementRow> rows;
};

PlaylistDetail read_playlist_detail(ByteView image, const PlaylistWalk& playlist);

/// All audio playlists (0x1052) outside the clip group table, walked once for both readers.
std::vector<PlaylistWalk> walk_playlists(const BlockIndex& index);

/// The playlists, numbered by the tree of the session's lists, and all of their details; the two
/// lists run in step.
Playlists readPlaylists(std::span<const PlaylistWalk> walks, std::span<const BlockNode> tree);
std::vector<PlaylistDetail> readPlaylistDetails(ByteView image,
                                                std::span<const PlaylistWalk> walks);

}  // namespace tanrove
