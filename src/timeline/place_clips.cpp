// The timeline's first half, step by step: collect, pair, decide the timebase, turn into seconds,
// match to rows, reduce what is stacked.
#include "timeline/place_clips.hpp"

#include <algorithm>

#include "timeline/collect_clips.hpp"
#include "timeline/row_matching.hpp"
#include "timeline/stacked_clips.hpp"
#include "timeline/track_pairing.hpp"
#include "timeline/track_timebase.hpp"

namespace tanrove {

namespace {

/// Gives each track its record, and the name that the record holds: it is the current one, where
/// the track list may still hold the name from the track's creation.
void pair_tracks(CollectedTracks& collected, const TimelineInput& input) {
    std::vector<PairingTrack> tracks;
    tracks.reserve(collected.tracks.size());
    for (std::size_t i = 0; i < collected.tracks.size(); ++i) {
        const TimelineTrack& track = collected.tracks[i];
        tracks.push_back({track.name, collected.placement_counts[i], track.playlist});
    }
    const auto records = pair_with_records(tracks, input);
    for (std::size_t i = 0; i < collected.tracks.size(); ++i) {
        TimelineTrack& track = collected.tracks[i];
        track.record = records[i];
        if (track.record && !input.records[*track.record].name.empty()) {
            track.name = input.records[*track.record].name;
        }
    }
}

void settle_rows(TimelineTrack& track, const TimelineInput& input, TimelineTallies& tallies) {
    if (track.record && edit_lists_match_records(input)) {
        match_rows(track, input.edit_lists[*track.record], input.fades, input.keep_fade_clips,
                   tallies);
    }
    const bool all_have_rows = std::ranges::all_of(track.clips, [](const ClipItem& clip) {
        return clip.edit_row >= 0 || clip.is_fade_reference;
    });
    track.row_ordered = all_have_rows && !track.clips.empty();
    if (all_have_rows) return;
    reduce_stacked_clips(track);
    tallies.stacked_placements += static_cast<int>(track.ghost_clips.size());
}

}  // namespace

std::vector<TimelineTrack> place_clips(const TimelineInput& input, TimelineTallies& tallies) {
    CollectedTracks collected = collect_clips(input, tallies);
    pair_tracks(collected, input);
    decide_timebases(collected.tracks, input.records, tallies);

    const TempoClock clock(input.tempo_map, input.default_tempo);
    for (auto& track : collected.tracks) {
        place_in_seconds(track, input.rate_hz, clock);
        settle_rows(track, input, tallies);
        tallies.sync_points += static_cast<int>(std::ranges::count_if(
            track.clips, [](const ClipItem& clip) { return clip.sync_offset > 0; }));
    }
    return std::move(collected.tracks);
}

}  // namespace tanrove
