// A stretched clip is written with one marker at each end, one for each point of its map between,
// and, on a map in ticks, one at each tempo change: there the rate of what is heard changes too.
#include "timeline/warp_clips.hpp"

#include <algorithm>
#include <cmath>
#include <memory>
#include <span>

#include "timeline/stretch_markers.hpp"

namespace tanrove {

namespace {

// A session may place one map of thousands of points on any number of clips. This many points are
// looked at in one run: days of elastic audio with a marker for every beat.
constexpr std::size_t max_points_of_run = 4'000'000;

// The account tells clips whose stretch is hardly one. Markers can move far more than the length.
constexpr double barely_below = 0.999;
constexpr double barely_above = 1.001;

bool by_item_position(const StretchMarker& a, const StretchMarker& b) {
    return a.item_position < b.item_position;
}

/// Ticks at which the tempo becomes another.
std::vector<double> tempo_changes(const TempoMap& tempo_map) {
    std::vector<double> ticks;
    for (std::size_t i = 1; i < tempo_map.size(); ++i) {
        if (tempo_map[i].bpm != tempo_map[i - 1].bpm) ticks.push_back(tempo_map[i].tick);
    }
    return ticks;
}

class ClipWarper {
public:
    ClipWarper(const WarpSlicer& slicer, const TempoMap& tempo_map, StretchTallies& tallies)
        : slicer_(slicer), tempo_changes_(tempo_changes(tempo_map)), tallies_(tallies) {}

    void warp(ClipItem& clip) {
        if (slicer_.warp_of(clip.name) == nullptr || !(clip.length > 0)) return;
        const auto slice = slicer_.slice(clip);
        if (!slice) {
            ++tallies_.unsliced;
            return;
        }
        auto markers = markers_of(*slice, clip.start);
        const bool has_markers = markers.size() >= min_written_markers;
        take_length(clip, slice->length, has_markers);
        if (!has_markers) return;
        clip.stretch.edit().stretch_markers = std::move(markers);
        ++tallies_.with_markers;
        if (!slice->inside) ++tallies_.trims_with_markers;
    }

private:
    void take_length(ClipItem& clip, double length, bool has_markers) {
        if (std::abs(length - clip.length) * slicer_.rate_hz() < 0.5) return;
        const double ratio = length / clip.length;
        if (!has_markers && ratio > barely_below && ratio < barely_above) ++tallies_.barely;
        clip.stretched = true;
        clip.length = length;
        clip.playrate = 1 / ratio;
        ++tallies_.by_map;
    }

    /// False, and the clip counted, once the run has looked at all the points it may.
    bool spend(std::size_t points) {
        if (points > points_left_) {
            ++tallies_.past_marker_limit;
            return false;
        }
        points_left_ -= points;
        return true;
    }

    StretchMarker marker_at(const WarpSlice& slice, double item_position, double place) const {
        return {item_position, slicer_.file_seconds(slice, place)};
    }

    /// Both ends and every point between; none where the run's points are spent.
    std::vector<StretchMarker> markers_of(const WarpSlice& slice, double start) {
        const auto first = std::ranges::upper_bound(*slice.warp->points, slice.first_place + 1, {},
                                                    &WarpPoint::source_sample);
        const auto end = std::ranges::lower_bound(*slice.warp->points, slice.end_place - 1, {},
                                                  &WarpPoint::source_sample);
        const auto changes =
            slice.warp->in_ticks ? changes_inside(slice, start) : std::span<const double>();
        const std::size_t between = first < end ? static_cast<std::size_t>(end - first) : 0;
        if (!spend(between + changes.size())) return {};

        std::vector<StretchMarker> markers = {marker_at(slice, 0, slice.first_place)};
        for (auto point = first; point < end; ++point) {
            const double at = slicer_.item_seconds(slice, start, point->position);
            if (at < 0 || at >= slice.length) continue;
            markers.push_back(marker_at(slice, at, point->source_sample));
        }
        markers.push_back(marker_at(slice, slice.length, slice.end_place));
        add_tempo_changes(markers, slice, start, changes);
        return markers;
    }

    /// The changes while the slice plays, on the timeline where the clip lies now.
    std::span<const double> changes_inside(const WarpSlice& slice, double start) const {
        const double start_tick = slicer_.clock().ticks(start);
        const double end_tick = start_tick + slice.end_time - slice.first_time;
        const auto first = std::ranges::upper_bound(tempo_changes_, start_tick);
        const auto end = std::ranges::lower_bound(tempo_changes_, end_tick);
        return first < end ? std::span(first, end) : std::span<const double>();
    }

    void add_tempo_changes(std::vector<StretchMarker>& markers, const WarpSlice& slice,
                           double start, std::span<const double> changes) {
        const double sample = 1 / slicer_.rate_hz();
        const double start_tick = slicer_.clock().ticks(start);
        const std::size_t points = markers.size();
        const auto is_near_a_point = [&](const StretchMarker& marker) {
            const auto points_end = markers.begin() + static_cast<std::ptrdiff_t>(points);
            const auto behind =
                std::lower_bound(markers.begin(), points_end, marker, by_item_position);
            const auto is_near = [&](const StretchMarker& other) {
                return std::abs(other.item_position - marker.item_position) < sample;
            };
            return (behind != points_end && is_near(*behind)) ||
                   (behind != markers.begin() && is_near(*(behind - 1))) || is_near(markers.back());
        };
        for (const double tick : changes) {
            const double time = slice.first_time + tick - start_tick;
            const double at = slicer_.item_seconds(slice, start, time);
            if (at < 2 * sample || at > slice.length - 2 * sample) continue;
            const auto marker = marker_at(slice, at, slice.warp->file_place(time));
            if (!is_near_a_point(marker)) markers.push_back(marker);
        }
        if (markers.size() == points) return;
        std::ranges::stable_sort(markers, by_item_position);
        ++tallies_.across_tempo_changes;
    }

    const WarpSlicer& slicer_;
    std::vector<double> tempo_changes_;
    StretchTallies& tallies_;
    std::size_t points_left_ = max_points_of_run;
};

}  // namespace

void measure_warped_clips(std::vector<TimelineTrack>& tracks, const WarpSlicer& slicer) {
    if (slicer.empty()) return;
    for (TimelineTrack& track : tracks) {
        for (ClipItem& clip : track.clips) {
            const auto slice = slicer.slice(clip);
            if (!slice) continue;
            ClipStretch& stretch = clip.stretch.edit();
            stretch.warped_length = slice->length;
            stretch.warp_origin_samples = slice->origin_samples;
        }
    }
}

void shift_pitch(ClipItem& clip, const PitchShifts& shifts, StretchTallies& tallies) {
    const auto shift = shifts.find(clip.name);
    if (shift == shifts.end()) return;
    clip.stretch.edit().pitch_shift = shift->second;
    ++tallies.pitch_shifted;
}

void shift_pitch(std::vector<TimelineTrack>& tracks, const PitchShifts& shifts,
                 StretchTallies& tallies) {
    if (shifts.empty()) return;
    for (TimelineTrack& track : tracks) {
        for (ClipItem& clip : track.clips) shift_pitch(clip, shifts, tallies);
    }
}

WarpOneClip clip_warper(const WarpSlicer& slicer, const TempoMap& tempo_map,
                        StretchTallies& tallies) {
    return [warper = std::make_shared<ClipWarper>(slicer, tempo_map, tallies)](ClipItem& clip) {
        warper->warp(clip);
    };
}

void warp_clips(std::vector<TimelineTrack>& tracks, const WarpOneClip& warp) {
    for (TimelineTrack& track : tracks) {
        for (ClipItem& clip : track.clips) warp(clip);
    }
}

}  // namespace tanrove
