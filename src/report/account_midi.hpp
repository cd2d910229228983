// The account's sentences about MIDI. Each function prints what stands together in the summary.
#pragma once

#include "base/formatted_text.hpp"
#include "timeline/midi_tallies.hpp"

namespace tanrove {

/// Behind the counts of tracks, clips and notes.
void print_midi_content(TextBuffer& out, const MidiTallies& tallies);

/// Among the strips: behind the sends of muted tracks, in front of the tracks without an output.
void print_midi_mutes(TextBuffer& out, const MidiTallies& tallies);

/// Behind the automation points, in front of the dual-pan points.
void print_midi_edges(TextBuffer& out, const MidiTallies& tallies);

/// Among the track properties: behind the tracks that are solo safe.
void print_midi_faders(TextBuffer& out, const MidiTallies& tallies);

/// Among the track properties: behind the automation modes, in front of the unmatched alternates.
void print_midi_patches(TextBuffer& out, const MidiTallies& tallies);

/// Behind the item timebase.
void print_real_time_properties(TextBuffer& out, const MidiTallies& tallies);

/// Behind the edit grid.
void print_sample_based_midi(TextBuffer& out, const MidiTallies& tallies);

/// Behind the timebases, in front of the clip groups of audio tracks.
void print_midi_clip_groups(TextBuffer& out, const MidiTallies& tallies);

}  // namespace tanrove
