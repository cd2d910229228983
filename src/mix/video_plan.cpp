// From video playlists and strip rows to tracks with items in seconds. A clip names a region of the
// session's clip list, the region's name tells the movie, and its length counts the picture's
// frames where the session has a frame rate that fits, else samples.
#include "mix/video_plan.hpp"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>

#include "session/block_scan.hpp"

namespace tanrove {

namespace {

// Positions from here on are ticks, which count from the session's origin.
constexpr double least_ticks = static_cast<double>(tick_origin) / 2;

constexpr double longest_clip_seconds = 24 * 3600;

// The playback quality of every session whose picture was never turned down.
constexpr std::int32_t full_quality = 1;

/// The region of a clip; nullptr if its number leads to none, or to one without a length.
const Region* region_of(const VideoInput& input, const VideoClip& clip) {
    if (clip.region >= input.regions.size()) return nullptr;
    const Region& region = input.regions[clip.region];
    return region.length > 0 ? &region : nullptr;
}

double start_of(const VideoClip& clip, double rate_hz, const TempoClock& clock) {
    if (clip.position < least_ticks) return clip.position / rate_hz;
    return std::max(0.0, clock.seconds(clip.position - static_cast<double>(tick_origin)));
}

struct Extent {
    double start = 0;
    double length = 0;
};

/// True if clips of one track, measured in frames, lie side by side as picture does. Lengths in
/// samples, taken for frames, run over whole hours and into their neighbours.
bool fit_in_frames(const VideoInput& input, const TempoClock& clock, double frame_rate) {
    std::map<std::uint32_t, std::vector<Extent>> by_track;
    for (const VideoClip& clip : input.video.clips) {
        const Region* region = region_of(input, clip);
        if (region == nullptr) continue;
        const double length = static_cast<double>(region->length) / frame_rate;
        if (length > longest_clip_seconds) return false;
        by_track[clip.track_index].push_back({start_of(clip, input.rate_hz, clock), length});
    }
    const double one_frame = 1 / frame_rate;
    return std::ranges::all_of(by_track, [one_frame](auto& entry) {
        auto& clips = entry.second;
        std::ranges::stable_sort(clips, {}, &Extent::start);
        const auto overlaps = [one_frame](const Extent& clip, const Extent& next) {
            return clip.start + clip.length > next.start + one_frame;
        };
        return std::ranges::adjacent_find(clips, overlaps) == clips.end();
    });
}

/// The session's movies by what clips made from them are called.
class Movies {
public:
    explicit Movies(const std::vector<std::string>& files) {
        if (files.size() == 1) only_ = &files.front();
        for (const std::string& file : files) {
            file_of_stem_.try_emplace(std::string_view(file).substr(0, file.rfind('.')), &file);
        }
    }

    /// The only movie, else the one whose name without its extension `clip_name` begins with, the
    /// longest of several; nullptr if there is none.
    const std::string* of(std::string_view clip_name) const {
        if (only_ != nullptr) return only_;
        for (std::size_t length = clip_name.size(); length > 0; --length) {
            const auto found = file_of_stem_.find(clip_name.substr(0, length));
            if (found != file_of_stem_.end()) return found->second;
        }
        return nullptr;
    }

private:
    const std::string* only_ = nullptr;
    std::unordered_map<std::string_view, const std::string*> file_of_stem_;
};

void show_as(VideoTrackPlan& track, const StripRow& row, const TrackDisplay* display) {
    if (!row.current_name.empty()) track.name = row.current_name;
    if (display == nullptr) return;
    track.hidden = !display->shown;
    track.height_pixels = display->height;
}

/// The tracks of the playlists, dressed by the rows of their names, and those of the rows left.
std::vector<VideoTrackPlan> plan_tracks(const VideoInput& input) {
    std::vector<VideoTrackPlan> tracks;
    std::map<std::string_view, std::size_t> place_of_name;
    for (const std::string& name : input.video.track_names) {
        place_of_name.try_emplace(name, tracks.size());
        tracks.push_back({.name = name, .items = {}});
    }
    for (std::size_t i = 0; i < input.rows.size(); ++i) {
        const StripRow& row = input.rows[i];
        if (row.type != StripRowType::video) continue;
        // A playlist may still bear the name from its track's creation.
        auto found = place_of_name.find(row.current_name);
        if (found == place_of_name.end()) found = place_of_name.find(row.original_name);
        std::size_t place = tracks.size();
        if (found == place_of_name.end()) {
            tracks.push_back({.name = row.original_name, .items = {}});
        } else {
            place = found->second;
            place_of_name.erase(found);
        }
        show_as(tracks[place], row, i < input.displays.size() ? &input.displays[i] : nullptr);
    }
    return tracks;
}

bool stands_first(std::span<const StripRow> rows) {
    bool other_above = false;
    for (const StripRow& row : rows) {
        if (row.type == StripRowType::video && other_above) return false;
        if (row.type != StripRowType::video && row.type != StripRowType::master) other_above = true;
    }
    return true;
}

}  // namespace

VideoPlan plan_video(const VideoInput& input, const TempoClock& clock, VideoTallies& tallies) {
    VideoPlan plan{.tracks = plan_tracks(input), .stands_first = stands_first(input.rows)};
    tallies.at_top = plan.stands_first;
    tallies.reduced_quality = input.info.quality.value_or(full_quality) != full_quality;
    const auto rate = input.info.frame_rate;
    if (rate && fit_in_frames(input, clock, *rate)) tallies.frame_rate = rate;
    const double unit = 1 / tallies.frame_rate.value_or(input.rate_hz);

    const Movies movies(input.info.names);
    for (const VideoClip& clip : input.video.clips) {
        const Region* region = region_of(input, clip);
        if (region == nullptr) {
            ++tallies.clips_without_region;
            continue;
        }
        const std::string* movie = movies.of(region->name);
        if (movie == nullptr) {
            ++tallies.clips_without_movie;
            continue;
        }
        plan.tracks[clip.track_index].items.push_back({
            .start = start_of(clip, input.rate_hz, clock),
            .length = static_cast<double>(region->length) * unit,
            .source_offset = static_cast<double>(region->source_offset) * unit,
            .name = region->name,
            .movie = *movie,
            .locked = clip.locked,
            .color_index = clip.colour,
        });
    }
    for (VideoTrackPlan& track : plan.tracks) {
        std::ranges::stable_sort(track.items, {}, &VideoItem::start);
    }
    return plan;
}

}  // namespace tanrove
