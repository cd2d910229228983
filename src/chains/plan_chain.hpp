// From the inserts of a track to its chain: what becomes of each, and the slots that REAPER gets.
#pragma once

#include <functional>
#include <string>

#include "base/byte_view.hpp"
#include "chains/chain_tallies.hpp"
#include "chains/parameter_envelopes.hpp"
#include "chains/track_plugins.hpp"
#include "plugins/fx_slot.hpp"
#include "plugins/insert_fate.hpp"
#include "plugins/parameter_names.hpp"
#include "plugins/plugin_identities.hpp"
#include "plugins/translate_settings.hpp"
#include "standins/stand_in_maker.hpp"

namespace tanrove {

/// The user's wishes.
struct ChainOptions {
    FateOptions fate;
    bool offline_bypassed = false;  ///< bypassed plug-ins arrive offline
    bool keep_plugin_midi = false;
    bool kontakt_state = true;
    bool carries_keys = true;
};

/// Hears of every insert that arrives with its settings, and what became of them.
using SettingsListener =
    std::function<void(const PluginInsert&, const PluginTableRow&, const std::string& state)>;

/// What all chains of a run are planned from.
struct ChainSources {
    ByteView image;
    const PluginIdentities& identities;
    const ParameterNames& names;
    LaneTimes times;
    StandInMaker& stand_ins;
    SettingsListener hear_settings = {};
};

/// The chain of a track; of the master the slots that stand on REAPER's.
ChainPlan plan_chain(const ChainTrack& track, const ChainSources& sources,
                     const ChainOptions& options, ChainTallies& tallies);

}  // namespace tanrove
