// The project's edit grid.
#pragma once

#include <optional>

#include "session/grid_and_nudge.hpp"
#include "session/meter_map.hpp"

namespace tanrove {

struct EditGrid {
    std::optional<double> quarter_notes;    ///< nullopt: REAPER keeps its own grid
    std::optional<GridSetting> other_unit;  ///< a grid that counts no bars: it is not written
    std::optional<GridSetting> nudge;       ///< what the session has and the project cannot hold
};

/// The session's grid under its first meter.
EditGrid plan_grid(const std::optional<GridAndNudge>& stored, const MeterPoint& first_meter);

}  // namespace tanrove
