// The folders of the project: where each opens, and where each closes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/folder_table.hpp"
#include "session/strip_table.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

struct FolderTallies {
    int routing_written = 0;
    int basic_written = 0;
    int empty = 0;
    int all_members_moved_out = 0;  ///< plain tracks now
    std::vector<std::string> not_written;
    int nested = 0;                           ///< of the written ones
    std::vector<std::string> folders_moved;   ///< Basic folders: "A out of B"
    std::vector<std::string> tracks_moved;    ///< other rows, likewise
    std::vector<std::string> could_not_move;  ///< "A (in B)"
    int by_order = 0;                         ///< 1: the folder table was of no use
    int maybe_nested = 0;                     ///< folders that the order alone cannot place

    int folders() const {
        return routing_written + basic_written + empty + all_members_moved_out +
               static_cast<int>(not_written.size());
    }
};

struct FolderInput {
    std::vector<StripTableEntry> strip_table;
    std::optional<FolderTable> folder_table;
    /// Tracks that do not play to their parent: they may stay in a Routing folder.
    TrackNameSet without_main_send;
    TrackNameSet silent;  ///< those of them that play no sound at all
};

/// Fills `folder`, `is_basic_folder` and a Basic folder's `pan_mode` of the plans, whose order
/// stays: from the folder table where the order of the plans agrees with it, else from the order of
/// the strip table. The depths close at the last plan, and no plan opens more than one folder.
void plan_folders(std::vector<TrackPlan>& plans, const FolderInput& input, FolderTallies& tallies);

}  // namespace tanrove
