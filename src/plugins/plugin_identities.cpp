// Rows by where they come from. A row that was found stands in front of the built-in one, which it
// was made to replace.
#include "plugins/plugin_identities.hpp"

#include <utility>

#include "plugins/identity_rules.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

constexpr std::string_view clap_kind = "CLAP";

/// Everything that the rules will ask REAPER's list for.
AskedWords asked_words(const IdentityInput& input, const InstancesByKey& instances) {
    AskedWords asked;
    asked.codes.reserve(2 * instances.size());
    asked.names.reserve(input.session_names.size() + input.built_in.rows.size());
    for (const KeyInstances& of_key : instances) add_asked_by_key(asked, of_key.key);
    for (const auto& [code, name] : input.session_names) add_asked_by_name(asked, name);
    for (const auto& [key, row] : input.built_in.rows) add_asked_by_name(asked, row.productName);
    return asked;
}

}  // namespace

PluginIdentities::PluginIdentities(IdentityInput input, TextBuffer& out)
    : PluginIdentities(std::move(input), instances_by_key(input.inserts), out) {}

PluginIdentities::PluginIdentities(IdentityInput input, const InstancesByKey& instances,
                                   TextBuffer& out)
    : scan_(std::move(input.scan), asked_words(input, instances)),
      built_in_(std::move(input.built_in)),
      learned_(std::move(input.learned)) {
    found_ = match_plugins({.scan = scan_,
                            .built_in = built_in_,
                            .learned = learned_,
                            .instances = instances,
                            .session_names = input.session_names,
                            .prefer_vst3 = input.prefer_vst3},
                           findings_, out);
    if (input.prefer_clap) prefer_claps(input, instances, out);
}

const PluginTableRow* PluginIdentities::row_for(std::string_view key) const {
    if (const auto* row = row_in(claps_, key)) return row;
    if (const auto* row = row_in(found_, key)) return row;
    return known_row(key);
}

const PluginTableRow* PluginIdentities::known_row(std::string_view key) const {
    const PluginTableRow* built_in = row_in(built_in_.rows, key);
    if (has_build(built_in)) return built_in;
    if (const auto* row = row_in(learned_, key)) return row;
    return built_in;
}

// A CLAP build is worth nothing without the settings.
void PluginIdentities::prefer_claps(const IdentityInput& input, const InstancesByKey& instances,
                                    TextBuffer& out) {
    // Keys and the rows that were found come in one order.
    auto found = found_.begin();
    for (const KeyInstances& of_key : instances) {
        const std::string& key = of_key.key;
        while (found != found_.end() && found->first < key) ++found;
        const bool is_found = found != found_.end() && found->first == key;
        const PluginTableRow* row = is_found ? &found->second : known_row(key);
        if (!has_build(row) || row->fxName.starts_with(clap_kind)) continue;
        const auto place = scan_.clap_for(behind_kind(row->fxName), file_stem(row->file));
        if (!place) continue;
        ReaperName name = reaper_name(scan_.entries()[*place]);
        PluginTableRow clap = *row;
        clap.fxName = std::move(name.fx_name);
        clap.ident = std::move(name.ident);
        const PluginInsert& first = input.inserts[of_key.first_insert];
        if (input.settings_translate && input.settings_translate(first, clap)) {
            out.print("    %s -> %-46s [--prefer-clap]\n", key.c_str(), clap.fxName.c_str());
            findings_.moved_to_clap.insert(findings_.moved_to_clap.end(), key);
            claps_.emplace_hint(claps_.end(), key, std::move(clap));
        } else {
            out.print("    %s stays on %s: its settings cannot be carried to the CLAP build yet\n",
                      key.c_str(), row->fxName.c_str());
            findings_.kept_from_clap.insert(findings_.kept_from_clap.end(), key);
        }
    }
}

}  // namespace tanrove
