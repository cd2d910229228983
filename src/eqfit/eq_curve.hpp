// What a band of EQ3 sounds like: its analogue response on a grid of frequencies.
#pragma once

#include <cstddef>
#include <vector>

#include "eqfit/eq_band.hpp"

namespace tanrove {

/// The frequencies at which two EQs are compared.
struct EqGrid {
    std::vector<double> frequencies;  ///< Hz, ascending
    std::size_t within = 0;           ///< the first so many lie in the range that has to fit
};

/// 24 points an octave from 20 Hz to 20 kHz or 0.46 of the rate, whichever is lower, and up to
/// eight above.
EqGrid eq_grid(double rate_hz);

/// The band's response in dB at each point of the grid.
std::vector<double> eq_target(const EqBand& band, const EqGrid& grid);

/// Magnitude squared of the one-pole part of a pass filter at each point of the grid, as the filter
/// of its own plays it.
std::vector<double> one_pole_response(double corner, bool high_pass, const EqGrid& grid,
                                      double rate_hz);

}  // namespace tanrove
