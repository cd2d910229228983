// What a chain teaches is the plug-in's names and its pins. Whether its settings can be carried
// depends on how it keeps them, and the user is told which of the two it is.
#include "run/learn_plugin.hpp"

#include <optional>

#include "base/paths.hpp"
#include "base/platform.hpp"
#include "base/text_lines.hpp"
#include "base/whole_file.hpp"
#include "plugins/identity_rules.hpp"
#include "plugins/learned_plugins.hpp"
#include "run/console.hpp"
#include "run/table_folders.hpp"

namespace tanrove {

namespace {

constexpr std::int32_t learned = 0;
constexpr std::int32_t not_learned = 1;

/// False, with the reason told, if the chain names no plug-in that can be taught.
bool tell_faults(const ReadChain& chain, const std::string& path) {
    const ChainPlugin& plugin = chain.plugin;
    if (chain.fault == ChainFault::no_plugin) {
        console_print("  %s does not look like an .RfxChain\n", path.c_str());
        return false;
    }
    if (chain.fault == ChainFault::unreadable_line) {
        console_print("  could not read the <VST line\n");
        return false;
    }
    if (!plugin.is_clap && !is_settings_magic(plugin.magic)) {
        console_print("  header magic is %08X, expected FEED5EEE/FEED5EEF - is this one plug-in?\n",
                      plugin.magic);
        return false;
    }
    return true;
}

void tell_plugin(const ChainPlugin& plugin, const std::string& path) {
    if (!plugin.is_clap && !plugin.header) {
        console_print(
            "    pins     could not be read from this header variant (%08X,\n"
            "             %u bytes) - written as stereo 2 in / 2 out. If this\n"
            "             plug-in then loads with wrong routing, send this\n"
            "             .RfxChain file.\n",
            plugin.magic, static_cast<unsigned>(plugin.state_bytes));
    }
    console_print("\n  learned from %s\n", path.c_str());
    console_print("    display  %s\n    file     %s\n    ident    %s\n", plugin.fx_name.c_str(),
                  plugin.file.c_str(), plugin.ident.c_str());
    if (!plugin.header) return;
    const SettingsHeader& header = *plugin.header;
    console_print("    pins     %u in, %u out    tail word %u    chunk %u bytes\n", header.pins_in,
                  header.pins_out, header.tail_word, header.settings_bytes);
}

void tell_what_transfers(const ChainPlugin& plugin) {
    console_print(
        "  The IDENTITY is now known: this plug-in will be inserted in the\n"
        "  right slot, in the right order, with its bypass state.\n");
    if (plugin.is_clap) {
        console_print(
            "  How a CLAP keeps its state is not known to this build, so SETTINGS\n"
            "  will not transfer: it goes in offline and labeled.\n");
    } else if (plugin.header && plugin.header->is_fabfilter_state) {
        console_print(
            "  Its REAPER state uses a container this build can write, so its\n"
            "  Pro Tools SETTINGS will transfer too, not just the identity.\n");
    } else {
        console_print(
            "  Its REAPER state does NOT use a container this build can synthesise,\n"
            "  so SETTINGS will not transfer: it goes in offline and labeled\n"
            "  rather than loading with values that would silently be wrong.\n");
    }
}

/// Puts the line behind those that the table has. A table that cannot be read whole stays as it is.
bool append_line(const std::string& table, const std::string& line) {
    std::string text;
    if (std::filesystem::exists(status_of(table))) {
        const auto lines = read_text_file(table, max_learned_file_bytes);
        if (!lines || lines->size() == max_learned_file_bytes) return false;
        text = *lines;
    }
    if (!text.empty() && text.back() != '\n') text += '\n';
    return write_whole_file(table, text + line);
}

std::string table_in(const std::string& folder) {
    return folder + "/" + learned_file_name;
}

/// Makes the user's own folder if it has to. False if there is none.
bool append_to_users_table(const std::string& folder, const std::string& line) {
    if (folder.empty()) return false;
    std::error_code error;
    std::filesystem::create_directories(native_path(folder), error);
    return append_line(table_in(folder), line);
}

/// A user who has a table of their own keeps to it, since what stands there counts as the later
/// lesson.
bool has_own_table(const TableFolders& folders) {
    return !folders.of_user.empty() && is_regular_file(table_in(folders.of_user));
}

/// The table that took the line: the one beside the program, unless nothing can be written there.
/// Nullopt: neither took it.
std::optional<std::string> append_to_tables(const TableFolders& folders, const std::string& line) {
    const std::string beside_program = table_in(folders.of_program);
    if (!has_own_table(folders) && append_line(beside_program, line)) return beside_program;
    if (append_to_users_table(folders.of_user, line)) return table_in(folders.of_user);
    return std::nullopt;
}

}  // namespace

std::int32_t learn_plugin(const std::string& program_path, const std::string& chain_path,
                          const std::string& signature) {
    if (signature.size() < code_characters) {
        console_print("  the AAX signature must have at least 8 characters\n");
        return not_learned;
    }
    const auto text = read_text_file(chain_path, max_chain_file_bytes);
    if (!text) {
        console_print("  cannot open %s\n", chain_path.c_str());
        return not_learned;
    }
    const ReadChain chain = read_chain(*text);
    if (!tell_faults(chain, chain_path)) return not_learned;
    tell_plugin(chain.plugin, chain_path);
    const TableFolders folders = table_folders(program_path);
    const auto table = append_to_tables(folders, learned_line(signature, chain.plugin));
    if (!table) {
        const bool keeps_own = has_own_table(folders);
        const std::string& folder = keeps_own ? folders.of_user : folders.of_program;
        console_print("  cannot write %s\n", table_in(folder).c_str());
        return not_learned;
    }
    console_print("\n  appended to %s\n", table->c_str());
    tell_what_transfers(chain.plugin);
    return learned;
}

}  // namespace tanrove
