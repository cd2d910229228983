// The account's sentences about the automation of tracks and sends. Each function prints what
// stands together in the summary.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/level_tallies.hpp"
#include "project/track_block.hpp"

namespace tanrove {

/// Behind the key inputs, in front of the master fader.
void print_send_points(TextBuffer& out, const WrittenTallies& written);

/// Opens the automation.
void print_automation_points(TextBuffer& out, const WrittenTallies& written);

/// Behind the MIDI edges, in front of the plug-ins' automation.
void print_dual_pan_points(TextBuffer& out, const LevelTallies& tallies);

/// Closes the automation.
void print_modes_and_parked_faders(TextBuffer& out, const LevelTallies& tallies);

/// Among the track properties: behind the MIDI tracks, in front of the patches.
void print_automation_modes(TextBuffer& out, const LevelTallies& tallies);

/// Behind the fades' shapes, in front of the stretched clips.
void print_followed_ramps(TextBuffer& out, const EnvelopeTallies& tallies);

}  // namespace tanrove
