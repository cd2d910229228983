// Drawn tempo ramps. Pro Tools stores a ramp as a run of many small steps of equal length, in beats
// or in seconds; with
// --tempo-ramps such a run becomes a few points joined by straight lines, which can be reshaped.
#pragma once

#include "project/tempo_envelope_point.hpp"

namespace tanrove {

struct RampTallies {
    int written = 0;                         ///< runs that became ramps
    int left_as_steps = 0;                   ///< runs that no ramp within bounds could follow
    double greatest_difference_seconds = 0;  ///< at any of the session's tempo events
};

/// The same map with its runs of steps as ramps. Each ramp plays the beats that its steps played,
/// so that everything behind it stands where it stood. `steps` holds held tempos above 0 in order
/// of time; an envelope without such a run comes back unchanged.
TempoEnvelope ramps_from_steps(const TempoEnvelope& steps, RampTallies& tallies);

}  // namespace tanrove
