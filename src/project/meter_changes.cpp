// Tells changes of meter from repetitions: Pro Tools also stores an event where the user set the
// meter that was in force already.
#include "project/meter_changes.hpp"

namespace tanrove {

MeterChanges meter_changes(std::span<const MeterPoint> meters) {
    MeterChanges found;
    if (meters.empty()) return found;

    found.has_map = true;
    found.first = meters.front();
    const MeterPoint* in_force = &meters.front();
    for (const MeterPoint& meter : meters.subspan(1)) {
        const bool same =
            meter.numerator == in_force->numerator && meter.denominator == in_force->denominator;
        (same ? found.repeated : found.changes).push_back(meter);
        if (!same) in_force = &meter;
    }
    return found;
}

}  // namespace tanrove
