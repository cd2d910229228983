// One entry an insert, plug-ins in front.
#include "run/strip_inserts.hpp"

namespace tanrove {

std::vector<StripInsert> strip_inserts(const std::vector<PluginInsert>& plugins,
                                       std::span<const std::optional<std::size_t>> rows,
                                       const std::vector<HardwareInsert>& hardware) {
    std::vector<StripInsert> inserts;
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        if (!rows[i]) continue;
        inserts.push_back({.strip_row = *rows[i],
                           .code = plugins[i].code,
                           .plays = !plugins[i].bypassed && !plugins[i].inactive});
    }
    for (const HardwareInsert& insert : hardware) {
        if (insert.strip_row) inserts.push_back({*insert.strip_row, {}, true});
    }
    return inserts;
}

}  // namespace tanrove
