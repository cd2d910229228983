// The counted list of placements that audio, MIDI and clip group playlists share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

// Where a placement record 0x104f, of whichever kind of playlist, has its id and its position.
constexpr std::size_t placed_id_at = 11;
constexpr std::size_t placed_position_at = 16;

/// True if the placement record at `at` names a clip group. A short record has no such mark: the
/// byte in its place is another record's.
bool holds_clip_group(ByteView image, std::size_t at);

/// A row without a colour of its own.
constexpr std::int32_t no_colour = -2;

/// What a row's overlap says: which of two clips that overlap is drawn over the other.
constexpr std::uint32_t overlap_over_next = 1;
constexpr std::uint32_t overlap_over_previous = 2;
constexpr std::uint32_t overlap_in_order = 3;

/// What one placement row stores.
struct PlacementRow {
    std::uint32_t region_id = 0;  ///< a region, a fade on a fade's row, or a clip group's index
    std::uint64_t position = 0;   ///< as stored
    std::int32_t colour = no_colour;
    std::uint8_t overlap = 0;  ///< 1 to 3, as above
    bool is_fade = false;
    bool in_group = false;  ///< `region_id` is a clip group's
    bool locked = false;
    bool muted = false;
    std::size_t placed_at = 0;  ///< where its 0x104f begins in the image

    /// True of a row that plays something of its own.
    bool live() const { return !is_fade; }
};

/// One playlist block that keeps its limits. Views lie in the image.
struct PlaylistWalk {
    std::size_t at = 0;  ///< of the playlist's block
    std::string_view name;
    std::uint8_t kind = 0;            ///< 1 samples, 2 ticks
    std::uint32_t placed = 0;         ///< placements as counted, those without a row included
    std::vector<std::size_t> row_at;  ///< where the placement blocks begin
};

/// Walks playlist blocks of one image. All walks together take no more steps than the image has
/// blocks: each placement belongs to one playlist, and a session in which they overlap is none.
class PlaylistWalker {
public:
    explicit PlaylistWalker(const BlockIndex& index);

    /// The playlist of this block; nullopt if it breaks a limit.
    std::optional<PlaylistWalk> walk(const Block& playlist);

private:
    ByteView image_;
    std::size_t steps_left_ = 0;
};

/// The row of the placement that begins at `at`; nullopt if it holds no placement record.
std::optional<PlacementRow> read_placement_row(ByteView image, std::size_t at);

}  // namespace tanrove
