// Playlist of a video track 0x1053: u32 count and text of the name at offset 9; in it a 0x1051 a
// clip, in that a 0x104f, offsets from its 'Z':
//
//   9    u8 not 0: locked
//   10   u8 not 0: muted
//   11   u32 place in the list of video clips
//   16   position; its top byte, at 23, tells what it counts
//   25   i16 colour, -2 none
//   39   u8 not 0: muted
//
// The strip table 0x2519 keeps the picture's rate, an f64 at 11 (0 without picture); the 0x270a
// keeps the playback quality, a u8 at 13.
#include "session/video_clips.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "session/block_types.hpp"
#include "session/video_files.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t least_playlist = 20;
constexpr std::uint32_t largest_playlist = 400000;

constexpr std::uint32_t least_placement = 20;
constexpr std::uint32_t largest_placement = 4000;

constexpr std::uint32_t least_record = 18;
constexpr std::size_t record_at = 11;  // from the placement's 'Z', or behind that
constexpr std::size_t lock_at = 9;
constexpr std::size_t early_mute_at = 10;
constexpr std::size_t region_at = 11;
constexpr std::size_t position_at = 16;
constexpr std::size_t unit_at = position_at + position_width;
constexpr std::size_t colour_at = 25;
constexpr std::size_t late_mute_at = 39;
constexpr std::uint32_t largest_without_mute = 30;

constexpr std::uint32_t least_table_with_rate = 12;
constexpr std::size_t rate_at = 11;
constexpr double least_rate = 1;
constexpr double largest_rate = 1000;
constexpr double rate_tolerance = 0.005;
constexpr std::array<double, 13> usual_rates = {23.976, 24,    25, 29.97, 30,     47.952, 48,
                                                50,     59.94, 60, 100,   119.88, 120};

constexpr std::uint32_t largest_without_quality = 7;
constexpr std::size_t quality_at = 13;

VideoUnit unit_of(std::uint8_t top_byte) {
    if (top_byte == frames_top_byte) return VideoUnit::frames;
    return top_byte == ticks_top_byte ? VideoUnit::ticks : VideoUnit::samples;
}

VideoClip read_clip(ByteView image, const Block& record, std::uint32_t track_index) {
    VideoClip clip;
    clip.track_index = track_index;
    clip.region = image.u32(record.at + region_at);
    clip.position = static_cast<double>(read_position(image, record.at + position_at));
    clip.unit = unit_of(image.u8(record.at + unit_at));
    clip.colour = image.i16(record.at + colour_at);
    const bool muted =
        image.u8(record.at + late_mute_at) != 0 || image.u8(record.at + early_mute_at) != 0;
    clip.muted = record.size > largest_without_mute && muted ? 1 : 0;
    clip.locked = image.u8(record.at + lock_at) != 0;
    return clip;
}

/// The records long enough to be a clip's.
BlockList clip_records(const BlockIndex& index) {
    std::vector<Block> records;
    for (const Block& record : index.of_type(block_type::placement_record).all()) {
        if (record.size >= least_record) records.push_back(record);
    }
    return BlockList(std::move(records));
}

/// The record of a placement: behind two bytes of its payload or more, else right at its start, as
/// placements of audio and MIDI have it.
const Block* record_in(const BlockList& records, const Block& placement) {
    const Block* record = records.first_inside(placement.at + record_at, placement.end());
    return record != nullptr ? record : records.first_inside(placement.payload(), placement.end());
}

bool is_usual_rate(double rate) {
    if (!(rate >= least_rate && rate <= largest_rate)) return false;
    return std::any_of(usual_rates.begin(), usual_rates.end(), [rate](double usual) {
        return std::abs(rate - usual) <= usual * rate_tolerance;
    });
}

}  // namespace

VideoClips readVideoClips(const BlockIndex& index) {
    const ByteView image = index.image();
    const BlockList records = clip_records(index);
    VideoClips video;
    std::map<std::string, std::uint32_t, std::less<>> places;
    // Playlists do not overlap: a placement belongs to the first that holds it.
    std::size_t next_placement = 0;
    for (const Block& playlist : index.of_type(block_type::video_playlist).all()) {
        if (playlist.size < least_playlist || playlist.size > largest_playlist) continue;
        const auto name = read_name(image, playlist.payload(), playlist.end());
        if (!name || name->empty()) continue;
        const auto next_place = static_cast<std::uint32_t>(video.track_names.size());
        const auto [place, is_new] = places.try_emplace(std::string(*name), next_place);
        if (is_new) video.track_names.emplace_back(*name);
        const std::size_t from = std::max(playlist.payload(), next_placement);
        for (const Block& row :
             index.of_type(block_type::video_placement).between(from, playlist.end())) {
            next_placement = row.at + 1;
            if (row.end() > playlist.end()) continue;
            if (row.size < least_placement || row.size > largest_placement) continue;
            if (const Block* record = record_in(records, row)) {
                video.clips.push_back(read_clip(image, *record, place->second));
            }
        }
    }
    return video;
}

std::optional<double> readVideoRate(const BlockIndex& index) {
    for (const Block& table : index.of_type(block_type::strip_table).all()) {
        if (table.size < least_table_with_rate) continue;
        const double rate = index.image().f64(table.at + rate_at);
        if (is_usual_rate(rate)) return rate;
    }
    return std::nullopt;
}

std::optional<std::int32_t> readVideoQuality(const BlockIndex& index) {
    for (const Block& settings : index.of_type(block_type::picture_settings).all()) {
        if (settings.size > largest_without_quality) {
            return index.image().u8(settings.at + quality_at);
        }
    }
    return std::nullopt;
}

VideoInfo read_video_info(const BlockIndex& index) {
    return {readVideoFiles(index), read_movie_list(index), readVideoRate(index),
            readVideoQuality(index)};
}

}  // namespace tanrove
