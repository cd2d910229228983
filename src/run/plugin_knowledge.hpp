// All that a run knows of plug-ins beside the session itself: what the user has taught, tables of
// parameter names, what REAPER has found on this machine, and which of that stands in for each
// plug-in of the session.
#pragma once

#include <set>
#include <string>

#include "plugins/parameter_names.hpp"
#include "plugins/plugin_identities.hpp"
#include "run/run_options.hpp"
#include "session/block_index.hpp"

namespace tanrove {

struct PluginKnowledge {
    PluginIdentities identities;
    ParameterNames parameter_names;
};

/// Reads the files and gives the console a line for each that tells something. None of them has to
/// be there.
PluginKnowledge load_plugin_knowledge(const RunOptions& options, const BlockIndex& index,
                                      const std::vector<PluginInsert>& inserts);

/// Writes the plug-ins whose parameters no table names, if that was asked for. Never over the
/// session or the project.
void write_want_list(const RunOptions& options, const std::string& project_path,
                     const std::set<std::string>& wanted);

}  // namespace tanrove
