// The EQ and the filters of the channel strip as sections of REAPER's EQ: measured, so that no fit
// is needed.
#pragma once

#include "eqfit/eq_band.hpp"
#include "standins/channel_strip_settings.hpp"

namespace tanrove {

/// The section of a band. `is_high` for the uppermost; `rate_hz` above 0.
EqSection strip_band_section(const StripBand& band, bool is_high, double rate_hz);

/// The section of a filter. A steep pass filter needs it twice.
EqSection strip_filter_section(const StripFilter& filter, double rate_hz);

}  // namespace tanrove
