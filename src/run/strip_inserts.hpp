// What stands in the insert slots of each strip.
#pragma once

#include <vector>

#include "mix/strip_insert.hpp"
#include "plugins/plugin_insert.hpp"
#include "session/hardware_inserts.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// The plug-ins and the hardware inserts whose strips are known.
std::vector<StripInsert> strip_inserts(const std::vector<StripRow>& strips,
                                       const std::vector<PluginInsert>& plugins,
                                       const std::vector<HardwareInsert>& hardware);

}  // namespace tanrove
