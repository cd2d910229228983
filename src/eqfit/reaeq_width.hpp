// The width by which REAPER's EQ knows a section: octaves of a bell or pass filter, a shape of its
// own for a shelf.
#pragma once

#include "eqfit/eq_band.hpp"

namespace tanrove {

/// The greatest width that a fit may give a section.
constexpr double greatest_fit_width = 4;

/// The width of a section. `rate_hz` is above 0.
double reaeq_width(const EqSection& section, double rate_hz);

/// The Q at which a shelf or bell of this frequency and gain has the greatest width.
double least_q_for_width(const EqSection& section, double rate_hz);

}  // namespace tanrove
