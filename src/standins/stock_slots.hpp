// Slots that hold one of REAPER's own VST plug-ins.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "plugins/fx_slot.hpp"

namespace tanrove {

/// What REAPER knows one of its plug-ins by. Of each pin the channels that it is connected to.
struct StockPlugin {
    std::string_view name;
    std::string_view short_name;
    std::string_view file;
    std::string_view ident;
    std::uint32_t id = 0;
    std::vector<std::uint64_t> pins_in;
    std::vector<std::uint64_t> pins_out;
    bool is_own_chunk = true;  ///< its state is not REAPER's list of parameters
};

/// The plug-in with this state, under the title "owner (plug-in)".
FxSlot stock_slot(const StockPlugin& plugin, std::string state, const std::string& owner,
                  std::string preset_name, std::uint32_t guid_seed);

}  // namespace tanrove
