// The chains of all tracks that are written: joins the inserts with the tracks of their strips.
#pragma once

#include "base/byte_view.hpp"
#include "plugins/parameter_names.hpp"
#include "plugins/plugin_identities.hpp"
#include "report/run_tallies.hpp"
#include "run/plan_project.hpp"
#include "run/run_options.hpp"
#include "run/session_records.hpp"

namespace tanrove {

struct ChainRecords {
    ByteView image;
    const StripRecords& strips;
    const TimeRecords& time;
    const PluginIdentities& identities;
    const ParameterNames& parameter_names;
};

/// Gives the project a chain for each of its tracks, in step with them, and the master its own;
/// and the tracks the polarity that their plug-ins give them.
void plan_chains(ProjectPlan& project, const RunOptions& options, const ChainRecords& records,
                 ChainTallies& tallies);

}  // namespace tanrove
