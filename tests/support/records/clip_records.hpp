// The records of clips: regions, fades, playlists with their placements, in the form of real
// sessions of 2019 and in the nesting of older ones.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/track_spec.hpp"

namespace tanrove::builder {

/// Where a clip keeps the number of its gain entry.
enum class GainPlace : std::uint8_t {
    last,           ///< the last four bytes
    behind_marker,  ///< more bytes follow
    old_marker,     ///< the same, the marker's two numbers standing further apart
};

struct RegionSpec {
    std::string name = {};
    std::uint32_t file_index = 0;
    std::uint16_t file_channel = 0;
    std::uint64_t source_offset = 0;
    std::uint64_t length = 0;
    std::uint64_t start = 0;         ///< where it was recorded, samples
    bool start_in_ticks = false;     ///< then `start` counts ticks from the origin
    std::uint64_t sync_samples = 0;  ///< from the head to the sync point
    std::uint32_t gain_entry = 0xffffffff;
    GainPlace gain_place = GainPlace::last;
    std::optional<WarpSpec> warp = {};
    PitchSpec pitch = {};
    std::uint64_t effects_identity = 0;
};

/// The 0x2628 block that names a clip and says what of the file it plays; older sessions and MIDI
/// clips have other types.
Bytes clip_name_block(const RegionSpec& region, std::uint16_t type);

/// Source offset, length and start behind a clip's name, each as wide as it must be.
Bytes three_point(const RegionSpec& region);

Bytes region_block(const RegionSpec& region);
Bytes region_list_block(const std::vector<RegionSpec>& regions);
Bytes older_region_list_block(const std::vector<RegionSpec>& regions);

struct PlacementSpec {
    std::uint32_t id = 0;  ///< region, fade, or clip group
    std::int64_t position = 0;
    bool is_fade = false;
    bool in_group = false;
    bool muted = false;
    bool muted_late = false;  ///< the other of the two places of the mute
    bool locked = false;
    std::uint8_t overlap = 3;
    int colour = -2;
    bool out_of_place = false;  ///< where only a walk over nested blocks finds it
    Bytes inside = {};          ///< blocks at the end of the inner record: loop settings
};

struct PlaylistSpec {
    std::string name = {};
    bool tick_based = false;
    std::vector<PlacementSpec> placements = {};
    std::optional<std::uint8_t> kind = {};      ///< instead of the one that the timebase has
    std::optional<std::uint32_t> counted = {};  ///< instead of the true number of placements
};

Bytes placement_block(const PlacementSpec& placement, bool tick_based);
Bytes playlist_block(const PlaylistSpec& playlist);
Bytes playlists_block(const std::vector<PlaylistSpec>& playlists);
/// For each channel the regions on it: older sessions store no positions here.
Bytes older_playlists_block(const std::vector<std::vector<std::uint32_t>>& channels);

Bytes fade_block(const FadeSpec& fade);
Bytes fade_list_block(const std::vector<FadeSpec>& fades);

/// All tables that the clips of some tracks and clip groups fill.
struct ClipTables {
    std::vector<GainEntrySpec> gains = {};
    std::vector<RegionSpec> regions = {};
    std::vector<FadeSpec> fades = {};
    std::vector<PlaylistSpec> playlists = {};
    std::vector<PlaylistSpec> group_lists = {};
};

/// A playlist a channel, in the order in which the track list numbers channels: the tracks' own
/// playlists first, then those of `alternate_tracks`. Clips that play the same share a region, and
/// have what the first of them has of gain, warp, pitch and effects.
ClipTables clip_tables(const std::vector<TrackSpec>& tracks,
                       const std::vector<ClipGroupSpec>& groups);

/// The entries that the alternate playlists add to the track list: tracks of the same name.
std::vector<TrackSpec> alternate_tracks(const std::vector<TrackSpec>& tracks);

}  // namespace tanrove::builder
