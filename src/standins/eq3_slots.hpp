// EQ3 7-Band and 1-Band on REAPER's EQ: polarity, the fitted sections of all bands, and a filter
// for each first-order part.
#pragma once

#include "plugins/plugin_insert.hpp"
#include "standins/stand_in_maker.hpp"

namespace tanrove {

/// The stand-in of an EQ3 with as many controls as it has: `seven_band_controls` or
/// `one_band_controls`.
StandIn make_eq3(StandInMaker& maker, const PluginInsert& insert, const StandInTrack& track);

}  // namespace tanrove
