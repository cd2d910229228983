// Tracks that do nothing but play Pro Tools' click, and whether the project has one.
#pragma once

#include <string>
#include <vector>

#include "mix/strip_insert.hpp"
#include "mix/track_plan.hpp"
#include "session/routing.hpp"
#include "session/strip_rows.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

struct ClickInput {
    std::vector<StripInsert> inserts;
    bool click_is_on = false;  ///< the session's own switch
    bool no_click = false;     ///< the run leaves Click tracks out
};

struct ClickTallies {
    std::vector<std::string> left_out;
    std::vector<std::string> kept_whole;  ///< hold a Click II and something else
    std::string player;                   ///< the track that plays the click; empty for none
};

/// Takes the Click tracks out where the run says so: those whose strip holds Click II and nothing
/// else, and empty ones of their usual names. `folders` names the tracks that others lie in; they
/// are no Click tracks, whatever they are called.
void leave_out_click_tracks(std::vector<TrackPlan>& plans, const std::vector<StripRow>& rows,
                            const std::vector<RoutingRow>& routing, const TrackNameSet& folders,
                            const ClickInput& input, ClickTallies& tallies);

}  // namespace tanrove
