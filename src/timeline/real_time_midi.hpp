// The real-time properties of a track, worked into the notes it plays: REAPER has none.
#pragma once

#include <vector>

#include "session/real_time_properties.hpp"
#include "timeline/midi_item.hpp"
#include "timeline/midi_tallies.hpp"

namespace tanrove {

/// Transposes, scales and delays the events of a track's items as its switches tell. A note past
/// the MIDI range is written at its end, muted. Quantize and duration are not applied.
void apply_real_time_properties(const RealTimeProperties& properties, std::vector<MidiItem>& items,
                                MidiTallies& tallies);

}  // namespace tanrove
