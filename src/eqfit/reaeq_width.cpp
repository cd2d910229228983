// Both ways of the two formulas.
#include "eqfit/reaeq_width.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/steady_math.hpp"

namespace tanrove {

namespace {

constexpr double octaves_of_bend = 2.8853900817779268;  // 2 / ln 2
constexpr double steepest_slope = 1.2;
constexpr double width_of_steepest = 0.9128709291752769;
constexpr double least_denominator = 1e-9;

/// By how much the rate bends a bandwidth at this frequency.
double bend_at(double frequency, double rate_hz) {
    const double w0 = std::min(2 * std::numbers::pi * frequency / rate_hz, std::numbers::pi / 2);
    return steady_sin(w0) / w0;
}

double both_ways(double gain_db) {
    const double a = steady_gain(gain_db / 2);
    return a + 1 / a;
}

double shelf_width(const EqSection& section) {
    const double denominator = (1 / (section.q * section.q) - 2) / both_ways(section.gain) + 1;
    if (denominator <= least_denominator) return width_of_steepest;
    const double slope = 1 / denominator;
    return slope > steepest_slope ? width_of_steepest : 1 / std::sqrt(slope);
}

}  // namespace

double reaeq_width(const EqSection& section, double rate_hz) {
    if (is_shelf(section.type)) return shelf_width(section);
    const double h = 1 / (2 * section.q);
    return octaves_of_bend * steady_log(h + std::sqrt(h * h + 1)) *
           bend_at(section.frequency, rate_hz);
}

double least_q_for_width(const EqSection& section, double rate_hz) {
    if (is_shelf(section.type)) {
        constexpr double square = greatest_fit_width * greatest_fit_width;
        return 1 / std::sqrt(2 + (square - 1) * both_ways(section.gain));
    }
    const double reach =
        greatest_fit_width / (octaves_of_bend * bend_at(section.frequency, rate_hz));
    return 1 / (steady_exp(reach) - steady_exp(-reach));
}

}  // namespace tanrove
