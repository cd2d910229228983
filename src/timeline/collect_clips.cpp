// Gathers the placements of the session under the tracks they lie on.
#include "timeline/collect_clips.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace tanrove {

namespace {

/// Tracks of the table, and where each id stands among them.
class TrackCollector {
public:
    explicit TrackCollector(std::span<const TrackTableRow> rows) {
        for (const auto& row : rows) {
            if (place_of_id_.contains(row.id)) continue;
            TimelineTrack& track = collected_.tracks[track_at(row.id)];
            track.name = row.name;
            track.listed_name = row.name;
            track.list_entry = row.entry;
            track.playlist = row.playlist;
        }
    }

    /// The place of the track with this id; one that the table does not know joins its end. Table
    /// and placements come from the same entries, so that such a one has no name to bring.
    std::size_t track_at(std::uint16_t id) {
        if (latest_ && latest_->first == id) return latest_->second;
        const auto [found, is_new] = place_of_id_.try_emplace(id, collected_.tracks.size());
        latest_ = *found;
        if (is_new) {
            auto& track = collected_.tracks.emplace_back();
            track.id = id;
            collected_.placement_counts.push_back(0);
        }
        return found->second;
    }

    void count_placement(std::size_t track) { ++collected_.placement_counts[track]; }

    /// A new clip on the track, to be filled where it lies: clips are large.
    ClipItem& add(std::size_t track) {
        auto& clips = collected_.tracks[track].clips;
        if (clips.empty()) clips.reserve(collected_.placement_counts[track]);
        ClipItem& clip = clips.emplace_back();
        clip.index_on_track = static_cast<std::uint32_t>(clips.size() - 1);
        return clip;
    }

    CollectedTracks take() { return std::move(collected_); }

private:
    CollectedTracks collected_;
    std::map<std::uint16_t, std::size_t> place_of_id_;
    std::optional<std::pair<std::uint16_t, std::size_t>> latest_;  // placements come track by track
};

/// The region of a placement that plays a file; nullptr for any other placement.
const Region* played_region(const ClipTrack& placement, const TimelineInput& input) {
    if (placement.is_clip_group || placement.region_index >= input.regions.size()) return nullptr;
    const Region& region = input.regions[placement.region_index];
    return region.length > 0 && has_file(region, input) ? &region : nullptr;
}

void fill(ClipItem& clip, const ClipTrack& placement, const Region& region,
          const TimelineInput& input) {
    take_region(clip, placement.region_index, region, input);
    clip.stored_position = static_cast<std::uint64_t>(std::max<std::int64_t>(placement.start, 0));
    clip.start = static_cast<double>(clip.stored_position);
}

}  // namespace

bool has_file(const Region& region, const TimelineInput& input) {
    return region.file >= 0 && static_cast<std::size_t>(region.file) < input.files.size();
}

void take_region(ClipItem& clip, std::uint32_t number, const Region& region,
                 const TimelineInput& input) {
    clip.region = number;
    clip.source_offset_samples = offset_in_samples(region.source_offset);
    clip.length = static_cast<double>(region.length) / input.rate_hz;
    clip.source_offset = static_cast<double>(region.source_offset) / input.rate_hz;
    clip.name = region.name;
    clip.file = without_folder(input.files[static_cast<std::size_t>(region.file)].name);
    clip.head_of_file = begins_with_its_file(clip);
}

bool sync_table_lines_up(const TimelineInput& input) {
    return std::ranges::equal(input.sync_points, input.regions, {}, &RegionStart::name,
                              &Region::name);
}

CollectedTracks collect_clips(const TimelineInput& input, TimelineTallies& tallies) {
    const bool has_sync_points = std::ranges::any_of(
        input.sync_points, [](const RegionStart& region) { return region.sync_samples > 0; });
    const bool sync_is_usable = has_sync_points && sync_table_lines_up(input);
    if (has_sync_points && !sync_is_usable) tallies.sync_table_refused = 1;

    TrackCollector collector(input.track_rows);
    for (const ClipTrack& placement : input.placements) {
        if (placement.region_index >= no_region) continue;
        collector.count_placement(collector.track_at(placement.index));
    }
    for (const ClipTrack& placement : input.placements) {
        if (placement.region_index >= no_region) continue;
        const auto track = collector.track_at(placement.index);
        const Region* region = played_region(placement, input);
        if (region == nullptr) continue;

        ClipItem& clip = collector.add(track);
        fill(clip, placement, *region, input);
        if (sync_is_usable && clip.region < input.sync_points.size()) {
            const auto samples = input.sync_points[clip.region].sync_samples;
            clip.sync_offset = static_cast<double>(samples) / input.rate_hz;
        }
    }
    return collector.take();
}

}  // namespace tanrove
