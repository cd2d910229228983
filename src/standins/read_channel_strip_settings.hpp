// The settings of a Channel Strip and of Clip Effects by the names of their controls: the first are
// stored in real units, the second as shares of each control's throw.
#pragma once

#include <map>
#include <string>

#include "session/clip_effects.hpp"
#include "standins/channel_strip_settings.hpp"

namespace tanrove {

/// The values of a Channel Strip, by control.
ChannelStripSettings read_channel_strip(const std::map<std::string, double>& controls);

ChannelStripSettings read_clip_effects(const ClipEffectsRecord& record);

/// True if a control other than the phase switch stands elsewhere than in new Clip Effects.
bool changes_sound(const ClipEffectsRecord& record);

/// True if the phase switch is on.
bool inverts_clip(const ClipEffectsRecord& record);

}  // namespace tanrove
