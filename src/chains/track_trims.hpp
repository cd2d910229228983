// What the Trims of a track do besides the gain in their slots: the track's polarity, and the words
// for what REAPER's track cannot do.
#pragma once

#include <vector>

#include "base/byte_view.hpp"
#include "chains/chain_tallies.hpp"
#include "chains/track_plugins.hpp"
#include "plugins/fx_slot.hpp"

namespace tanrove {

/// Counts what of a Trim's gain is in its slot, or cannot be.
void count_trim_gain(const TrackPlugin& plugin, const ChainTrack& track, ByteView image,
                     TrimTallies& tallies);

/// Gives the chain, whose slots are all there, its polarity: on the track's switch, or in a slot in
/// front of all others.
void add_trim_polarity(ChainPlan& chain, const ChainTrack& track,
                       const std::vector<TrackPlugin>& plugins, ByteView image, bool stand_ins,
                       ChainTallies& tallies);

}  // namespace tanrove
