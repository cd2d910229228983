// What planning the FX chains counts for the account.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "chains/plugin_outcome.hpp"

namespace tanrove {

/// Automation of plug-ins: lanes, and their points.
struct PluginLaneTallies {
    int points = 0;
    int placed_by_id = 0;    ///< lanes whose parameter the plug-in's own number gives
    int placed_by_name = 0;  ///< lanes whose parameter a table of names gives
    int unassigned = 0;      ///< lanes written switched off: their parameter is a guess
    int on_defaults = 0;     ///< lanes not carried: their plug-in arrives at its defaults
    int of_bypass = 0;       ///< lanes not carried: a bypass
};

struct ChainTallies {
    std::vector<PluginOutcome> outcomes;  ///< of all inserts of written tracks, as they are written
    bool plugin_list_missing = false;     ///< REAPER's own, which tells which of them are here
    int without_strip = 0;                ///< inserts whose strip is not known: in no chain
    int carried_bypassed = 0;
    int inactive_offline = 0;
    int written_offline = 0;              ///< bypassed, and offline on demand
    std::vector<std::string> multi_mono;  ///< "track / plug-in": unlinked, written once
    int master_slots = 0;
    std::vector<std::string> midi_switched_off;  ///< "track / plug-in"
    std::set<std::string> wanted_parameters;     ///< plug-ins with lanes that no table names
    PluginLaneTallies lanes;
};

}  // namespace tanrove
