// Whether a track's positions are samples or ticks, and what they are in seconds.
#include "timeline/track_timebase.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "session/block_scan.hpp"

namespace tanrove {

namespace {

// Samples reach this only hours into a session; ticks with their origin always do.
constexpr std::uint64_t most_likely_ticks_above = 1'000'000'000;

bool looks_tick_based(const std::vector<ClipItem>& clips) {
    const auto large = std::ranges::count_if(
        clips, [](const ClipItem& clip) { return clip.stored_position > most_likely_ticks_above; });
    return 2 * static_cast<std::size_t>(large) >= clips.size();
}

/// A clip may begin a hair before the session's origin, as its stored ticks can: that is the
/// origin.
double ticks_from_origin(std::uint64_t stored) {
    return stored > tick_origin ? static_cast<double>(stored - tick_origin) : 0;
}

/// Most tracks are stored in order. Clips are large: the others sort numbers and move each once.
void order_by_start(std::vector<ClipItem>& clips) {
    if (std::ranges::is_sorted(clips, {}, &ClipItem::start)) return;
    std::vector<std::pair<double, std::size_t>> order;
    order.reserve(clips.size());
    for (std::size_t i = 0; i < clips.size(); ++i) order.emplace_back(clips[i].start, i);
    std::ranges::sort(order);
    std::vector<ClipItem> ordered;
    ordered.reserve(clips.size());
    for (const auto& [start, number] : order) ordered.push_back(std::move(clips[number]));
    clips = std::move(ordered);
}

}  // namespace

void decide_timebases(std::vector<TimelineTrack>& tracks, std::span<const PlaylistRecord> records,
                      TimelineTallies& tallies) {
    const auto tick_records = std::ranges::count_if(records, &PlaylistRecord::is_second_kind);
    const bool all_tick = !records.empty() && std::ranges::ssize(records) == tick_records;
    const bool all_sample = !records.empty() && tick_records == 0;

    for (auto& track : tracks) {
        if (track.record) {
            track.tick_based = records[*track.record].is_second_kind;
        } else if (all_tick || all_sample) {
            track.tick_based = all_tick;
            ++tallies.unpaired_tracks;
            tallies.unpaired_are_tick_based = all_tick ? 1 : 0;
        } else {
            track.tick_based = looks_tick_based(track.clips);
            ++(records.empty() ? tallies.judged_without_records : tallies.judged_between_records);
        }
        ++(track.tick_based ? tallies.tick_based_tracks : tallies.sample_based_tracks);
    }
}

void place_in_seconds(TimelineTrack& track, double rate_hz, const TempoClock& clock) {
    for (auto& clip : track.clips) {
        clip.start = track.tick_based ? clock.seconds(ticks_from_origin(clip.stored_position))
                                      : static_cast<double>(clip.stored_position) / rate_hz;
        // The stored position of a clip with a sync point is where the sync point lies.
        if (clip.sync_offset > 0) clip.start -= clip.sync_offset;
        clip.start = std::max(clip.start, 0.0);
    }
    order_by_start(track.clips);
}

}  // namespace tanrove
