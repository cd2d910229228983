// Sessions that hold something of every record family, in any size: what the fuzzing seeds, the
// tests of damage and the benchmarks run on.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "support/session_builder.hpp"

namespace tanrove::builder {

/// How much of everything. Other lists grow with these: a MIDI track for every tenth track, a
/// marker and a tempo for every tenth clip.
struct RichSize {
    std::size_t audio_tracks = 3;
    std::size_t clips_per_track = 8;
    std::size_t points_per_lane = 3;
    std::size_t regions_per_track = 60;  ///< clips behind them play these again; 65535 in all
};

SessionBuilder rich_session(const RichSize& size);

/// One family and its neighbours, small enough for a fuzzing seed.
struct NamedSession {
    std::string name;
    SessionBuilder session;
};

/// A small session for each family.
std::vector<NamedSession> family_sessions();

}  // namespace tanrove::builder
