// The account's sentences about mix, edit and VCA groups. Each function prints what stands together
// in the summary; what lies between them is other groups' to print.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/track_groups.hpp"

namespace tanrove {

/// Behind the pan law and the clip colors, in front of the track properties.
void print_groups(TextBuffer& out, const GroupTallies& tallies);

/// Directly behind the folders.
void print_unlinked_attributes(TextBuffer& out, const GroupTallies& tallies);

/// Behind grid and video, in front of the hardware inserts.
void print_groups_left_alone(TextBuffer& out, const GroupTallies& tallies);

}  // namespace tanrove
