// From the inserts of a track to its chain: what becomes of each, and the slots that REAPER gets.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/byte_view.hpp"
#include "chains/chain_tallies.hpp"
#include "chains/parameter_envelopes.hpp"
#include "plugins/fx_slot.hpp"
#include "plugins/insert_fate.hpp"
#include "plugins/parameter_names.hpp"
#include "plugins/plugin_identities.hpp"
#include "plugins/translate_settings.hpp"

namespace tanrove {

/// The user's wishes.
struct ChainOptions {
    FateOptions fate;
    bool offline_bypassed = false;  ///< bypassed plug-ins arrive offline
    bool keep_plugin_midi = false;
    bool kontakt_state = true;
};

/// One insert of the track.
struct ChainInsert {
    const PluginInsert* insert = nullptr;  ///< never null
    int place = 1;                         ///< on its strip, from 1
    /// The first of the two channels of its key, from 0; nullopt where none is wired.
    std::optional<int> key_channel = {};
};

struct ChainTrack {
    std::string name;  ///< as Pro Tools shows it
    std::vector<ChainInsert> inserts = {};
    int width = 2;  ///< channels; 2 where they are not known
    bool has_midi = false;
    bool is_master = false;
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
    SettingsListener hear_settings = {};
};

/// The chain of a track; of the master the slots that stand on REAPER's.
ChainPlan plan_chain(const ChainTrack& track, const ChainSources& sources,
                     const ChainOptions& options, ChainTallies& tallies);

}  // namespace tanrove
