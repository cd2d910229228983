// The account's sentences about plug-ins: what became of them, their automation, the builds that
// stand in for them.
#pragma once

#include "base/formatted_text.hpp"
#include "chains/chain_tallies.hpp"
#include "plugins/match_plugins.hpp"

namespace tanrove {

void print_bypassed_plugins(TextBuffer& out, const ChainTallies& tallies);
void print_offline_plugins(TextBuffer& out, const ChainTallies& tallies);
void print_misled_keys(TextBuffer& out, const ChainTallies& tallies);
void print_midi_triggers(TextBuffer& out, const ChainTallies& tallies);
void print_plugin_automation(TextBuffer& out, const ChainTallies& tallies);

void print_clip_effects(TextBuffer& out, const ClipEffectsTallies& tallies);

/// The plug-ins of Pro Tools' own that REAPER's play for, and what these cannot do.
void print_stand_ins(TextBuffer& out, const StandInTallies& tallies);

/// What the user's wish for none of them leaves in Pro Tools-only slots.
void print_stand_in_options(TextBuffer& out, const ChainTallies& tallies);

/// The builds that the run chose against, or beside, the user's wish.
void print_plugin_builds(TextBuffer& out, const IdentityFindings& findings);
void print_clap_builds(TextBuffer& out, const IdentityFindings& findings);

/// How many plug-ins arrive as they were, and what became of the others.
void print_plugins(TextBuffer& out, const ChainTallies& tallies, const IdentityFindings& findings);

}  // namespace tanrove
