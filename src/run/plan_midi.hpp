// The MIDI of a conversion: from its records to what the mix gives its tracks.
#pragma once

#include "mix/attach_midi.hpp"
#include "run/run_options.hpp"
#include "run/session_records.hpp"

namespace tanrove {

/// The items of the MIDI and instrument tracks, with what the mix needs to attach them.
MidiMixInput plan_midi(MidiRecords midi, const ClipRecords& clips, const TimeRecords& time,
                       double rate_hz, const RunOptions& options, MidiTallies& tallies);

}  // namespace tanrove
