// REAPER's lists of plug-ins, read from any text, and looked up for any codes.
#include "fuzz/promise.hpp"
#include "plugins/plugin_identities.hpp"

namespace {

using namespace tanrove;

/// Plug-ins whose codes are the text itself, eight characters and twelve in turn.
std::vector<PluginInsert> inserts_in(std::string_view text) {
    constexpr std::size_t most = 64;
    std::vector<PluginInsert> inserts;
    for (std::size_t at = 0; inserts.size() < most && at + 12 <= text.size(); at += 5) {
        PluginInsert insert;
        insert.code = text.substr(at, 8);
        if (at % 2 == 1) {
            insert.containerKind = ContainerKind::preset_tree;
            insert.pluginSubComp = text.substr(at + 8, 4);
        }
        inserts.push_back(insert);
    }
    return inserts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(input_view(data, size).text(0, size).value_or(""));
    auto entries = read_vst_list(text);
    for (const ScanEntry& entry : entries) promise(entry.id != 0, "a VST has a number");
    for (ScanEntry& entry : read_clap_list(text)) entries.push_back(std::move(entry));
    promise(entries.size() <= size, "an entry takes some bytes");
    const auto inserts = inserts_in(text);
    std::map<std::string, std::string> names;
    for (const ScanEntry& entry : entries) {
        promise(!entry.name.empty(), "entries have names");
        promise(entry.isClap != entry.clapId.empty(), "a CLAP has an id of its own");
        if (names.size() < inserts.size()) names[inserts[names.size()].code] = entry.shortName;
    }
    const NamesByCode session_names(names.begin(), names.end());
    const auto scan = entries;
    TextBuffer lines;
    const PluginIdentities identities({.scan = std::move(entries),
                                       .built_in = built_in_plugins(),
                                       .learned = {},
                                       .inserts = inserts,
                                       .session_names = session_names,
                                       .prefer_vst3 = size % 2 == 0,
                                       .prefer_clap = size % 3 == 0,
                                       .settings_translate = {}},
                                      lines);
    for (const ScanEntry& entry : scan) {
        promise(identities.is_installed(reaper_name(entry).ident), "what was found is installed");
    }
    for (const PluginInsert& insert : inserts) {
        const PluginTableRow* row = identities.row_for(insert_key(insert));
        if (row == nullptr || row->code == kontakt_code) continue;
        promise(identities.is_installed(row->ident), "what was matched is installed");
    }
    return 0;
}
