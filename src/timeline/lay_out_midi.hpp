// The timeline's road for MIDI: from the session's MIDI records to the items of each track.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "timeline/midi_events.hpp"
#include "timeline/midi_item.hpp"
#include "timeline/place_midi_clips.hpp"

namespace tanrove {

/// A MIDI or instrument track with what it plays.
struct MidiTrack {
    std::string name;
    std::optional<bool> tick_based;  ///< nullopt where the session does not tell
    std::vector<MidiItem> items;     ///< ordered by where they were placed
};

/// One entry a track of `placing`, in their order. `material.rate_hz` is that of `placing`.
std::vector<MidiTrack> lay_out_midi(const MidiPlacingInput& placing, const MidiMaterial& material,
                                    const TempoClock& clock, const MidiEventOptions& options,
                                    MidiTallies& tallies);

}  // namespace tanrove
