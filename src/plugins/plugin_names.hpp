// What a session calls plug-ins, beside the inserts themselves.
#pragma once

#include <map>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// Display names by the 8-character codes that inserts have. Of two names for one code the first
/// counts.
std::map<std::string, std::string> read_plugin_names(const BlockIndex& index);

}  // namespace tanrove
