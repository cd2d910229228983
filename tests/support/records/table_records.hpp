// The records of groups, folders, VCA masters, alternate playlists, video, frozen tracks and colour
// settings.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/records/clip_records.hpp"

namespace tanrove::builder {

struct GroupSpec {
    std::string name = {};
    std::vector<std::uint16_t> members = {};  ///< places of tracks
    std::uint8_t kind = 2;                    ///< 0 edit, 1 mix, 2 both
    std::uint32_t slot = 0;
    bool active = true;
    std::uint16_t vca_master = 0xffff;
    Bytes attributes = {1, 1};  ///< by their numbers; the rest is 0
    bool in_both_lists = true;
};

struct FolderSpec {
    std::uint64_t identity = 0;
    std::vector<std::uint64_t> members = {};
};

/// An entry of a file list: kind 0 a volume, 1 a folder, 2 a file; `parent` is an entry's number.
struct FileListEntry {
    std::uint8_t kind = 0;
    std::uint32_t parent = 0xffffffff;
    std::string name = {};
};

/// A stretch of a movie, in frames.
struct VideoRegionSpec {
    std::string name = {};
    std::uint64_t source_offset = 0;
    std::uint64_t length = 0;
    std::uint32_t movie = 0;
    std::uint8_t unit_mark = 2;  ///< 0 samples, 1 ticks
};

/// A position in frames, as placements store it.
constexpr std::int64_t frames(std::int64_t count) {
    return count | std::int64_t{0x10} << 56;
}

struct VideoTrackSpec {
    std::string name = {};
    std::vector<PlacementSpec> clips = {};
};

/// How the session plays its picture.
struct PictureSpec {
    double frame_rate = 0;  ///< 0: the session has none
    std::uint8_t quality = 1;
};

/// The tables that a session may have; one that is empty is not written.
struct TablesSpec {
    std::vector<GroupSpec> groups = {};
    std::vector<FolderSpec> folders = {};
    std::vector<std::pair<std::string, std::uint32_t>> alternates = {};
    std::vector<std::string> video_files = {};
    std::vector<VideoTrackSpec> video_tracks = {};
    std::vector<VideoRegionSpec> video_regions = {};
    PictureSpec picture = {};
    std::vector<RegionSpec> freeze_renders = {};
    Bytes colour_schemes = {};  ///< of tracks, of clips
};

Bytes group_block(const GroupSpec& group);
Bytes picture_settings_block(std::uint8_t quality);
Bytes folder_table_block(const std::vector<FolderSpec>& folders);
/// What the strip row of a VCA master holds.
Bytes vca_record(int fader_tenths_db);
/// Names and values; real sessions count the entries.
Bytes alternates_block(const std::vector<std::pair<std::string, std::uint32_t>>& alternates,
                       bool counted = true);
Bytes file_entries_block(const std::vector<FileListEntry>& entries);
/// The two schemes behind a block, or at their fixed places.
Bytes colour_settings_block(const Bytes& schemes, bool has_child = true);

/// What stands in front of the clips, and then in front of the strip rows and behind them. The
/// movies lie in a folder "Video Files" under `path`; groups begin with the one of all strips.
Bytes tables_before_clips(const TablesSpec& tables, const std::vector<std::string>& path);
Bytes tables_before_rows(const TablesSpec& tables);
Bytes tables_after_rows(const TablesSpec& tables, std::uint16_t strip_count);

}  // namespace tanrove::builder
