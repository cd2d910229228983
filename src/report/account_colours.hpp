// The account's sentences about the colours of tracks and clips, in the groups of the console.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/colour_tallies.hpp"

namespace tanrove {

/// Clips that have a colour, or would have one if the run wanted colours.
int coloured_clips(const ColourTallies& tallies);

/// The options that switch colours off.
void print_colour_options(TextBuffer& out, const ColourTallies& tallies);

/// Tracks with a colour of their own, and without any.
void print_track_colours(TextBuffer& out, const ColourTallies& tallies);

/// What the session's codings gave, and what they left.
void print_colour_coding(TextBuffer& out, const ColourTallies& tallies);

/// Clips with a colour of their own, and the theme.
void print_clip_colours(TextBuffer& out, const ColourTallies& tallies);

/// MIDI clips in the clip list's colour, shades and rows that were not measured.
void print_unmeasured_colours(TextBuffer& out, const ColourTallies& tallies);

}  // namespace tanrove
