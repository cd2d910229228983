// The factor is the median of length over distance to the next clip, taken only when most of a
// track's clips agree on it.
#include "timeline/infer_stretch.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "timeline/stretch_markers.hpp"

namespace tanrove {

namespace {

constexpr double min_gap_seconds = 0.05;
constexpr double min_rate = 0.8;
constexpr double max_rate = 1.25;
constexpr double agreement = 0.005;
constexpr double least_stretch = 0.002;

std::optional<double> shared_rate(const std::vector<ClipItem>& clips) {
    std::vector<double> rates;
    for (std::size_t i = 0; i + 1 < clips.size(); ++i) {
        if (clips[i].crossfaded || clips[i].stretched) continue;
        const double gap = clips[i + 1].start - clips[i].start;
        if (!(gap > min_gap_seconds)) continue;
        const double rate = clips[i].length / gap;
        if (rate > min_rate && rate < max_rate) rates.push_back(rate);
    }
    if (rates.size() < 2) return std::nullopt;
    std::ranges::sort(rates);
    const double median = rates[rates.size() / 2];
    const auto agreeing = static_cast<std::size_t>(std::ranges::count_if(
        rates, [median](double rate) { return std::abs(rate - median) <= agreement; }));
    if (agreeing <= 2 || agreeing * 5 < rates.size() * 3) return std::nullopt;
    return std::abs(median - 1) >= least_stretch ? std::optional(median) : std::nullopt;
}

}  // namespace

void infer_stretch(TimelineTrack& track, const WarpSlicer& slicer, StretchTallies& tallies) {
    const auto rate = shared_rate(track.clips);
    if (!rate) return;
    int stretched = 0;
    for (ClipItem& clip : track.clips) {
        // Markers are a map that told what it had to tell.
        if (clip.stretched || has_stretch_map(clip) || slicer.warp_of(clip.name) == nullptr) {
            continue;
        }
        clip.playrate = *rate;
        clip.length /= *rate;
        ++stretched;
    }
    if (stretched == 0) return;
    tallies.inferred += stretched;
    tallies.inferred_tracks.push_back({track.name, *rate});
}

}  // namespace tanrove
