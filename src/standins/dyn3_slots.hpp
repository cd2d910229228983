// Dyn3 Compressor/Limiter and Expander/Gate on REAPER's compressor, gate and Downward Expander. The
// scales between them were measured against Pro Tools.
#pragma once

#include "plugins/plugin_insert.hpp"
#include "standins/stand_in_maker.hpp"

namespace tanrove {

constexpr std::size_t compressor_controls = 14;
constexpr std::size_t gate_controls = 15;

/// `insert` has `compressor_controls` control values.
StandIn make_dyn3_compressor(StandInMaker& maker, const PluginInsert& insert,
                             const StandInTrack& track);

/// `insert` has `gate_controls` control values.
StandIn make_dyn3_gate(StandInMaker& maker, const PluginInsert& insert, const StandInTrack& track);

}  // namespace tanrove
