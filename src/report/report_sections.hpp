// The sections of the report that have a file of their own.
#pragma once

#include "base/formatted_text.hpp"
#include "report/run_tallies.hpp"

namespace tanrove {

/// Every instance under its track with its tag and its reason. Nothing without plug-ins.
void print_every_plugin(TextBuffer& out, const ChainTallies& chains,
                        const std::vector<TrackFacts>& tracks);

/// All plug-ins by name, and what REAPER needs of them.
void print_plugin_names(TextBuffer& out, const ChainTallies& chains);

/// What a person should look at; returns how many items were printed.
/// `console_warnings`: how many the account has; the reader is pointed to those not in the list.
int print_needs_look(TextBuffer& out, const RunTallies& tallies, int console_warnings);

/// Picture, and tracks wider than stereo. Nothing where there are none.
void print_picture_and_wide_tracks(TextBuffer& out, const RunTallies& tallies);

}  // namespace tanrove
