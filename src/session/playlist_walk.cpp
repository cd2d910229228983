// Walks the playlist blocks, and reads a placement row of theirs.
//
// Playlist (0x1052 audio, 0x1057 MIDI), offsets from its 'Z':
//   9       u32 count n, 0 to 255, text of the name (an empty name is real)
//   13 + n  u32 number of placements, then one block each, without a gap
//   behind  in MIDI playlists of real sessions a block with the real-time properties
//   behind  u8 kind: 1 samples, 2 ticks
//
// Placement, W its 'Z': a 0x104f block at W + 9, I its 'Z', with
//   I + 9   u8 not 0: locked
//   I + 10  u8 not 0: muted
//   I + 11  u32 region, fade, or clip group
//   I + 16  position
//   I + 24  u8 overlap
//   I + 25  i16 colour, -2 none
//   I + 27  u8 not 0: the row holds a clip group; the record may end in front of it
//   I + 39  u8 not 0: muted
// The byte right behind the 0x104f (the last one of W where the 0x104f fills it) is 1 on a fade's
// row.
#include "session/playlist_walk.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_at = 9;
constexpr std::size_t max_name = 255;
constexpr std::size_t count_width = 4;
constexpr std::size_t max_placements = 20000;
constexpr std::uint8_t kind_samples = 1;
constexpr std::uint8_t kind_ticks = 2;

constexpr std::size_t inner_at = 9;
constexpr std::size_t least_room = 36;      // of a row that is read, from W
constexpr std::size_t late_mute_room = 49;  // from W: behind the later mute byte
constexpr std::uint32_t least_size_with_mark = 4;

constexpr std::size_t lock_at = 9;
constexpr std::size_t early_mute_at = 10;
constexpr std::size_t overlap_at = 24;
constexpr std::size_t colour_at = 25;
constexpr std::size_t group_at = 27;
constexpr std::size_t late_mute_at = 39;

/// The byte behind the inner block tells a fade's row.
bool has_fade_mark(ByteView image, std::size_t outer, std::size_t inner) {
    const std::uint32_t outer_size = image.u32(outer + block_size_at);
    const std::size_t outer_end = outer + block_size_base + outer_size;
    const std::size_t inner_end = inner + block_size_base + image.u32(inner + block_size_at);
    const std::size_t mark_at = inner_end < outer_end ? inner_end : outer_end - 1;
    return outer_size >= least_size_with_mark && image.u8(mark_at) != 0;
}

}  // namespace

bool holds_clip_group(ByteView image, std::size_t at) {
    return block_size_base + std::size_t{image.u32(at + block_size_at)} > group_at &&
           image.u8(at + group_at) != 0;
}

PlaylistWalker::PlaylistWalker(const BlockIndex& index)
    : image_(index.image()), steps_left_(index.blocks().all().size()) {}

std::optional<PlaylistWalk> PlaylistWalker::walk(const Block& playlist) {
    const std::size_t end = playlist.end();
    const auto name = readCountedText(image_, playlist.at + name_at, max_name, end);
    if (!name) return std::nullopt;
    std::size_t at = playlist.at + name_at + count_width + name->size();
    if (at + count_width > end) return std::nullopt;
    const std::size_t count = image_.u32(at);
    if (count > max_placements || count > steps_left_) return std::nullopt;
    at += count_width;

    const auto step = [&] {
        if (!isBlockAt(image_, at, end)) return false;
        at += block_size_base + image_.u32(at + block_size_at);
        return true;
    };
    PlaylistWalk walk{.at = playlist.at,
                      .name = *name,
                      .kind = 0,
                      .placed = static_cast<std::uint32_t>(count),
                      .row_at = {}};
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = at;
        if (!step()) return std::nullopt;
        --steps_left_;
        walk.row_at.push_back(row);
    }
    while (playlist.content_type == block_type::midi_playlist && image_.u8(at) == block_marker) {
        if (steps_left_ == 0 || !step()) return std::nullopt;
        --steps_left_;
    }
    walk.kind = image_.u8(at);
    if (walk.kind != kind_samples && walk.kind != kind_ticks) return std::nullopt;
    return walk;
}

std::optional<PlacementRow> read_placement_row(ByteView image, std::size_t at) {
    const std::size_t inner = at + inner_at;
    if (!image.holds(at, least_room)) return std::nullopt;
    if (image.u16(inner + block_content_at) != block_type::placement_record) return std::nullopt;
    const bool late_mute = image.holds(at, late_mute_room) && image.u8(inner + late_mute_at) != 0;
    return PlacementRow{
        .region_id = image.u32(inner + placed_id_at),
        .position = read_position(image, inner + placed_position_at),
        .colour = image.i16(inner + colour_at),
        .overlap = image.u8(inner + overlap_at),
        .is_fade = has_fade_mark(image, at, inner),
        .in_group = holds_clip_group(image, inner),
        .locked = image.u8(inner + lock_at) != 0,
        .muted = image.u8(inner + early_mute_at) != 0 || late_mute,
        .placed_at = inner,
    };
}

}  // namespace tanrove
