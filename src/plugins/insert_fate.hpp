// What becomes of one inserted plug-in, and why, in the words of the report. Decided before a line
// of its chain is written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "plugins/built_in_plugins.hpp"
#include "plugins/plugin_insert.hpp"

namespace tanrove {

/// The numbers are those of the report.
enum class OutcomeKind : std::int32_t {
    carried = 0,  ///< with its settings, or as a stand-in
    without_settings = 1,
    aax_only = 2,
    not_recognized = 3,
    left_out_unheard = 4,           ///< it was bypassed or inactive
    left_out_without_settings = 5,  ///< on demand
    left_out_not_installed = 6,     ///< on demand
};

/// What is known of the plug-in when its fate is decided.
struct FateFacts {
    const PluginInsert& insert;
    const PluginTableRow* row = nullptr;  ///< null: nothing is known
    bool installed = true;
    bool settings_translate = false;  ///< into the row's build
    bool trim_is_carried = false;     ///< its gain becomes a plug-in of REAPER's
    bool has_stand_in = false;        ///< REAPER's own plug-ins can sound like it
};

/// The user's wishes.
struct FateOptions {
    bool leave_out_unheard = false;
    bool leave_out_missing = false;
    bool placeholders = true;
    bool stand_ins = true;
    bool aax_slots = true;
};

struct InsertFate {
    OutcomeKind kind = OutcomeKind::not_recognized;
    std::string_view reason;  ///< empty for a plug-in that arrives as it was
    bool takes_slot = false;  ///< in the chain that is written
    bool is_stand_in = false;
    bool stand_in_declined = false;  ///< there is one, and the user wants none
    std::string_view format = "none";
    std::string display_name;
    std::string maker;
};

/// The reason of a stand-in whose detector listens to the plug-in's key.
constexpr std::string_view keyed_stand_in_reason =
    "stand-in: REAPER's own plug-ins with the same settings, keyed from the key input";

InsertFate decide_fate(const FateFacts& facts, const FateOptions& options,
                       const BuiltInPlugins& built_in);

/// True for a plug-in without which the mix is the same.
bool passes_no_sound(std::string_view key, const BuiltInPlugins& built_in);

/// What a plug-in that exists for Pro Tools only is, for the report's list; empty for all others.
std::string aax_only_description(std::string_view key, const BuiltInPlugins& built_in);

}  // namespace tanrove
