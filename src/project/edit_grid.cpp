// The edit grid's length in quarter notes.
#include "project/edit_grid.hpp"

namespace tanrove {

EditGrid plan_grid(const std::optional<GridAndNudge>& stored, const MeterPoint& first_meter) {
    if (!stored) return {};
    EditGrid grid;
    grid.nudge = stored->nudge;
    if (stored->grid.unit != CountUnit::bars) {
        grid.other_unit = stored->grid;
    } else {
        grid.quarter_notes =
            grid_quarter_notes(stored->grid, first_meter.numerator, first_meter.denominator);
    }
    return grid;
}

}  // namespace tanrove
