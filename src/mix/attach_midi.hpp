// Gives the MIDI and instrument tracks what they play.
#pragma once

#include <span>
#include <vector>

#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"
#include "mix/track_tallies.hpp"
#include "session/midi_track_settings.hpp"
#include "session/real_time_properties.hpp"
#include "session/strip_rows.hpp"
#include "timeline/lay_out_midi.hpp"
#include "timeline/real_time_midi.hpp"

namespace tanrove {

/// What MIDI tracks play and what the session says of them. `settings` and `real_time` run in step
/// with the strip rows.
struct MidiMixInput {
    std::vector<MidiTrack> tracks;
    std::vector<MidiTrackSettings> settings;
    std::vector<RealTimeProperties> real_time;
};

/// Moves the items of each track to its plan, their real-time properties worked in. A track is
/// found by its name, or by its place among the rows that play MIDI where they are as many. Items
/// without a plan of their own get one behind all others.
void attach_midi(std::vector<TrackPlan>& plans, MidiMixInput midi, std::span<const StripRow> rows,
                 TrackTallies& track_tallies, MidiTallies& tallies);

/// Counts the MIDI tracks that arrive muted or with their mute automated, and those that send their
/// fader or a patch. To be called when it is settled which tracks are written.
void count_midi_tracks(const std::vector<TrackPlan>& plans, const TrackStrips& strips,
                       MidiTallies& tallies);

}  // namespace tanrove
