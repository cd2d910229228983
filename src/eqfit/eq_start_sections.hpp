// The sections of REAPER's EQ that come nearest to a band as they are, before any fit.
#pragma once

#include "eqfit/eq_band.hpp"

namespace tanrove {

/// The greatest Q that a shelf of this gain in dB can have in REAPER's EQ.
double greatest_shelf_q(double gain_db);

/// Qs of the two-pole sections of a pass filter of this slope; the first `count` count.
struct PassSections {
    double q[2] = {};
    int count = 0;
    bool has_first_order = false;
};

PassSections pass_sections(int slope);

/// Fills the band's sections and the corner of its first-order part. `rate_hz` is above 0.
void add_start_sections(EqBand& band, double rate_hz);

/// True for a band that is heard and that the fit can bring nearer.
bool is_worth_fitting(const EqBand& band);

}  // namespace tanrove
