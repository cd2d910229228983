// Hidden and inactive tracks that the run leaves out, and those of them that stay because a written
// track needs them.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "mix/strip_routes.hpp"
#include "mix/track_groups.hpp"
#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"
#include "session/folder_table.hpp"
#include "session/strip_table.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

struct LeaveOutOptions {
    bool skip_hidden_tracks = false;
    bool skip_inactive_tracks = false;
    /// Track names that count as hidden, separated and enclosed by the text's first character.
    std::string hidden_names;
};

struct LeaveOutTallies {
    std::vector<std::string> hidden;    ///< left out
    std::vector<std::string> inactive;  ///< left out; a hidden one as well
    std::vector<std::string> kept;      ///< "Verb (Vox needs it)"
};

/// The names of the tracks that a track needs, by its own name: where its output and sends lead,
/// where its keys come from, the folder it lies in, the VCA masters that it follows.
using TrackNeeds = std::map<std::string, std::vector<std::string>, std::less<>>;

TrackNeeds track_needs(const Routes& routes, const std::vector<StripTableEntry>& strip_table,
                       const std::optional<FolderTable>& folder_table, const TrackGroups& groups);

/// Takes out the tracks that the options name, with the alternate playlists behind them, but none
/// that a written track needs. What no strip row asked for stays.
void leave_out_tracks(std::vector<TrackPlan>& plans, const TrackStrips& strips,
                      const LeaveOutOptions& options, const TrackNeeds& needs,
                      LeaveOutTallies& tallies);

/// The names that tracks of `before` bear and none of `plans`.
TrackNameSet names_left_out(TrackNameSet before, const std::vector<TrackPlan>& plans);

/// Takes the tracks of these names out of the tables, so that the folders close up over them.
/// Without a folder table the folders' own rows stay: they part the tracks in front of them from
/// those behind.
void forget_tracks(const TrackNameSet& names, std::vector<StripTableEntry>& strip_table,
                   std::optional<FolderTable>& folder_table);

}  // namespace tanrove
