// Stretch markers under the knife: heads and tails of items that other clips cover.
#include "timeline/stretch_markers.hpp"

#include <algorithm>

namespace tanrove {

namespace {

// A cut this close to the last marker leaves nothing between the two.
constexpr double least_left_seconds = 1e-9;

bool can_be_cut(const std::vector<StretchMarker>& markers, double cut) {
    return markers.size() >= 2 && cut > 0 && markers.front().item_position <= cut &&
           cut + least_left_seconds < markers.back().item_position;
}

/// The `to` of the place where `from` is `at`, on the line of the markers around it.
double along_markers(const std::vector<StretchMarker>& markers, double at,
                     double StretchMarker::*from, double StretchMarker::*to) {
    if (markers.size() < 2) return markers.front().*to;
    const auto right = std::upper_bound(
        markers.begin() + 1, markers.end() - 1, at,
        [from](double value, const StretchMarker& marker) { return value < marker.*from; });
    const StretchMarker& left = *(right - 1);
    const double width = (*right).*from - left.*from;
    if (width <= 0) return left.*to;
    return left.*to + (at - left.*from) * (((*right).*to - left.*to) / width);
}

/// A clip whose markers are written plays at the rate between them; one with two left is written
/// without markers, so the rate between these becomes its own.
void take_rate_of_two_markers(ClipItem& clip) {
    const auto& markers = clip.stretch->stretch_markers;
    if (markers.size() != 2) return;
    const StretchMarker& first = markers.front();
    const StretchMarker& last = markers.back();
    const double item_seconds = last.item_position - first.item_position;
    const double source_seconds = last.source_position - first.source_position;
    if (item_seconds > 0 && source_seconds > 0) clip.playrate = source_seconds / item_seconds;
}

}  // namespace

bool has_stretch_map(const ClipItem& clip) {
    return clip.stretch->stretch_markers.size() >= min_written_markers;
}

double source_position_at(const std::vector<StretchMarker>& markers, double seconds) {
    return along_markers(markers, seconds, &StretchMarker::item_position,
                         &StretchMarker::source_position);
}

double item_position_of(const std::vector<StretchMarker>& markers, double source_seconds) {
    return along_markers(markers, source_seconds, &StretchMarker::source_position,
                         &StretchMarker::item_position);
}

std::optional<double> cut_head(std::vector<StretchMarker>& markers, double cut) {
    if (!can_be_cut(markers, cut)) return std::nullopt;
    const double source_position = source_position_at(markers, cut);
    const auto later =
        std::upper_bound(markers.begin(), markers.end(), cut,
                         [](double at, const StretchMarker& m) { return at < m.item_position; });
    // The cut lies behind the first marker, so there is a place for the new one.
    const auto first_kept = markers.erase(markers.begin(), later - 1);
    *first_kept = {cut, source_position};
    for (StretchMarker& marker : markers) marker.item_position -= cut;
    return source_position;
}

bool truncate_tail(std::vector<StretchMarker>& markers, double cut) {
    if (!can_be_cut(markers, cut)) return false;
    const double source_position = source_position_at(markers, cut);
    const auto first_dropped =
        std::lower_bound(markers.begin(), markers.end(), cut,
                         [](const StretchMarker& m, double at) { return m.item_position < at; });
    markers.erase(first_dropped, markers.end());
    markers.push_back({cut, source_position});
    return true;
}

std::optional<double> cut_marker_head(ClipItem& clip, double cut) {
    if (!clip.stretch) return std::nullopt;
    const auto source_position = cut_head(clip.stretch.edit().stretch_markers, cut);
    if (source_position) take_rate_of_two_markers(clip);
    return source_position;
}

void truncate_marker_tail(ClipItem& clip, double cut) {
    if (!clip.stretch) return;
    if (truncate_tail(clip.stretch.edit().stretch_markers, cut)) take_rate_of_two_markers(clip);
}

}  // namespace tanrove
