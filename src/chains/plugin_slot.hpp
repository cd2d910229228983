// A plug-in of the session as the slot of REAPER's build, and a placeholder for one that has none.
#pragma once

#include <optional>
#include <string>

#include "plugins/fx_slot.hpp"
#include "plugins/plugin_insert.hpp"
#include "plugins/plugin_table_row.hpp"

namespace tanrove {

/// The channels that a plug-in is connected to.
struct SlotPins {
    int track_width = 2;  ///< channels; 2 where it is not known
    /// The channel of its key input, from 0; nullopt where none is wired.
    std::optional<int> key_channel;
};

/// The build of `row` with this state; an empty one arrives offline, at its defaults.
FxSlot plugin_slot(const PluginInsert& insert, const PluginTableRow& row, std::string state,
                   const SlotPins& pins);

/// A slot under the plug-in's own name that REAPER shows as missing.
FxSlot aax_only_slot(const PluginInsert& insert, const std::string& display_name, int track_width);

}  // namespace tanrove
