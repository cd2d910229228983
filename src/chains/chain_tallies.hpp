// What planning the FX chains counts for the account.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "chains/plugin_outcome.hpp"
#include "eqfit/fit_eq_band.hpp"

namespace tanrove {

/// Automation of plug-ins: lanes, and their points.
struct PluginLaneTallies {
    int points = 0;
    int placed_by_id = 0;    ///< lanes whose parameter the plug-in's own number gives
    int placed_by_name = 0;  ///< lanes whose parameter a table of names gives
    int unassigned = 0;      ///< lanes written switched off: their parameter is a guess
    int on_defaults = 0;     ///< lanes not carried: their plug-in arrives at its defaults
    int on_stand_ins = 0;    ///< lanes not carried: REAPER's own plug-ins keep the saved value
    int of_bypass = 0;       ///< lanes not carried: a bypass
};

/// Avid's Trim: gain in a slot, polarity on the track.
struct TrimTallies {
    int instances = 0;
    int gains_carried = 0;
    std::vector<std::string> below_measured;  ///< "track: gain"
    int different_gains = 0;                  ///< of their channels: the first one's is carried
    int on_wide_tracks = 0;                   ///< whose gain is not carried
    int inverted_tracks = 0;
    std::vector<std::string> cancelled;   ///< tracks that two or more Trims leave upright
    std::vector<std::string> mixed_wide;  ///< tracks wider than stereo, not all channels inverted
    int one_sided = 0;                    ///< tracks with a slot that inverts one side
    int one_sided_declined = 0;           ///< tracks that play both sides upright, as asked
    int switched_off = 0;                 ///< inverting Trims that do not play
    int without_switch = 0;               ///< strips that have none in REAPER: the master
};

/// Avid's own plug-ins on REAPER's.
struct StandInTallies {
    bool none_wanted = false;
    int declined = 0;                  ///< plug-ins that have one, as the user wants none
    int written = 0;                   ///< plug-ins, Trim apart
    std::map<std::string, int> notes;  ///< "plug-in: what differs", and on how many
    EqFitTallies eq_fits;
    int one_pole_filters = 0;  ///< beside REAPER's EQ
};

/// Clip Effects; items count, not clips of the list.
struct ClipEffectsTallies {
    int inverted = 0;                  ///< by the polarity of their take
    int carried = 0;                   ///< as take FX
    std::map<std::string, int> parts;  ///< of `carried`: "EQ", "compressor"
    std::map<std::string, int> notes;  ///< what is approximated or left out, and on how many
    int of_groups = 0;                 ///< clip groups with Clip Effects of their own, not carried
};

struct ChainTallies {
    std::vector<PluginOutcome> outcomes;  ///< of all inserts of written tracks, as they are written
    int outcomes_on_master = 0;           ///< of `outcomes`: the first ones
    std::vector<int> outcomes_a_track;    ///< of the others: those of each written track
    bool plugin_list_missing = false;     ///< REAPER's own, which tells which of them are here
    int without_strip = 0;                ///< inserts whose strip is not known: in no chain
    int carried_bypassed = 0;
    int inactive_offline = 0;
    int written_offline = 0;              ///< bypassed, and offline on demand
    std::vector<std::string> multi_mono;  ///< "track / plug-in": unlinked, written once
    int master_slots = 0;
    int master_keys = 0;                         ///< keyed plug-ins on it, which no key reaches
    std::vector<std::string> midi_switched_off;  ///< "track / plug-in"
    std::vector<std::string> misled_claps;       ///< likewise: keyed, and hear another key
    std::set<std::string> wanted_parameters;     ///< plug-ins with lanes that no table names
    PluginLaneTallies lanes;
    TrimTallies trims;
    StandInTallies stand_ins;
};

}  // namespace tanrove
