// The session's tempo: its map of tempo events, its default tempo, and ticks into seconds and back.
#pragma once

#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

constexpr double default_tempo_bpm = 120.0;

struct TempoPoint {
    double tick = 0;                 ///< from the session's origin
    double bpm = default_tempo_bpm;  ///< quarter notes a minute
};

/// Points in order of time. A session with exactly one tempo has no map.
using TempoMap = std::vector<TempoPoint>;

/// Where a stored tempo map stops being one.
struct TempoBreak {
    int event = 0;   ///< the first event that breaks a limit, from 1; 0 where all were read
    int stored = 0;  ///< events of the map
};

/// What the tempo records say, before one point is told from a map.
struct TempoRecords {
    TempoMap points;
    bool first_point_refused = false;  ///< the first stored tempo lies outside the range
    TempoBreak breaks_off = {};        ///< elsewhere, or for another reason
};

/// The points of the last tempo map that the session stores, up to the first that breaks a limit.
TempoRecords readTempoMap(const BlockIndex& index);

/// The tempo of a session without a map; `default_tempo_bpm` where none is stored.
double readDefaultTempo(const BlockIndex& index);

/// Ticks into seconds from the origin, for many lookups: built once in the length of the map, asked
/// in its logarithm. Every time in the program comes from here, so that one tick has one time.
class TempoClock {
public:
    /// With an empty map `default_bpm`, above 0, counts throughout. The stretch in front of the
    /// first point counts at the first point's tempo.
    TempoClock(const TempoMap& map, double default_bpm);

    double seconds(double ticks) const;

    /// The ticks that take so many seconds from the origin.
    double ticks(double seconds) const;

    /// The tempo in force at a moment.
    double bpm_at(double seconds) const;

    /// The moment of the first change of tempo behind a moment; infinity where none follows.
    double next_change(double seconds) const;

private:
    struct Stretch {
        double start_ticks = 0;
        double start_seconds = 0;
        double bpm = default_tempo_bpm;

        double seconds(double ticks) const;
    };

    std::vector<Stretch>::const_iterator first_behind(double seconds) const;
    const Stretch& stretch_at(double seconds) const { return *(first_behind(seconds) - 1); }

    std::vector<Stretch> stretches_;  ///< never empty; the first begins at the origin
};

/// One lookup with `TempoClock`, for users of the library who have no more to ask.
double ticksToSeconds(const TempoMap& map, double ticks, double default_bpm);

}  // namespace tanrove
