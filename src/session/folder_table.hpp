// The folder table: which folder tracks there are, and which tracks lie in them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Identity of a folder to the identities of its members, in the session's order. The identities
/// are those of the strip table.
using FolderTable = std::map<std::uint64_t, std::vector<std::uint64_t>>;

/// The table, empty where the session says that it has no folders. nullopt where there is no table
/// or where one of its entries breaks the layout: half a table would put tracks into the wrong
/// folder, so the caller gets none and can say so.
std::optional<FolderTable> readFolderTable(const BlockIndex& index);

}  // namespace tanrove
