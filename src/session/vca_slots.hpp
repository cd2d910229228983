// The faders of VCA masters.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "session/strip_rows.hpp"

namespace tanrove {

/// Index of a VCA master's strip row to its value as stored, which is signed and in tenths of a dB.
using VcaSlots = std::map<std::size_t, std::uint32_t>;

/// One entry for each VCA row that has a record; of several records in a row the last counts.
VcaSlots readVcaSlots(const BlockIndex& index, const std::vector<StripRow>& rows);

}  // namespace tanrove
