// The pan laws: gains as REAPER stores them for these settings, which are not 10^(dB/20).
#include "project/pan_law.hpp"

namespace tanrove {

namespace {

constexpr PanLaw laws[] = {
    {1, true, -2.5, 0.7499805491, 3, 0.9},
    {2, true, -3.0, 0.7071312007, 0, 0.0},
    {3, true, -4.5, 0.5956621435, 0, 0.6},
    {4, true, -6.0, 0.4999769697, 2, 0.6},
};

}  // namespace

PanLaw pan_law(std::optional<int> pan_depth) {
    const int stored = pan_depth.value_or(-1);
    for (const PanLaw& law : laws) {
        if (law.stored == stored) return law;
    }
    return {.stored = stored};
}

}  // namespace tanrove
