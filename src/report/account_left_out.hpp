// The account's sentences about tracks that were left out, or kept although they were to go. Each
// function prints what stands together in the summary.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/click_tracks.hpp"
#include "mix/leave_out.hpp"

namespace tanrove {

/// Behind the tracks without an output, in front of what the sends are like.
void print_click_player(TextBuffer& out, const ClickTallies& tallies);

/// Behind the empty tracks, in front of those that matched no strip.
void print_left_out_tracks(TextBuffer& out, const ClickTallies& clicks,
                           const LeaveOutTallies& tallies);

}  // namespace tanrove
