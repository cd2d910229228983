// Slots that hold one of REAPER's own JS plug-ins.
#pragma once

#include <cstdint>
#include <string>

#include "plugins/fx_slot.hpp"

namespace tanrove {

/// A JS plug-in with these values of its first sliders, blanks between them; the line is filled up
/// to the number of fields that REAPER writes.
FxSlot js_slot(std::string path, std::string title, std::string values, std::uint32_t guid_seed);

/// Both channels turned over, under the title "owner polarity (Channel Polarity Control)".
FxSlot polarity_slot(const std::string& owner, std::string preset_name, std::uint32_t guid_seed);

/// REAPER's Volume Adjustment at this gain in dB.
FxSlot volume_adjustment(std::string title, double gain_db, std::uint32_t guid_seed);

}  // namespace tanrove
