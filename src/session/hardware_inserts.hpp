// Hardware inserts: outboard gear in a track's chain, which no project can carry.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

struct HardwareInsert {
    std::string name;   ///< "<unnamed>" if unreadable
    std::string track;  ///< "<unknown track>" if it stands in no row
    std::optional<std::size_t> strip_row;
};

/// All hardware inserts, in order of position.
std::vector<HardwareInsert> readHardwareInserts(const BlockIndex& index,
                                                const std::vector<StripRow>& rows);

}  // namespace tanrove
