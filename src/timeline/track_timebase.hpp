// Whether a track's positions are samples or ticks, and what they are in seconds.
#pragma once

#include <cstdint>
#include <vector>

#include "session/tempo_map.hpp"
#include "timeline/timeline_input.hpp"
#include "timeline/timeline_tallies.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

/// Sets `tick_based` of every track: its record's word; without one of its own the word on which
/// all records agree; failing that, the size of its positions.
void decide_timebases(std::vector<TimelineTrack>& tracks, std::span<const PlaylistRecord> records,
                      TimelineTallies& tallies);

/// The place on the timeline of a stored position, on a track of this timebase.
double stored_seconds(std::uint64_t stored, bool tick_based, double rate_hz,
                      const TempoClock& clock);

/// Turns the stored positions of a track's clips into starts in seconds, moves clips to where
/// their sync points put them, and orders the clips. A start is never below 0.
void place_in_seconds(TimelineTrack& track, double rate_hz, const TempoClock& clock);

}  // namespace tanrove
