// The project's tempo envelope: the session's tempo map and its meter changes on one line of time.
#pragma once

#include "project/meter_changes.hpp"
#include "project/tempo_envelope_point.hpp"
#include "project/tempo_ramps.hpp"
#include "session/tempo_map.hpp"

namespace tanrove {

/// What the session says about its tempo.
struct SessionTempo {
    TempoMap map = {};                 ///< empty where one tempo holds throughout
    double bpm = default_tempo_bpm;    ///< where there is no map
    bool first_point_refused = false;  ///< the map's first stored tempo lies outside the range
    TempoBreak breaks_off = {};        ///< where the stored map stops being one
};

struct TempoTallies {
    int changes = 0;  ///< events of the map at which the tempo changes
    bool first_point_refused = false;
    TempoBreak breaks_off = {};
    double bpm = default_tempo_bpm;       ///< the session's tempo where it has no map
    double last_bpm = default_tempo_bpm;  ///< the tempo that holds at the end
    double last_seconds = 0;              ///< where it begins
    bool ramps_wanted = false;            ///< --tempo-ramps is on
    RampTallies ramps = {};
};

/// Empty where the project's own tempo and meter say it all: one tempo and no change of meter.
/// `clock` is the one of this tempo. With `tempo_ramps`, runs of steps become ramps.
TempoEnvelope plan_tempo_envelope(const SessionTempo& tempo, const TempoClock& clock,
                                  const MeterChanges& meters, bool tempo_ramps,
                                  TempoTallies& tallies);

}  // namespace tanrove
