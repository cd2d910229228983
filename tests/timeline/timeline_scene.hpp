// A session's clip records written by hand, for the tests of the timeline.
#pragma once

#include <string>
#include <vector>

#include "session/playlist_walk.hpp"
#include "timeline/lay_out_timeline.hpp"
#include "timeline/place_clips.hpp"

namespace tanrove::testing_records {

using Row = PlacementRow;

class Scene {
public:
    /// Regions "clip 0", "clip 1" ... of one second in the first file, "Audio Files/clip.WAV".
    explicit Scene(int region_count = 4) {
        for (int i = 0; i < region_count; ++i) {
            Region& made = regions.emplace_back();
            made.index = static_cast<std::uint16_t>(i);
            made.name = "clip " + std::to_string(i);
            made.length = 48000;
            made.file = 0;
        }
    }

    Scene& track(const std::string& name) {
        TrackTableRow& row = track_rows.emplace_back();
        row.id = static_cast<std::uint16_t>(track_rows.size() - 1);
        row.name = name;
        return *this;
    }

    /// Places a region on the newest track.
    Scene& place(std::int64_t region, std::int64_t position) {
        ClipTrack& placed = placements.emplace_back();
        placed.index = track_rows.back().id;
        placed.region_index = static_cast<std::uint32_t>(region);
        placed.start = position;
        return *this;
    }

    Scene& record(const std::string& name, bool is_tick_based, const std::vector<Row>& rows) {
        records.push_back({name, is_tick_based});
        clip_counts.push_back(static_cast<std::uint32_t>(rows.size()));
        PlaylistDetail& list = edit_lists.emplace_back();
        list.name = name;
        list.rows = rows;
        return *this;
    }

    /// A track with the record that is its own: a placement for each row that names a region.
    Scene& track_with_rows(const std::string& name, bool is_tick_based,
                           const std::vector<Row>& rows) {
        track(name);
        for (const Row& row : rows) {
            if (row.region_id >= regions.size() && !row.in_group) continue;
            place(row.region_id, static_cast<std::int64_t>(row.position));
            placements.back().is_clip_group = row.in_group;
        }
        return record(name, is_tick_based, rows);
    }

    Scene& fade(FadeKind kind) {
        fades.emplace_back().kind = kind;
        return *this;
    }

    std::vector<TimelineTrack> placed() {
        tallies = {};
        return place_clips(input(), tallies);
    }

    std::vector<TimelineTrack> laid_out(const ClipGroups& groups) {
        tallies = {};
        TimelineInput all = input();
        all.clip_groups = &groups;
        return lay_out_timeline(all, tallies);
    }

    TimelineInput input() const {
        TimelineInput input;
        input.track_rows = track_rows;
        input.placements = placements;
        input.regions = regions;
        input.files = files;
        input.records = records;
        input.clip_counts = clip_counts;
        input.edit_lists = edit_lists;
        input.fades = fades;
        input.sync_points = sync_points;
        input.tempo_map = tempo_map;
        input.keep_fade_clips = keep_fade_clips;
        return input;
    }

    std::vector<TrackTableRow> track_rows;
    std::vector<ClipTrack> placements;
    std::vector<Region> regions;
    std::vector<AudioFileEntry> files = {{"Audio Files/clip.WAV", 0}};
    std::vector<PlaylistRecord> records;
    std::vector<std::uint32_t> clip_counts;
    std::vector<PlaylistDetail> edit_lists;
    std::vector<FadeRecord> fades;
    std::vector<RegionStart> sync_points;
    TempoMap tempo_map;
    bool keep_fade_clips = false;
    TimelineTallies tallies;
};

/// Regions of clips in their order, each followed by a blank.
inline std::string region_numbers(const std::vector<ClipItem>& clips) {
    std::string numbers;
    for (const auto& clip : clips) numbers += std::to_string(clip.region) + ' ';
    return numbers;
}

}  // namespace tanrove::testing_records
