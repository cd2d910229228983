// On a track whose clips are known by their positions alone, several can stand at one moment; a
// track of Pro Tools plays one.
#include "timeline/stacked_clips.hpp"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace tanrove {

namespace {

constexpr double gap_behind_last = 1e12;  // seconds
constexpr double gap_slack = 0.01;        // a clip may reach this far past its gap and still fit

std::int64_t millisecond_of(const ClipItem& clip) {
    return static_cast<std::int64_t>(clip.start * 1000);
}

/// The end of the clips that start in the same millisecond as the one at `first`.
std::size_t end_of_moment(const std::vector<ClipItem>& clips, std::size_t first) {
    std::size_t end = first + 1;
    while (end < clips.size() && millisecond_of(clips[end]) == millisecond_of(clips[first])) ++end;
    return end;
}

std::size_t winner_of(const std::vector<ClipItem>& clips, std::size_t first, std::size_t end) {
    const double gap =
        end < clips.size()
            ? static_cast<double>(millisecond_of(clips[end]) - millisecond_of(clips[first])) / 1000
            : gap_behind_last;
    const auto fits = [&](std::size_t i) { return clips[i].length <= gap + gap_slack; };

    std::size_t winner = first;
    for (std::size_t i = first + 1; i < end; ++i) {
        const bool is_better =
            fits(i) != fits(winner) ? fits(i) : clips[i].length > clips[winner].length;
        if (is_better) winner = i;
    }
    return winner;
}

bool stands_in_front(const ClipItem& one, const ClipItem& other) {
    return std::tie(one.start, one.index_on_track) < std::tie(other.start, other.index_on_track);
}

/// Takes the rendered fades out of the clips: beside each stands the clip that it fades.
std::vector<ClipItem> take_fade_references(std::vector<ClipItem>& clips) {
    const auto references = std::stable_partition(
        clips.begin(), clips.end(), [](const ClipItem& clip) { return !clip.is_fade_reference; });
    std::vector<ClipItem> taken(std::make_move_iterator(references),
                                std::make_move_iterator(clips.end()));
    clips.erase(references, clips.end());
    return taken;
}

}  // namespace

void reduce_stacked_clips(TimelineTrack& track) {
    std::vector<ClipItem> references = take_fade_references(track.clips);
    std::vector<ClipItem> winners;
    for (std::size_t first = 0; first < track.clips.size();) {
        const auto end = end_of_moment(track.clips, first);
        const auto winner = winner_of(track.clips, first, end);
        for (std::size_t i = first; i < end; ++i) {
            (i == winner ? winners : track.ghost_clips).push_back(std::move(track.clips[i]));
        }
        first = end;
    }
    track.clips.clear();
    std::merge(std::make_move_iterator(winners.begin()), std::make_move_iterator(winners.end()),
               std::make_move_iterator(references.begin()),
               std::make_move_iterator(references.end()), std::back_inserter(track.clips),
               stands_in_front);
}

}  // namespace tanrove
