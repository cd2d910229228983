// REAPER's EQ as a slot of a chain: its sections as the bytes of its state.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "eqfit/eq_band.hpp"
#include "plugins/fx_slot.hpp"

namespace tanrove {

struct ReaEqSettings {
    std::vector<EqSection> sections;
    double output_gain_db = 0;
    double rate_hz = 48000;  ///< above 0
};

/// `owner` is what it stands for: the slot's title names both.
FxSlot reaeq_slot(const ReaEqSettings& settings, const std::string& owner, std::string preset_name,
                  std::uint32_t guid_seed);

}  // namespace tanrove
