// The REAPER fade that comes nearest to each Pro Tools fade of a freely set shape, and how near.
#pragma once

#include <cstdint>
#include <span>

namespace tanrove {

/// REAPER's fade shape and curve, and how far it lies from Pro Tools' curve where it is worst.
struct FadeFit {
    std::uint8_t shape = 0;  ///< 0 to 7
    double curve = 0;        ///< -1 to 1
    double error_db = 0;
};

/// The settings that were measured, without their sign, ascending; every row has a fit for each.
std::span<const std::int32_t> fitted_settings();

/// The fits of one kind of fade, in step with `fitted_settings`.
struct FadeFitRow {
    bool equal_power = false;
    bool s_curve = false;
    bool negative = false;  ///< the setting's sign
    bool fade_out = false;
};
std::span<const FadeFit> fade_fits(const FadeFitRow& row);

}  // namespace tanrove
