// Avid Trim: a gain and a polarity switch a channel. The gain arrives as REAPER's Volume Adjustment
// in the same slot.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/byte_view.hpp"
#include "plugins/plugin_insert.hpp"
#include "standins/stand_in_maker.hpp"

namespace tanrove {

/// What a Trim does to one channel.
struct TrimChannel {
    std::int32_t gain_word = 0;
    bool inverted = false;
};

struct TrimGain {
    double db = 0;
    bool below_measured = false;  ///< lower than what was measured, and reckoned on from there
};

bool is_trim(const PluginInsert& insert);

/// The channels of a Trim, as many as its settings hold; none where these cannot be read.
std::vector<TrimChannel> read_trim(const PluginInsert& insert, ByteView image);

/// Record k is channel k's, and the last stands for all behind it; `channels` is not empty.
const TrimChannel& trim_channel(const std::vector<TrimChannel>& channels, std::size_t channel);

/// The gain that a channel's word stands for.
TrimGain trim_gain(std::int32_t gain_word);

/// True for a Trim whose gain a slot can have: REAPER's adjusts two channels at most.
bool carries_trim_gain(const PluginInsert& insert, ByteView image, const StandInTrack& track);

/// The gain of the track's first channel, in the Trim's own slot.
StandIn make_trim(StandInMaker& maker, const PluginInsert& insert, const StandInTrack& track);

}  // namespace tanrove
