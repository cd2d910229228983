// The channel strip on REAPER's own plug-ins: polarity, input trim, EQ, filters, expander or gate,
// compressor, makeup, fader.
#pragma once

#include "standins/channel_strip_settings.hpp"
#include "standins/slot_numbers.hpp"
#include "standins/stand_in_maker.hpp"

namespace tanrove {

/// The slots of a Channel Strip or of Clip Effects. A clip's polarity is the take's and has no
/// slot.
StandIn strip_stand_in(const ChannelStripSettings& strip, const StandInTrack& track,
                       SlotNumbers numbers);

/// `insert` is a Channel Strip with a sound map of its controls.
StandIn make_channel_strip(StandInMaker& maker, const PluginInsert& insert,
                           const StandInTrack& track);

}  // namespace tanrove
