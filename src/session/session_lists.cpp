// The clip lists, read from the tree of blocks: what a clip is, which tracks there are, and which
// clip lies on which track.
//
// Offsets count from a block's 'Z'.
//
// Region list 0x262a (0x100b in older sessions): u32 count at 9, then one region block each.
// Region 0x2629 (0x1008): its first child (0x2628, older 0x1007) begins at 9 and names the clip.
//   18      u32 count, text of the name
//   T       three-point header right behind the name: source offset, length, start
//   C       u32 index of the audio file, right behind the first child
//   C + 4   u16 channel of the file (the 0x2629 alone)
//
// Track list 0x1015: u32 count at 9, then one 0x1014 a track.
// Track 0x1014:
//   9       u32 count n, text of the name
//   13 + n  u8 width code: 0 mono, 1 stereo
//   14 + n  u32 number of channels, then a u16 channel number each: the place of the channel's
//           playlist among those of its list
//
// Playlists 0x1054: a 0x1052 a channel, numbered as the channels are; in it a 0x1050 a placement,
// and in that the 0x104f that says what is placed where:
//   11      u32 region, or a fade on a fade's row, or a clip group
//   16      7 bytes position as stored
//   27      u8 not 0: the row holds a clip group
// The 0x1050 has at 18 a byte that is kept, 1 or not.
//
// Older sessions nest 0x1012, 0x1011 (a channel), 0x100f, 0x100e, the last with the u32 region
// at 11; a clip lies there where its region starts.
#include "session/session_lists.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include "session/block_types.hpp"
#include "session/midi_regions.hpp"
#include "session/midi_tracks.hpp"
#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

/// The lists, and the levels that their records lie below them.
constexpr std::array<std::uint16_t, 10> list_types = {
    block_type::audio_region_list,   block_type::older_audio_region_list,
    block_type::track_name_list,     block_type::audio_playlist_list,
    block_type::older_playlist_list, block_type::strip_table,
    block_type::midi_region_list,    block_type::older_midi_region_list,
    block_type::clip_group_table,    block_type::midi_playlist_list};
constexpr int list_levels = 3;

constexpr std::size_t smallest_image = 65;
constexpr std::size_t byte_order_at = 17;  // not 0: big-endian

// Told from the node, whose offset lies 7 behind the 'Z'.
constexpr std::size_t region_name_count_at = 11;
constexpr std::size_t track_name_count_at = 2;
constexpr std::size_t track_width_bytes = 1;
constexpr std::size_t placed_region_at = 4;
constexpr std::size_t placed_position_at = 9;
constexpr std::size_t least_placement = placed_position_at + position_width;
constexpr std::size_t kept_byte_at = 11;
constexpr std::size_t hidden_mark_behind = 2;  // behind the node's offset plus its size

constexpr std::size_t count_width = 4;
constexpr std::size_t channel_width = 2;
constexpr std::size_t max_channels = 1024;
constexpr std::size_t max_stored_track_name = 512;  // a longer count is no track's
constexpr std::size_t widest_length = 5;            // bytes of a source offset or a length
constexpr std::size_t widest_position = 8;          // bytes of a start, the top one marking ticks

bool is_type(const BlockNode& node, std::uint16_t type, std::uint16_t older_type) {
    return node.contentType == type || node.contentType == older_type;
}

/// The places of the audio files by index. The first file of an index counts, and none that stands
/// behind a file without a name.
std::map<std::uint32_t, std::int32_t> file_places(std::span<const AudioFileEntry> files) {
    std::map<std::uint32_t, std::int32_t> places;
    std::int32_t place = 0;
    for (const AudioFileEntry& file : files) {
        if (file.name.empty()) break;
        places.try_emplace(file.index, place++);
    }
    return places;
}

Region read_region(ByteView image, const BlockNode& node) {
    Region region;
    const std::size_t count_at = node.offset + region_name_count_at;
    const std::size_t name_at = count_at + count_width;
    std::size_t count = image.u32(count_at);
    if (!image.holds(name_at, count)) {
        count = name_at < image.size() ? image.size() - name_at : 0;
    }
    // Only bytes of its own: what many regions borrowed behind their ends would add up.
    const std::size_t own = end_of(node) > name_at ? end_of(node) - name_at : 0;
    region.name = image.text(name_at, std::min({count, own, max_region_name})).value_or("");
    if (const auto point = readThreePoint(image, name_at + count, image.size())) {
        const auto number = [](std::uint64_t value, std::size_t width, std::size_t widest) {
            return width <= widest ? static_cast<std::int64_t>(value) : std::int64_t{0};
        };
        region.source_offset = number(point->source_offset, point->first_width, widest_length);
        region.length = number(point->length, point->second_width, widest_length);
        region.start = number(point->start, point->third_width, widest_position);
    }
    region.file_position = region.start;
    region.file_length = region.length;
    return region;
}

std::uint32_t file_of_region(ByteView image, const BlockNode& node) {
    return node.children.empty() ? 0 : image.u32(end_of(node.children.front()));
}

std::uint16_t channel_of_region(ByteView image, const BlockNode& node) {
    if (node.contentType != block_type::audio_region || node.children.empty()) return 0;
    const std::size_t at = end_of(node.children.front()) + count_width;
    return at + channel_width <= end_of(node) ? image.u16(at) : std::uint16_t{0};
}

std::vector<Region> read_regions(ByteView image, std::span<const BlockNode> tree,
                                 std::span<const AudioFileEntry> files) {
    const auto places = file_places(files);
    std::vector<Region> regions;
    for (const BlockNode& list : tree) {
        if (!is_type(list, block_type::audio_region_list, block_type::older_audio_region_list)) {
            continue;
        }
        if (regions.empty()) {
            regions.reserve(std::min<std::size_t>(list.children.size(), no_region));
        }
        for (const BlockNode& node : list.children) {
            if (!is_type(node, block_type::audio_region, block_type::older_audio_region)) continue;
            if (regions.size() == no_region) return regions;
            Region region = read_region(image, node);
            region.index = static_cast<std::uint16_t>(regions.size());
            const auto place = places.find(file_of_region(image, node));
            if (place != places.end()) region.file = place->second;
            region.file_channel = channel_of_region(image, node);
            regions.push_back(std::move(region));
        }
    }
    return regions;
}

/// The channels of the track list in its order, the first row of each number. Until the tracks
/// are numbered, `id` is the channel's number.
std::vector<TrackTableRow> read_channels(ByteView image, std::span<const BlockNode> tree) {
    std::vector<TrackTableRow> channels;
    std::vector<bool> known(0x10000, false);
    std::size_t entry = 0;
    for (const BlockNode& list : tree) {
        if (list.contentType != block_type::track_name_list) continue;
        for (const BlockNode& node : list.children) {
            if (node.contentType != block_type::track_name) continue;
            const std::size_t count_at = node.offset + track_name_count_at;
            const auto name = readCountedText(image, count_at, max_stored_track_name, end_of(node));
            if (!name) continue;
            std::size_t at = count_at + count_width + name->size() + track_width_bytes;
            const std::size_t count = std::min<std::size_t>(image.u32(at), max_channels);
            at += count_width;
            for (std::size_t i = 0; i < count && at + channel_width <= end_of(node); ++i) {
                const std::uint16_t number = image.u16(at);
                at += channel_width;
                if (known[number]) continue;
                known[number] = true;
                channels.push_back(
                    {number, std::string(name->substr(0, max_track_name)), number, entry});
            }
            ++entry;
        }
    }
    return channels;
}

/// One row of the nesting, before its track and its region are looked up.
struct Placement {
    std::size_t track = 0;                  ///< running number of the playlist
    std::optional<std::uint64_t> position;  ///< the region's own start where none is stored
    std::uint32_t region = 0;
    bool is_clip_group = false;
    bool kept_byte = false;
};

void read_placements(ByteView image, const BlockNode& playlist, std::size_t track,
                     std::vector<Placement>& placements) {
    for (const BlockNode& row : playlist.children) {
        if (row.contentType != block_type::audio_placement) continue;
        if (image.u8(end_of(row) + hidden_mark_behind) == 1) continue;
        for (const BlockNode& node : row.children) {
            if (node.contentType != block_type::placement_record || node.size < least_placement) {
                continue;
            }
            placements.push_back({
                .track = track,
                .position = read_position(image, node.offset + placed_position_at),
                .region = image.u32(node.offset + placed_region_at),
                .is_clip_group = holds_clip_group(image, node.offset - block_content_at),
                .kept_byte = image.u8(row.offset + kept_byte_at) == 1,
            });
        }
    }
}

void read_older_placements(ByteView image, const BlockNode& channel, std::size_t track,
                           std::vector<Placement>& placements) {
    for (const BlockNode& row : channel.children) {
        if (row.contentType != block_type::older_placement) continue;
        for (const BlockNode& node : row.children) {
            if (node.contentType != block_type::older_placement_record) continue;
            const std::size_t at = node.offset + placed_region_at;
            if (!image.holds(at, count_width)) continue;
            placements.push_back({.track = track, .position = {}, .region = image.u32(at)});
        }
    }
}

/// All placements, by their playlists. Those of one list are in that order already; a session with
/// several lists counts the playlists of each from 0.
std::vector<Placement> read_all_placements(ByteView image, std::span<const BlockNode> tree) {
    std::vector<Placement> placements;
    for (const BlockNode& list : tree) {
        std::size_t track = 0;
        for (const BlockNode& node : list.children) {
            if (list.contentType == block_type::audio_playlist_list &&
                node.contentType == block_type::audio_playlist) {
                read_placements(image, node, track++, placements);
            } else if (list.contentType == block_type::older_playlist_list &&
                       node.contentType == block_type::older_playlist) {
                read_older_placements(image, node, track++, placements);
            }
        }
    }
    const auto before = [](const Placement& a, const Placement& b) { return a.track < b.track; };
    if (!std::is_sorted(placements.begin(), placements.end(), before)) {
        std::stable_sort(placements.begin(), placements.end(), before);
    }
    return placements;
}

/// Placements of regions that stand past the last number a session can give.
std::size_t count_unnumbered(const std::vector<Placement>& placements) {
    return static_cast<std::size_t>(
        std::count_if(placements.begin(), placements.end(),
                      [](const Placement& placement) { return placement.region >= no_region; }));
}

/// A row for each placement. One whose track or region does not exist is passed over; a clip
/// group's row needs no region.
std::vector<ClipTrack> join(const std::vector<Placement>& placements,
                            const std::vector<TrackTableRow>& channels,
                            const std::vector<Region>& regions) {
    std::vector<bool> is_channel(0x10000, false);
    for (const TrackTableRow& channel : channels) is_channel[channel.id] = true;
    std::vector<ClipTrack> rows;
    rows.reserve(placements.size());
    for (const Placement& placement : placements) {
        if (placement.track >= is_channel.size() || !is_channel[placement.track]) continue;
        if (placement.region >= no_region) continue;
        if (!placement.is_clip_group && placement.region >= regions.size()) continue;
        ClipTrack row;
        if (placement.position) {
            row.start = static_cast<std::int64_t>(*placement.position);
        } else {
            row.start = regions[placement.region].start;
        }
        row.region_index = placement.region;
        row.index = static_cast<std::uint16_t>(placement.track);
        row.is_clip_group = placement.is_clip_group;
        row.kept = placement.kept_byte;
        rows.push_back(row);
    }
    return rows;
}

/// Closes the gaps in the numbers of the rows, which ascend by channel. Channels on which nothing
/// lies have no rows and so would have no number left: they are numbered on from there, in the
/// order of the track list, so that an id names one channel in the rows and in the list alike.
void number_tracks(std::vector<ClipTrack>& rows, std::vector<TrackTableRow>& channels) {
    std::map<std::uint16_t, std::uint16_t> ids;
    const auto number = [&](std::uint16_t channel) {
        return ids.try_emplace(channel, static_cast<std::uint16_t>(ids.size())).first->second;
    };
    for (ClipTrack& row : rows) row.index = number(row.index);
    for (TrackTableRow& channel : channels) channel.id = number(channel.id);
}

}  // namespace

BlockTree parse_list_tree(ByteView image) {
    return parse_block_tree_below(image, list_types, list_levels);
}

bool readSessionLists(const BlockIndex& index, std::span<const BlockNode> tree,
                      std::span<const AudioFileEntry> files, SessionLists& lists,
                      std::vector<TrackTableRow>& track_rows) {
    const ByteView image = index.image();
    if (image.size() < smallest_image || image.u8(byte_order_at) != 0) return false;
    lists.regions = read_regions(image, tree, files);
    track_rows = read_channels(image, tree);
    const auto placements = read_all_placements(image, tree);
    lists.unnumbered_clips = count_unnumbered(placements);
    lists.placements = join(placements, track_rows, lists.regions);
    number_tracks(lists.placements, track_rows);
    lists.midi_streams = read_midi_streams(image, tree);
    lists.midi_regions = read_midi_regions(image, tree, lists.midi_streams);
    lists.midi_track_rows = read_midi_track_rows(index);
    lists.midi_placements = read_midi_clips(image, tree, lists.midi_track_rows, lists.midi_regions);
    return true;
}

}  // namespace tanrove
