// The fit of an EQ band as one would write it down: complex numbers, the library's functions, every
// evaluation from the start, every iteration gone through. What the program's own fit is held
// against, for its speed and for its answer.
#pragma once

#include <vector>

#include "eqfit/eq_band.hpp"

namespace tanrove::bench {

/// The sections that the search ends with, and their greatest error in dB.
struct PlainFit {
    std::vector<EqSection> sections;
    double error = 0;
};

/// Fits a band that has its start sections and is heard.
PlainFit fit_plainly(const EqBand& band, double rate_hz);

}  // namespace tanrove::bench
