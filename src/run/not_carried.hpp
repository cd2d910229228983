// What a session holds and what a run was asked for that this build does not give yet: counted and
// said, never left out in silence. Each subject leaves this file when it arrives.
#pragma once

#include "report/account_not_carried.hpp"
#include "run/run_options.hpp"
#include "run/session_records.hpp"

namespace tanrove {

/// Counts the subjects that no stage carries.
NotCarriedTallies count_not_carried(const BlockIndex& index, const ClipRecords& clips);

/// True where clips of the session have edits that Melodyne keeps beside it.
bool has_melodyne_edits(const std::string& session_folder);

}  // namespace tanrove
