// The run over all plug-ins of a session: for each, the rules are asked once, and what they find
// becomes the row that everything behind goes by. A build is taken only where the settings in the
// session can go there.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/formatted_text.hpp"
#include "plugins/built_in_plugins.hpp"
#include "plugins/plugin_insert.hpp"
#include "plugins/plugin_names.hpp"
#include "plugins/scan_index.hpp"

namespace tanrove {

/// All instances of one plug-in in the session.
struct KeyInstances {
    std::string key;
    std::size_t first_insert = 0;  ///< the one whose block stands first
    int count = 0;
    bool keyed = false;            ///< one of them has its key input in use
    bool fits_both_builds = true;  ///< the settings of all can go to a VST2 as well as to a VST3
};

/// In the order of the keys, each once.
using InstancesByKey = std::vector<KeyInstances>;

InstancesByKey instances_by_key(const std::vector<PluginInsert>& inserts);

/// A plug-in that stays on its VST3 against the user's wish.
struct KeptBuild {
    std::string display_name;
    int instances = 0;
};

/// The Kontakt that stands in for the version that the session was made with.
struct KontaktBuild {
    std::string name;
    int instances = 0;
    bool predicted = false;  ///< written as version 7 takes it, of which nothing is measured
};

/// What the account tells of the builds that were chosen.
struct IdentityFindings {
    std::map<std::string, KeptBuild> kept_on_vst3;  ///< by insert key
    std::set<std::string> without_class;  ///< keys named from a VST3 whose class the scan lacks
    std::set<std::string> moved_to_vst2;  ///< keys that left their VST3 row
    std::optional<KontaktBuild> kontakt;
    std::set<std::string> moved_to_clap;
    std::set<std::string> kept_from_clap;  ///< keys whose settings the CLAP build cannot take
};

struct MatchInput {
    const ScanIndex& scan;
    const BuiltInPlugins& built_in;
    const RowsByKey& learned;
    const InstancesByKey& instances;
    const NamesByCode& session_names;
    bool prefer_vst3 = true;
};

/// One row a plug-in that was found, in place of the built-in one where there is one. A line for
/// each goes to `out`. Without any list nothing is matched and nothing said.
RowsByKey match_plugins(const MatchInput& input, IdentityFindings& findings, TextBuffer& out);

}  // namespace tanrove
