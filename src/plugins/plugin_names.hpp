// What a session calls plug-ins, beside the inserts themselves.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Codes with display names, in the order of the codes, each once.
using NamesByCode = std::vector<std::pair<std::string, std::string>>;

/// Display names by the 8-character codes that inserts have. Of two names for one code the first
/// counts.
NamesByCode read_plugin_names(const BlockIndex& index);

}  // namespace tanrove
