// The account's sentences about the master fader. Each function prints what stands together in the
// summary.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/master_fader.hpp"

namespace tanrove {

/// Behind the plug-ins that were bypassed, in front of those that were inactive.
void print_master_order(TextBuffer& out, const MasterTallies& tallies);

/// Behind the sends' automation, the last of the strips' section.
void print_master_place(TextBuffer& out, const MasterTallies& tallies);

/// Behind the groups.
void print_further_masters(TextBuffer& out, const MasterTallies& tallies);

}  // namespace tanrove
