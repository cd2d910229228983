// What a session calls plug-ins, beside the inserts themselves.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Display names by the 8-character codes that inserts have. Of two names for one code the first
/// counts.
std::map<std::string, std::string> read_plugin_names(const BlockIndex& index);

/// A type record and its name of 1 to 80 bytes. Sessions without plug-ins list their buses so.
struct PluginTypeName {
    std::size_t position = 0;  ///< of the record's 'Z'
    std::string name;
};

std::vector<PluginTypeName> read_plugin_type_names(const BlockIndex& index);

}  // namespace tanrove
