// Whether a track's positions are samples or ticks, and what they are in seconds.
#include "timeline/track_timebase.hpp"

#include <algorithm>
#include <set>
#include <string_view>

#include "base/session_numbers.hpp"

namespace tanrove {

namespace {

// Samples reach this only hours into a session; ticks with their origin always do.
constexpr std::uint64_t most_likely_ticks_above = 1'000'000'000;

// No session has so many samples, and no ticks lie so far in front of their origin.
constexpr std::uint64_t certain_ticks_from = tick_origin / 2;

/// True if the clips of a track can lie where they do in this timebase.
bool agree_with(const std::vector<ClipItem>& clips, bool tick_based) {
    return std::ranges::all_of(clips, [&](const ClipItem& clip) {
        return (clip.stored_position >= certain_ticks_from) == tick_based;
    });
}

bool looks_tick_based(const std::vector<ClipItem>& clips) {
    const auto large = std::ranges::count_if(
        clips, [](const ClipItem& clip) { return clip.stored_position > most_likely_ticks_above; });
    return 2 * static_cast<std::size_t>(large) >= clips.size();
}

/// Counts tracks as Pro Tools shows them: the legs and playlists of one have its name in the list.
class TrackCount {
public:
    void add(const TimelineTrack& track) {
        if (track.listed_name.empty() || names_.insert(track.listed_name).second) ++count_;
    }
    int count() const { return count_; }

private:
    std::set<std::string_view> names_;
    int count_ = 0;
};

/// A clip may begin a hair before the session's origin, as its stored ticks can: that is the
/// origin.
double ticks_from_origin(std::uint64_t stored) {
    return stored > tick_origin ? static_cast<double>(stored - tick_origin) : 0;
}

}  // namespace

void decide_timebases(std::vector<TimelineTrack>& tracks, std::span<const PlaylistRecord> records,
                      TimelineTallies& tallies) {
    const auto tick_records = std::ranges::count_if(records, &PlaylistRecord::in_ticks);
    const bool all_tick = !records.empty() && std::ranges::ssize(records) == tick_records;
    const bool all_sample = !records.empty() && tick_records == 0;

    TrackCount tick_based, sample_based, unpaired, judged;
    for (auto& track : tracks) {
        if (track.record) {
            track.tick_based = records[*track.record].in_ticks;
        } else if ((all_tick || all_sample) && agree_with(track.clips, all_tick)) {
            track.tick_based = all_tick;
            unpaired.add(track);
            tallies.unpaired_are_tick_based = all_tick ? 1 : 0;
        } else {
            track.tick_based = looks_tick_based(track.clips);
            judged.add(track);
        }
        (track.tick_based ? tick_based : sample_based).add(track);
    }
    tallies.tick_based_tracks += tick_based.count();
    tallies.sample_based_tracks += sample_based.count();
    tallies.unpaired_tracks += unpaired.count();
    (records.empty() ? tallies.judged_without_records : tallies.judged_between_records) +=
        judged.count();
}

double stored_seconds(std::uint64_t stored, bool tick_based, double rate_hz,
                      const TempoClock& clock) {
    return tick_based ? clock.seconds(ticks_from_origin(stored))
                      : static_cast<double>(stored) / rate_hz;
}

void place_in_seconds(TimelineTrack& track, double rate_hz, const TempoClock& clock) {
    for (auto& clip : track.clips) {
        clip.start = stored_seconds(clip.stored_position, track.tick_based, rate_hz, clock);
        // The stored position of a clip with a sync point is where the sync point lies.
        if (clip.sync_offset > 0) clip.start -= clip.sync_offset;
        clip.start = std::max(clip.start, 0.0);
    }
    order_by_start(track.clips);
}

}  // namespace tanrove
