// A 0x1014 record, one an audio track, n being the bytes of its name:
//
//   9       u32 n, 1 to 255, name at 13
//   13 + n  u8 width code
//   14 + n  u32 number of channels, and as many u16 channel ids behind it
//   ..      the identity marker and the track's u64 identity: the last marker in the record counts
#include "session/track_names.hpp"

#include <algorithm>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_length_at = 9;
constexpr std::size_t name_at = 13;
constexpr std::size_t channel_count_width = 4;
constexpr std::size_t channels_behind_name = 5;
constexpr std::size_t channel_width = 2;
constexpr std::size_t max_channels = 64;  // the widest that a track can be
constexpr std::size_t identity_width = 8;

/// The identity behind the last marker between `from` and `to`; 0 for none.
std::uint64_t last_identity(ByteView image, const std::vector<std::size_t>& markers,
                            std::size_t from, std::size_t to) {
    const std::size_t marked_bytes = identity_marker.size() + identity_width;
    if (to < from || to - from < marked_bytes) return 0;
    const auto behind = std::upper_bound(markers.begin(), markers.end(), to - marked_bytes);
    if (behind == markers.begin() || *(behind - 1) < from) return 0;
    return image.u64(*(behind - 1) + identity_marker.size());
}

std::optional<TrackName> read_track_name(ByteView record) {
    const auto name = read_name(record, name_length_at, record.size());
    if (!name || name->empty()) return std::nullopt;
    TrackName track;
    track.name = *name;
    const std::size_t channels_at = name_at + name->size() + channels_behind_name;
    const std::size_t stored = record.u32(channels_at - channel_count_width);
    const std::size_t count = std::min(stored, max_channels);
    if (!record.holds(channels_at, count * channel_width)) return track;
    for (std::size_t i = 0; i < count; ++i) {
        track.channels.push_back(record.u16(channels_at + i * channel_width));
    }
    return track;
}

}  // namespace

std::vector<TrackName> read_track_names(const BlockIndex& index) {
    const ByteView image = index.image();
    const BlockList& blocks = index.of_type(block_type::track_name);
    // Found once: records that overlap must not each search their own span.
    const auto markers = find_in(image, blocks.reach(), identity_marker);
    std::vector<TrackName> tracks;
    for (const Block& block : blocks.all()) {
        auto track = read_track_name(image.window(block.at, block.end() - block.at));
        if (!track) continue;
        const std::size_t behind_name = block.at + name_at + track->name.size();
        track->identity = last_identity(image, markers, behind_name, block.end());
        tracks.push_back(std::move(*track));
    }
    return tracks;
}

}  // namespace tanrove
