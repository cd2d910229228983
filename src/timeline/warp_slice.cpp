// A clip is a window on its file; its warp map tells when each sample of the file sounds. The
// window's two ends, looked up in the map, give the clip's length on the timeline.
#include "timeline/warp_slice.hpp"

#include <algorithm>
#include <cmath>

namespace tanrove {

namespace {

// Windows are compared with the map to one unit: their ends are rounded to samples.
constexpr double margin = 1;

// Timeline length over file length; what lies outside is no stretch that Pro Tools makes.
constexpr double min_ratio = 0.05;
constexpr double max_ratio = 20;

bool is_ascending(const WarpMap& points) {
    const auto falls = [](const WarpPoint& a, const WarpPoint& b) {
        return !(a.position <= b.position && a.source_sample <= b.source_sample);
    };
    const auto is_finite = [](const WarpPoint& point) {
        return std::isfinite(point.position) && std::isfinite(point.source_sample);
    };
    return std::ranges::all_of(points, is_finite) &&
           std::adjacent_find(points.begin(), points.end(), falls) == points.end();
}

/// The `to` of the place where `from` is `at`. A segment without width counts as its start.
double interpolate(const WarpMap& points, double at, double WarpPoint::*from,
                   double WarpPoint::*to) {
    if (points.empty()) return 0;
    if (points.size() == 1) return points.front().*to;
    const auto right =
        std::upper_bound(points.begin() + 1, points.end() - 1, at,
                         [from](double value, const WarpPoint& p) { return value < p.*from; });
    const WarpPoint& left = *(right - 1);
    const double width = (*right).*from - left.*from;
    if (width <= 0) return left.*to;
    return left.*to + (at - left.*from) * (((*right).*to - left.*to) / width);
}

}  // namespace

double ClipWarp::file_place(double session_time) const {
    return interpolate(*points, session_time, &WarpPoint::position, &WarpPoint::source_sample);
}

double ClipWarp::session_time(double file_place) const {
    return interpolate(*points, file_place, &WarpPoint::source_sample, &WarpPoint::position);
}

WarpSlicer::WarpSlicer(const WarpMaps& maps, const TempoClock& clock, double bpm, double rate_hz)
    : clock_(clock), rate_hz_(rate_hz) {
    add_maps(maps.in_samples, false, maps, bpm);
    add_maps(maps.in_ticks, true, maps, bpm);
}

void WarpSlicer::add_maps(const std::map<std::string, WarpMap>& maps, bool in_ticks,
                          const WarpMaps& all, double bpm) {
    for (const auto& [name, points] : maps) {
        if (points.size() < 2) continue;
        ClipWarp& warp = warps_[name];
        warp.points = &points;
        warp.in_ticks = in_ticks;
        warp.ascends = is_ascending(points);
        const auto stored = all.anchors.find(name);
        if (stored != all.anchors.end() && stored->second.position >= 0) {
            warp.anchor_samples = stored->second.samples(bpm, rate_hz_);
        } else {
            const WarpAnchor first_point = {points.front().position, in_ticks};
            warp.anchor_samples = first_point.samples(bpm, rate_hz_);
        }
    }
}

const ClipWarp* WarpSlicer::warp_of(std::string_view clip_name) const {
    const auto found = warps_.find(clip_name);
    return found == warps_.end() ? nullptr : &found->second;
}

double WarpSlicer::item_seconds(const WarpSlice& slice, double start, double session_time) const {
    const double span = session_time - slice.first_time;
    if (!slice.warp->in_ticks) return span / rate_hz_;
    return clock_.seconds(clock_.ticks(start) + span) - start;
}

/// Where in the file, in samples, place 0 of the clip's map lies. Once a clip has been measured
/// that is settled: a crossfade that opens its window moves nothing of what it plays.
double WarpSlicer::origin_of(const ClipItem& clip, const ClipWarp& warp) const {
    if (const auto settled = clip.stretch->warp_origin_samples) return *settled;
    const double map_start = warp.points->front().source_sample;
    const double map_end = warp.points->back().source_sample;
    const double lo = clip.source_offset * rate_hz_ - warp.anchor_samples;
    const double hi = lo + clip.length * rate_hz_;
    const bool meets_map = hi >= map_start + margin && lo <= map_end - margin;
    // Else the anchor is not this clip's: it plays from the map's own start.
    return meets_map ? warp.anchor_samples : clip.source_offset * rate_hz_ - map_start;
}

std::optional<WarpSlice> WarpSlicer::slice(const ClipItem& clip) const {
    const ClipWarp* warp = warp_of(clip.name);
    if (warp == nullptr || !warp->ascends || !(clip.length > 0)) return std::nullopt;
    const double map_start = warp->points->front().source_sample;
    const double map_end = warp->points->back().source_sample;

    WarpSlice slice;
    slice.warp = warp;
    slice.origin_samples = origin_of(clip, *warp);
    slice.first_place = clip.source_offset * rate_hz_ - slice.origin_samples;
    slice.end_place = slice.first_place + clip.length * rate_hz_;
    slice.inside = slice.first_place >= map_start - margin && slice.end_place <= map_end + margin;
    const bool meets_map = slice.end_place > map_start + margin &&
                           slice.first_place < map_end - margin &&
                           slice.end_place - slice.first_place >= 1 &&
                           warp->points->front().position < warp->points->back().position;
    if (!meets_map) return std::nullopt;

    slice.first_time = warp->session_time(slice.first_place);
    slice.end_time = warp->session_time(slice.end_place);
    slice.length = item_seconds(slice, clip.start, slice.end_time);
    const double ratio = slice.length / clip.length;
    if (!(slice.length > 0 && ratio >= min_ratio && ratio <= max_ratio)) return std::nullopt;
    return slice;
}

/// File seconds between two moments of a slice that starts at `start`, counted from there.
double WarpSlicer::source_seconds(const WarpSlice& slice, double start, double from,
                                  double to) const {
    const auto place_at = [&](double seconds) {
        const double span = slice.warp->in_ticks
                                ? clock_.ticks(start + seconds) - clock_.ticks(start)
                                : seconds * rate_hz_;
        return slice.warp->file_place(slice.first_time + span);
    };
    return std::max((place_at(to) - place_at(from)) / rate_hz_, 0.0);
}

double WarpSlicer::source_seconds_before(const ClipItem& clip, double seconds) const {
    const auto played = slice(clip);
    return played ? source_seconds(*played, clip.start, -seconds, 0) : seconds;
}

double WarpSlicer::source_seconds_behind(const ClipItem& clip, double seconds) const {
    const auto played = slice(clip);
    if (!played) return seconds;
    return source_seconds(*played, clip.start, played->length, played->length + seconds);
}

}  // namespace tanrove
