// EQ3 as its controls set it: 38 numbers of the 7-Band, 8 of the 1-Band.
#pragma once

#include <span>
#include <vector>

#include "eqfit/eq_band.hpp"

namespace tanrove {

constexpr std::size_t seven_band_controls = 38;
constexpr std::size_t one_band_controls = 8;

struct Eq3Settings {
    std::vector<EqBand> bands;  ///< in the order in which they play; sections not yet made
    double output_gain_db = 0;
    bool inverts = false;
};

/// `controls` has `seven_band_controls` numbers; what is not finite counts as 0.
Eq3Settings read_seven_bands(std::span<const float> controls);

/// `controls` has `one_band_controls` numbers.
Eq3Settings read_one_band(std::span<const float> controls);

}  // namespace tanrove
