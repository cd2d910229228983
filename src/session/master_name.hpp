// The name of the session's master fader.
#pragma once

#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// The first master fader's name; empty where there is none, or none that can be read.
std::string readMasterName(const BlockIndex& index);

}  // namespace tanrove
