// Regions: 0x100b (0x262a since Pro Tools 10) holds 0x1008 (0x2629), each with a child block from
// offset 9 on: counted name at 18, three-point header behind it; the u32 behind the child is the
// audio file's number.
// Tracks: 0x1015 holds 0x1014: counted name at 9, a byte, u32 number of channels, u16 channels.
// Clips on tracks, older form: 0x1012 > 0x1011 (one a channel) > 0x100f > 0x100e: u32 region at 11,
// three-point header at 15 whose first number is the place on the track.
// Newer form: 0x1054 > 0x1052 > 0x1050 > 0x104f: u32 region at 11, 8-byte place at 16.
#include "ptformat/clip_lists.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

namespace tanrove::ptformat {

namespace {

using Region = PTFFormat::Region;
using Track = PTFFormat::Track;

constexpr std::size_t region_name_at = 18;
constexpr std::size_t track_name_at = 9;
constexpr std::size_t max_channels = 1024;

constexpr std::size_t placed_region_at = 11;
constexpr std::size_t placed_span_at = 15;      // older form
constexpr std::size_t placed_position_at = 16;  // newer form
constexpr std::size_t position_bytes = 8;

using NamesByChannel = std::map<std::uint16_t, std::string_view>;

/// Behind a counted text; the count is as stored, so the result can pass the block.
std::size_t behind_text(const Container& session, std::size_t at) {
    return at + 4 + session.u32(at);
}

Region read_region(const Container& session, const ChainBlock& block) {
    const std::size_t name_at = block.at + region_name_at;
    const ClipSpan span = session.clip_span(behind_text(session, name_at), block.end());
    Region region;
    region.name = session.text(name_at, max_name_bytes, block.end());
    region.start = static_cast<std::int64_t>(span.start);
    region.source_offset = static_cast<std::int64_t>(span.source_offset);
    region.length = static_cast<std::int64_t>(span.length);
    if (const auto child = session.first_child(block)) {
        region.file_index =
            static_cast<std::uint16_t>(std::min(session.u32(child->end()), 0xffffU));
    }
    return region;
}

NamesByChannel read_track_names(const Container& session, TrackNames& owner) {
    NamesByChannel names;
    for (const ChainBlock& list : session.top_level()) {
        if (list.content_type != 0x1015) continue;
        for (const ChainBlock& entry : session.children(list, {0x1014})) {
            const std::size_t name_at = entry.at + track_name_at;
            const std::size_t count_at = behind_text(session, name_at) + 1;
            if (count_at > entry.end() || entry.end() - count_at < 4) continue;
            const std::size_t first_at = count_at + 4;
            const std::size_t channels = std::min(
                {std::size_t{session.u32(count_at)}, max_channels, (entry.end() - first_at) / 2});
            const std::string& name =
                owner.emplace_back(session.text(name_at, max_name_bytes, entry.end()));
            for (std::size_t i = 0; i < channels; ++i) {
                names.emplace(session.u16(first_at + 2 * i), name);
            }
        }
    }
    return names;
}

/// Collects clips on the tracks whose numbers and regions exist.
class Rows {
public:
    Rows(NamesByChannel names, const std::vector<Region>& regions)
        : names_(std::move(names)), regions_(regions) {}

    void add(std::size_t track, std::uint32_t region, std::uint64_t start) {
        if (track > 0xffff || region >= regions_.size()) return;
        const auto name = names_.find(static_cast<std::uint16_t>(track));
        if (name == names_.end()) return;
        rows_.push_back({.name = name->second,
                         .index = name->first,
                         .region_index = region,
                         .start = static_cast<std::int64_t>(start)});
    }

    /// Ordered by track, the numbers without gaps from 0.
    std::vector<Track> in_order() && {
        std::stable_sort(rows_.begin(), rows_.end(),
                         [](const Track& a, const Track& b) { return a.index < b.index; });
        std::uint16_t dense = 0;
        std::uint16_t stored = rows_.empty() ? std::uint16_t{0} : rows_.front().index;
        for (Track& row : rows_) {
            if (row.index != stored) ++dense;
            stored = row.index;
            row.index = dense;
        }
        return std::move(rows_);
    }

private:
    NamesByChannel names_;
    const std::vector<Region>& regions_;
    std::vector<Track> rows_;
};

void add_older_clips(const Container& session, const ChainBlock& list, Rows& rows) {
    std::size_t track = 0;
    for (const ChainBlock& channel : session.children(list, {0x1011})) {
        for (const ChainBlock& entry : session.children(channel, {0x100f})) {
            for (const ChainBlock& clip : session.children(entry, {0x100e})) {
                if (clip.end() < clip.at + placed_span_at) continue;
                const ClipSpan span = session.clip_span(clip.at + placed_span_at, clip.end());
                rows.add(track, session.u32(clip.at + placed_region_at), span.source_offset);
            }
        }
        ++track;
    }
}

void add_newer_clips(const Container& session, const ChainBlock& list, Rows& rows) {
    std::size_t track = 0;
    for (const ChainBlock& channel : session.children(list, {0x1052})) {
        for (const ChainBlock& entry : session.children(channel, {0x1050})) {
            for (const ChainBlock& clip : session.children(entry, {0x104f})) {
                if (clip.end() < clip.at + placed_position_at + position_bytes) continue;
                rows.add(track, session.u32(clip.at + placed_region_at),
                         session.position(clip.at + placed_position_at));
            }
        }
        ++track;
    }
}

}  // namespace

std::vector<Region> read_audio_regions(const Container& session) {
    std::vector<Region> regions;
    for (const ChainBlock& list : session.top_level()) {
        if (!list.is_one_of({0x100b, 0x262a})) continue;
        for (const ChainBlock& block : session.children(list, {0x1008, 0x2629})) {
            if (regions.size() == max_regions) return regions;
            regions.push_back(read_region(session, block));
            regions.back().index = static_cast<std::uint16_t>(regions.size() - 1);
        }
    }
    return regions;
}

std::vector<Track> read_audio_tracks(const Container& session, const std::vector<Region>& regions,
                                     TrackNames& names) {
    Rows rows(read_track_names(session, names), regions);
    for (const ChainBlock& list : session.top_level()) {
        if (list.content_type == 0x1012) add_older_clips(session, list, rows);
        if (list.content_type == 0x1054) add_newer_clips(session, list, rows);
    }
    return std::move(rows).in_order();
}

}  // namespace tanrove::ptformat
