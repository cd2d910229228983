// Tells changes of meter from repetitions: Pro Tools also stores an event where the user set the
// meter that was in force already.
#include "project/meter_changes.hpp"

namespace tanrove {

namespace {

/// Farthest that a session's first bar lies from bar 1; a number beyond is no bar's.
constexpr int max_measure_offset = 100000;

int measure_offset(const MeterPoint& first) {
    const bool is_bar = first.tick <= 0 && first.bar >= 1 - max_measure_offset &&
                        first.bar <= 1 + max_measure_offset;
    return is_bar ? first.bar - 1 : 0;
}

}  // namespace

MeterChanges meter_changes(std::span<const MeterPoint> meters) {
    MeterChanges found;
    if (meters.empty()) return found;

    found.has_map = true;
    found.first = meters.front();
    found.measure_offset = measure_offset(found.first);
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
