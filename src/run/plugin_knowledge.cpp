// The files stand beside the program, where REAPER keeps its own, or where the user says.
#include "run/plugin_knowledge.hpp"

#include <utility>

#include "base/paths.hpp"
#include "base/platform.hpp"
#include "base/text_lines.hpp"
#include "base/whole_file.hpp"
#include "plugins/learned_plugins.hpp"
#include "plugins/plugin_names.hpp"
#include "plugins/translate_settings.hpp"
#include "run/console.hpp"
#include "run/output_path.hpp"
#include "run/table_folders.hpp"

namespace tanrove {

namespace {

constexpr const char* parameter_file_names[] = {"tanrove-params.tsv", "tanrove-params-local.tsv"};

/// The text of one of the user's tables; empty if there is none.
std::string table_text(const std::string& folder, const char* name, std::size_t max_bytes) {
    if (folder.empty()) return "";
    return read_text_file(folder + "/" + name, max_bytes).value_or("");
}

RowsByKey load_learned_plugins(const TableFolders& folders) {
    std::string text = table_text(folders.of_program, learned_file_name, max_learned_file_bytes);
    text += '\n';
    text += table_text(folders.of_user, learned_file_name, max_learned_file_bytes);
    LearnedPlugins learned = read_learned_plugins(text);
    if (learned.line_count > 0) {
        console_print("  %d plug-in(s) learned from %s\n\n", learned.line_count, learned_file_name);
    }
    return std::move(learned.rows);
}

/// Adds the table of this file and tells of it. False if it gave no name.
bool add_parameter_file(ParameterNames& names, const std::string& path) {
    const auto text = read_text_file(path, max_parameter_file_bytes);
    const int builds = text ? names.add(*text) : 0;
    if (builds == 0) return false;
    console_print("  plug-in parameter names: %d plug-in build(s) from %s\n", builds, path.c_str());
    return true;
}

ParameterNames load_parameter_names(const RunOptions& options, const TableFolders& folders) {
    ParameterNames names;
    for (const std::string& path : options.params_paths) {
        if (!add_parameter_file(names, path)) {
            console_print("  --params %s: nothing read\n", path.c_str());
        }
    }
    if (options.params_paths.empty()) {
        for (const std::string& folder : {folders.of_program, folders.of_user}) {
            if (folder.empty()) continue;
            for (const char* name : parameter_file_names) {
                add_parameter_file(names, folder + "/" + name);
            }
        }
    }
    names.finish();
    return names;
}

std::string environment_text(const char* variable) {
    return environment_value(variable).value_or("");
}

/// Empty for a path without a folder.
std::string stated_folder_of(const std::string& path) {
    return file_name_of(path) == path ? "" : folder_of(path);
}

std::vector<ScanEntry> load_scan(const RunOptions& options) {
    ScanCache cache = load_scan_cache({.given_path = options.vstini_path,
                                       .session_folder = stated_folder_of(options.session_path),
                                       .program_folder = stated_folder_of(options.program_path),
                                       .appdata = environment_text("APPDATA"),
                                       .home = environment_text("HOME")});
    if (!cache.entries.empty()) {
        console_print("  plug-in cache: %d entries from %s\n",
                      static_cast<int>(cache.entries.size()), cache.path.c_str());
    } else if (!options.vstini_path.empty()) {
        console_print("  could not read plug-in cache: %s\n\n", options.vstini_path.c_str());
    }
    if (options.dump_cache) {
        TextBuffer dump;
        print_scan_cache(dump, cache.entries);
        console_write(dump.text());
    }
    return std::move(cache.entries);
}

}  // namespace

PluginKnowledge load_plugin_knowledge(const RunOptions& options, const BlockIndex& index,
                                      const std::vector<PluginInsert>& inserts) {
    const TableFolders folders = table_folders(options.program_path);
    RowsByKey learned = load_learned_plugins(folders);
    ParameterNames parameter_names = load_parameter_names(options, folders);
    const auto session_names = read_plugin_names(index);
    BuiltInPlugins built_in = built_in_plugins();
    const auto stepped = built_in.stepped;
    const auto translate = [&](const PluginInsert& insert, const PluginTableRow& row) {
        const TranslationInput input = {.keep_plugin_midi = options.keep_plugin_midi,
                                        .kontakt_state = options.kontakt_state,
                                        .stepped = stepped};
        return !translate_settings(insert, row, index.image(), input).state.empty();
    };
    TextBuffer lines;
    PluginIdentities identities({.scan = load_scan(options),
                                 .built_in = std::move(built_in),
                                 .learned = std::move(learned),
                                 .inserts = inserts,
                                 .session_names = session_names,
                                 .prefer_vst3 = options.prefer_vst3,
                                 .prefer_clap = options.prefer_clap,
                                 .settings_translate = translate},
                                lines);
    console_write(lines.text());
    return {std::move(identities), std::move(parameter_names)};
}

void write_want_list(const RunOptions& options, const std::string& project_path,
                     const std::set<std::string>& wanted) {
    const std::string& path = options.want_params_path;
    if (path.empty()) return;
    std::string text;
    for (const std::string& name : wanted) text += name + "\n";
    if (is_same_file(path, options.session_path) || is_same_file(path, project_path) ||
        !write_whole_file(path, text)) {
        console_print("\n  could not write %s\n", path.c_str());
    }
}

}  // namespace tanrove
