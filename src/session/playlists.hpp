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

/// The edit list of one playlist: parallel lists, one entry a placement, in the order Pro Tools
/// keeps them, which is the order it draws them in.
struct PlaylistDetail {
    std::string name;
    bool in_ticks = false;
    std::vector<std::uint32_t> region_ids;  ///< a region, or a fade on a fade row, or a clip group
    std::vector<std::int32_t> colours;      ///< `no_colour` for none
    std::vector<std::uint32_t> live;        ///< 0 on a row that plays nothing of its own
    std::vector<std::uint32_t> is_fade;
    std::vector<std::uint32_t> overlap;   ///< 1 to 3, `overlap_over_next` and so on
    std::vector<std::uint32_t> in_group;  ///< not 0: `region_ids` holds a clip group's index
    std::vector<std::uint32_t> locked;
    std::vector<std::uint32_t> muted;
    std::vector<std::uint64_t> positions;  ///< as stored
    std::vector<std::size_t> placed_at;    ///< where the placement's 0x104f begins in the image
};

/// All audio playlists (0x1052) outside the clip group table, walked once for both readers.
std::vector<PlaylistWalk> walk_playlists(const BlockIndex& index);

/// The playlists, numbered by the tree of the session's lists, and all of their details; the two
/// lists run in step.
Playlists readPlaylists(std::span<const PlaylistWalk> walks, std::span<const BlockNode> tree);
std::vector<PlaylistDetail> readPlaylistDetails(ByteView image,
                                                std::span<const PlaylistWalk> walks);

}  // namespace tanrove
