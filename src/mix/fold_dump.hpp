// The debug text of how the strip table's rows became tracks.
#pragma once

#include <string>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/strip_table.hpp"

namespace tanrove {

/// One line a row of the strip table, then one a track.
std::string fold_text(const std::vector<StripTableEntry>& strip_table,
                      const std::vector<TrackPlan>& plans);

}  // namespace tanrove
