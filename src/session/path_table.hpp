// The session's own path table: its buses, and the outputs that its tracks play to.
#pragma once

#include <optional>
#include <vector>

#include "session/io_paths.hpp"

namespace tanrove {

/// The own paths in their order; nullopt where the session has no such table, or one record of it
/// breaks its layout.
std::optional<std::vector<IoPath>> read_path_table(const BlockIndex& index);

}  // namespace tanrove
