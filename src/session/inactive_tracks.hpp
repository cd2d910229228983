// The tracks that make no sound where they stand: made inactive, or with their voice switched off.
#pragma once

#include <functional>
#include <set>
#include <span>
#include <string>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

using TrackNameSet = std::set<std::string, std::less<>>;

/// Tracks that the strip table marks as inactive. The rows whose `active` is false are inactive as
/// well; sessions of the short table forms mark them there alone.
TrackNameSet readInactiveNames(const BlockIndex& index);

/// Tracks whose voice is off: the current name of each of their rows, which ascend as
/// `readStripRows` gives them, and the original one where no row bears it as its current name.
TrackNameSet readVoiceOffNames(const BlockIndex& index, std::span<const StripRow> rows);

}  // namespace tanrove
