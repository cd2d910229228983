// The one answer to "which plug-in of REAPER is this": built once a run, before anything is
// planned, from what REAPER has found, what we know by heart, what the user has taught us, and the
// session's plug-ins. Everything behind looks a plug-in up by its insert key.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "plugins/match_plugins.hpp"

namespace tanrove {

/// True if the settings of this plug-in can be re-framed for the build of this row.
using SettingsTrial = std::function<bool(const PluginInsert&, const PluginTableRow&)>;

struct IdentityInput {
    std::vector<ScanEntry> scan;
    BuiltInPlugins built_in;
    RowsByKey learned;
    const std::vector<PluginInsert>& inserts;
    const NamesByCode& session_names;
    bool prefer_vst3 = true;
    bool prefer_clap = false;
    SettingsTrial settings_translate;  ///< empty: none can be
};

class PluginIdentities {
public:
    /// A line for each plug-in that was found goes to `out`.
    PluginIdentities(IdentityInput input, TextBuffer& out);

    /// The row for an insert key; null where nothing is known. A row without an ident names the
    /// product and no build of it.
    const PluginTableRow* row_for(std::string_view key) const;

    /// True if REAPER has the plug-in of this row's ident, or if no list tells.
    bool is_installed(std::string_view ident) const { return scan_.is_installed(ident); }

    /// True if a list of REAPER's was found.
    bool knows_what_is_installed() const { return !scan_.empty(); }

    const BuiltInPlugins& built_in() const { return built_in_; }
    const IdentityFindings& findings() const { return findings_; }

private:
    PluginIdentities(IdentityInput input, const InstancesByKey& instances, TextBuffer& out);
    /// The row for a key that no row was found for.
    const PluginTableRow* known_row(std::string_view key) const;
    void prefer_claps(const IdentityInput& input, const InstancesByKey& instances, TextBuffer& out);

    ScanIndex scan_;
    BuiltInPlugins built_in_;
    RowsByKey learned_;
    RowsByKey found_;
    RowsByKey claps_;
    IdentityFindings findings_;
};

}  // namespace tanrove
