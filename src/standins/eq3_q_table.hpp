// EQ3's bells are not of constant Q: how broad one sounds follows its gain.
#pragma once

namespace tanrove {

/// The Q that a bell of EQ3 has at this gain in dB, 0.1 or more.
double corrected_q(double gain_db, double q);

}  // namespace tanrove
