// The name of the session's master fader, for those who look into a session (tools/session_dump):
// the program takes it from the strip itself (`master_strip`).
#pragma once

#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// The first master fader's name; empty where there is none, or none that can be read.
std::string readMasterName(const BlockIndex& index);

}  // namespace tanrove
