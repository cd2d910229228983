// Joins plug-ins with strips by the row that holds them, hardware inserts by the track's name.
#include "run/strip_inserts.hpp"

#include <map>
#include <string_view>

#include "mix/strip_names.hpp"

namespace tanrove {

std::vector<StripInsert> strip_inserts(const std::vector<StripRow>& strips,
                                       const std::vector<PluginInsert>& plugins,
                                       const std::vector<HardwareInsert>& hardware) {
    std::map<std::uint64_t, std::size_t> strip_at;
    std::map<std::string_view, std::size_t> strip_named;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        strip_at.try_emplace(strips[i].start, i);
        strip_named.try_emplace(shown_name(strips[i]), i);
    }
    std::vector<StripInsert> inserts;
    for (const PluginInsert& plugin : plugins) {
        const auto strip = strip_at.find(plugin.hostStart);
        if (plugin.hostEnd == 0 || strip == strip_at.end()) continue;
        inserts.push_back({.strip_row = strip->second,
                           .code = plugin.code,
                           .plays = !plugin.bypassed && !plugin.inactive});
    }
    for (const HardwareInsert& insert : hardware) {
        const auto strip = strip_named.find(insert.track);
        if (strip != strip_named.end()) inserts.push_back({strip->second, {}, true});
    }
    return inserts;
}

}  // namespace tanrove
