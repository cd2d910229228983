// From video playlists and strip rows to tracks with items in seconds. A clip names a stretch of a
// movie in the session's list of video clips. What the numbers count, frames of the picture as a
// rule, each of them says itself.
#include "mix/video_plan.hpp"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>

#include "base/session_numbers.hpp"

namespace tanrove {

namespace {

// The playback quality of every session whose picture was never turned down.
constexpr std::int32_t full_quality = 1;

/// The stretch that a clip plays; nullptr if its number leads to none, or to one without a length.
const VideoRegion* region_of(const VideoInput& input, const VideoClip& clip) {
    if (clip.region >= input.regions.size()) return nullptr;
    const VideoRegion& region = input.regions[clip.region];
    return region.length > 0 ? &region : nullptr;
}

/// What numbers of the session are in seconds.
class PictureClock {
public:
    PictureClock(const VideoInput& input, const TempoClock& clock)
        : frame_rate_(input.info.frame_rate), rate_hz_(input.rate_hz), clock_(clock) {}

    /// True if numbers of that unit can be told: those of a picture without a rate cannot.
    bool knows(VideoUnit unit) const { return unit != VideoUnit::frames || frame_rate_; }

    double place(double position, VideoUnit unit) const {
        if (unit != VideoUnit::ticks) return position / per_second(unit);
        return std::max(0.0, clock_.seconds(position - static_cast<double>(tick_origin)));
    }

    /// A length that begins at `start` seconds, or an offset into a movie.
    double span(std::uint64_t count, VideoUnit unit, double start) const {
        const auto units = static_cast<double>(count);
        if (unit != VideoUnit::ticks) return units / per_second(unit);
        return clock_.seconds(clock_.ticks(start) + units) - start;
    }

private:
    double per_second(VideoUnit unit) const {
        return unit == VideoUnit::frames ? *frame_rate_ : rate_hz_;
    }

    std::optional<double> frame_rate_;
    double rate_hz_;
    const TempoClock& clock_;
};

/// The session's movies by their numbers. Where these lead to none, by what clips made from them
/// are called.
class Movies {
public:
    explicit Movies(const VideoInfo& info) : movies_(info.movies) {
        const auto& files = info.names;
        if (files.size() == 1) only_ = &files.front();
        for (const std::string& file : files) {
            file_of_stem_.try_emplace(std::string_view(file).substr(0, file.rfind('.')), &file);
        }
    }

    /// The movie of the region's number; else the only movie, else the one whose name without its
    /// extension the region's begins with, the longest of several; nullptr if there is none.
    const std::string* of(const VideoRegion& region) const {
        const std::string_view clip_name = region.name;
        if (region.movie < movies_.size() && !movies_[region.movie].empty()) {
            return &movies_[region.movie];
        }
        if (only_ != nullptr) return only_;
        for (std::size_t length = clip_name.size(); length > 0; --length) {
            const auto found = file_of_stem_.find(clip_name.substr(0, length));
            if (found != file_of_stem_.end()) return found->second;
        }
        return nullptr;
    }

private:
    const std::vector<std::string>& movies_;
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

    const PictureClock picture(input, clock);
    const Movies movies(input.info);
    for (const VideoClip& clip : input.video.clips) {
        const VideoRegion* region = region_of(input, clip);
        if (region == nullptr || !picture.knows(region->unit) || !picture.knows(clip.unit)) {
            ++tallies.clips_without_region;
            continue;
        }
        const std::string* movie = movies.of(*region);
        if (movie == nullptr) {
            ++tallies.clips_without_movie;
            continue;
        }
        if (region->unit == VideoUnit::frames) tallies.frame_rate = input.info.frame_rate;
        const double start = picture.place(clip.position, clip.unit);
        plan.tracks[clip.track_index].items.push_back({
            .start = start,
            .length = picture.span(region->length, region->unit, start),
            .source_offset = picture.span(region->source_offset, region->unit, start),
            .name = region->name,
            .movie = *movie,
            .locked = clip.locked,
            .colour_place = clip.colour,
        });
    }
    for (VideoTrackPlan& track : plan.tracks) {
        std::ranges::stable_sort(track.items, {}, &VideoItem::start);
    }
    return plan;
}

}  // namespace tanrove
