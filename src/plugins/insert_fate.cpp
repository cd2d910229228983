// The questions in their order: the user's wishes, the build that REAPER has, REAPER's own plug-ins
// in its place, and what can be said of a plug-in that has neither.
#include "plugins/insert_fate.hpp"

#include <algorithm>

#include "plugins/elck_chunks.hpp"
#include "plugins/identity_rules.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

bool has_build(const FateFacts& facts) {
    return facts.row != nullptr && !facts.row->ident.empty();
}

const AaxOnlyPlugin* aax_only_plugin(std::string_view key, const BuiltInPlugins& built_in) {
    const auto row = std::ranges::find(built_in.aax_only, key, &AaxOnlyPlugin::code);
    return row == built_in.aax_only.end() ? nullptr : &*row;
}

/// Why the build that we know arrives without settings.
std::string_view reason_without_settings(const FateFacts& facts) {
    const PluginInsert& insert = facts.insert;
    if (facts.row->fxName.starts_with("CLAP") && insert.containerKind != ContainerKind::none) {
        return "tried: its settings ARE in the session, but how the CLAP build of this plug-in "
               "stores them is not measured yet. In REAPER, put the plug-in on a track, "
               "right-click the FX chain, Save chain as .RfxChain, and send that file with this "
               "report: one export is all it takes";
    }
    if (insert.elckSize != 0 || insert.how == elck_how) {
        return "tried: its settings ARE in the session, but how this build of the plug-in takes "
               "them is not known yet, and a wrong guess loads wrong settings silently - so "
               "nothing was guessed. Worth telling us about";
    }
    if (insert.containerKind == ContainerKind::control_values) {
        return "tried: Pro Tools stored only its control values, in a layout not yet known for "
               "this plug-in's REAPER build";
    }
    return "Pro Tools stored no transferable settings for it";
}

std::string_view reason_not_recognized(const PluginInsert& insert) {
    if (insert.containerKind == ContainerKind::preset_tree) {
        return "REAPER has not scanned this Waves plug-in - rescan plug-ins in REAPER and convert "
               "again";
    }
    return "not recognized - we have not matched this one to a REAPER plug-in yet";
}

void decide_with_build(InsertFate& fate, const FateFacts& facts, const FateOptions& options) {
    if (!facts.installed && options.leave_out_missing) {
        fate.kind = OutcomeKind::left_out_not_installed;
        fate.reason = "not installed for REAPER here - left out";
    } else if (facts.settings_translate) {
        fate.kind = OutcomeKind::carried;
    } else {
        fate.kind = options.placeholders ? OutcomeKind::without_settings
                                         : OutcomeKind::left_out_without_settings;
        fate.reason = reason_without_settings(facts);
    }
}

void decide_without_build(InsertFate& fate, const FateFacts& facts, const FateOptions& options,
                          const BuiltInPlugins& built_in) {
    const std::string key = insert_key(facts.insert);
    fate.stand_in_declined = facts.has_stand_in && !options.stand_ins;
    if (key.starts_with("DigiTrim") && facts.trim_is_carried) {
        fate.kind = OutcomeKind::carried;
        fate.is_stand_in = true;
        fate.reason = "gain carried as REAPER's Volume Adjustment (JS), in the same slot";
    } else if (facts.has_stand_in && options.stand_ins) {
        fate.kind = OutcomeKind::carried;
        fate.is_stand_in = true;
        fate.reason = "stand-in: REAPER's own plug-ins with the same settings";
    } else if (is_stock(key) || aax_only_plugin(key, built_in) != nullptr) {
        fate.kind = OutcomeKind::aax_only;
        fate.reason = "AAX only - no VST/VST3 version exists";
    } else {
        fate.kind = OutcomeKind::not_recognized;
        fate.reason = reason_not_recognized(facts.insert);
    }
}

std::string display_name(const FateFacts& facts) {
    if (facts.row != nullptr) return facts.row->productName;
    const PluginInsert& insert = facts.insert;
    const bool is_waves = insert.containerKind == ContainerKind::preset_tree;
    return is_waves && !insert.pluginName.empty() ? "Waves " + insert.pluginName : insert.code;
}

std::string_view format_of(const std::string& fx_name) {
    if (fx_name.starts_with("VST3")) return "vst3";
    if (fx_name.starts_with("CLAP")) return "clap";
    if (fx_name.starts_with("JS")) return "reaper";
    return "vst2";
}

std::string maker_name(const FateFacts& facts) {
    if (facts.row != nullptr && facts.row->named_by_user) return "";
    if (facts.row != nullptr) return std::string(maker_of(facts.row->fxName));
    return is_stock(insert_key(facts.insert)) ? "Avid" : "";
}

}  // namespace

InsertFate decide_fate(const FateFacts& facts, const FateOptions& options,
                       const BuiltInPlugins& built_in) {
    InsertFate fate;
    fate.display_name = display_name(facts);
    fate.maker = maker_name(facts);
    const PluginInsert& insert = facts.insert;
    if (options.leave_out_unheard && (insert.bypassed || insert.inactive)) {
        fate.kind = OutcomeKind::left_out_unheard;
        fate.reason = insert.inactive ? "was inactive in Pro Tools" : "was bypassed in Pro Tools";
        return fate;
    }
    if (has_build(facts)) {
        decide_with_build(fate, facts, options);
    } else {
        decide_without_build(fate, facts, options, built_in);
    }
    const bool has_plugin =
        fate.kind == OutcomeKind::carried || fate.kind == OutcomeKind::without_settings;
    fate.takes_slot = has_plugin || (fate.kind == OutcomeKind::aax_only && options.aax_slots);
    if (has_plugin) fate.format = fate.is_stand_in ? "reaper" : format_of(facts.row->fxName);
    return fate;
}

bool passes_no_sound(std::string_view key, const BuiltInPlugins& built_in) {
    const AaxOnlyPlugin* plugin = aax_only_plugin(key, built_in);
    return plugin != nullptr && plugin->passes_no_sound;
}

std::string aax_only_description(std::string_view key, const BuiltInPlugins& built_in) {
    if (const AaxOnlyPlugin* plugin = aax_only_plugin(key, built_in)) return plugin->description;
    return is_stock(key) ? "an Avid stock processor" : "";
}

}  // namespace tanrove
