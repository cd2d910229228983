// The automation of a plug-in's controls as envelopes of the parameters that REAPER's build has for
// them. A lane names a control; which parameter that is must be known, or the lane is written
// switched off: one that drives the wrong knob would be worse than none.
#pragma once

#include <string_view>
#include <vector>

#include "chains/chain_tallies.hpp"
#include "plugins/fx_slot.hpp"
#include "plugins/parameter_names.hpp"
#include "plugins/plugin_insert.hpp"
#include "plugins/plugin_table_row.hpp"
#include "session/tempo_map.hpp"

namespace tanrove {

struct LaneTimes {
    const TempoClock& clock;
    double rate_hz = 48000;  ///< above 0
};

/// The envelopes of an insert whose settings were carried, in the order of its lanes.
std::vector<FxEnvelope> parameter_envelopes(const PluginInsert& insert, const PluginTableRow& row,
                                            std::string_view display_name,
                                            const ParameterNames& names, const LaneTimes& times,
                                            ChainTallies& tallies);

/// Lanes of the insert that would move something.
int lanes_with_points(const PluginInsert& insert);

/// All points of these envelopes as they are written.
int written_points(const std::vector<FxEnvelope>& envelopes);

}  // namespace tanrove
