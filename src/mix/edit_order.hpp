// Puts the tracks in the order of the edit window, which is the order of the strip rows.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "mix/strip_names.hpp"
#include "mix/strip_widths.hpp"
#include "mix/track_plan.hpp"
#include "session/strip_rows.hpp"
#include "session/strip_table.hpp"

namespace tanrove {

struct OrderedPlans {
    std::vector<TrackPlan> placed;
    std::vector<TrackPlan> unplaced;  ///< no row asked for them; in their old order
};

/// Walks the rows from top to bottom: each takes its plan with the legs and playlists directly
/// behind it, or a new empty one. Master faders and video tracks take none; VCA masters are given
/// an empty one at their fader where `vca_fader_db` knows them by name.
OrderedPlans order_by_strips(std::vector<TrackPlan> plans, const StripRows& strips,
                             const StripNames& names, const StripWidths& widths,
                             const std::map<std::string, double>& vca_fader_db);

/// Adds an empty stereo plan for each folder of the strip table that no plan is named after, in
/// front of the plan that follows it in the table.
std::vector<TrackPlan> with_folder_plans(std::vector<TrackPlan> plans,
                                         const std::vector<StripTableEntry>& strip_table);

}  // namespace tanrove
