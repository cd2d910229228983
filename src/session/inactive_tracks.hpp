// The tracks that make no sound where they stand: made inactive, or with their voice switched off.
#pragma once

#include <span>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

/// Tracks that the strip table marks as inactive. The rows whose `active` is false are inactive as
/// well; sessions of the short table forms mark them there alone.
TrackNameSet readInactiveNames(const BlockIndex& index);

/// Tracks whose voice is off: the current name of each of their rows, which ascend as
/// `readStripRows` gives them, and the original one where no row bears it as its current name.
TrackNameSet readVoiceOffNames(const BlockIndex& index, std::span<const StripRow> rows);

}  // namespace tanrove
