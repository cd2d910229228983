// What stands in the insert slots of each strip.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "mix/strip_insert.hpp"
#include "plugins/plugin_insert.hpp"
#include "session/hardware_inserts.hpp"

namespace tanrove {

/// The plug-ins and the hardware inserts whose strips are known; `rows` are those of the plug-ins.
std::vector<StripInsert> strip_inserts(const std::vector<PluginInsert>& plugins,
                                       std::span<const std::optional<std::size_t>> rows,
                                       const std::vector<HardwareInsert>& hardware);

}  // namespace tanrove
