// The prototypes of EQ3's filters. They are not bent towards half of the rate.
#include "eqfit/eq_curve.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/steady_math.hpp"
#include "eqfit/eq_start_sections.hpp"

namespace tanrove {

namespace {

constexpr double lowest_point = 20;
constexpr double points_an_octave = 24;
constexpr double greatest_fitted = 20000;
constexpr double fitted_share_of_rate = 0.46;
constexpr double last_share_of_rate = 0.48;
constexpr int points_above = 8;
constexpr double least_step_above = 1;

constexpr double least_power = 1e-24;
constexpr double db_of_log2 = 3.010299956639812;  // 10 log10(2)

/// The magnitude squared of a complex number.
double power_of(double real, double imaginary) {
    return real * real + imaginary * imaginary;
}

double bell_power(const EqBand& band, double x) {
    const double a = steady_gain(band.gain / 2);
    const double even = 1 - x * x;
    return power_of(even, x * a / band.q) / power_of(even, x / (a * band.q));
}

double shelf_power(const EqBand& band, double x) {
    const double a = steady_gain(band.gain / 2);
    const double slope = std::sqrt(a) / band.q * x;
    const double near = power_of(a - x * x, slope);
    const double far = power_of(1 - a * x * x, slope);
    return a * a * (band.high ? far / near : near / far);
}

double pass_power(const EqBand& band, double x) {
    const double y = band.high ? 1 / x : x;
    const PassSections parts = pass_sections(band.slope);
    double power = 1;
    for (int i = 0; i < parts.count; ++i) power /= power_of(1 - y * y, y / parts.q[i]);
    if (parts.has_first_order) power /= power_of(1, y);
    return power;
}

double notch_power(const EqBand& band, double x) {
    const double even = 1 - x * x;
    const double once = even * even / power_of(even, x / band.q);
    return once * once;
}

double power_at(const EqBand& band, double frequency) {
    const double x = frequency / band.frequency;
    switch (band.kind) {
        case BandKind::bell:
            return bell_power(band, x);
        case BandKind::shelf:
            return shelf_power(band, x);
        case BandKind::pass:
            return pass_power(band, x);
        case BandKind::notch:
            return notch_power(band, x);
    }
    return 1;
}

}  // namespace

EqGrid eq_grid(double rate_hz) {
    const double top = std::min(fitted_share_of_rate * rate_hz, greatest_fitted);
    EqGrid grid;
    for (int i = 0;; ++i) {
        const double frequency = lowest_point * steady_exp2(i / points_an_octave);
        if (frequency > top) break;
        grid.frequencies.push_back(frequency);
    }
    grid.within = grid.frequencies.size();
    for (int i = 1; i <= points_above; ++i) {
        const double frequency = top + i * (last_share_of_rate * rate_hz - top) / points_above;
        if (frequency > top + least_step_above) grid.frequencies.push_back(frequency);
    }
    return grid;
}

std::vector<double> eq_target(const EqBand& band, const EqGrid& grid) {
    std::vector<double> target;
    target.reserve(grid.frequencies.size());
    for (const double frequency : grid.frequencies) {
        const double power = std::max(power_at(band, frequency), least_power);
        target.push_back(db_of_log2 * steady_log2(power));
    }
    return target;
}

std::vector<double> one_pole_response(double corner, bool high_pass, const EqGrid& grid,
                                      double rate_hz) {
    const double w = 2 * std::numbers::pi * corner;
    const double oversampled = 3 * rate_hz;
    const double k = 1 / (w + oversampled);
    const double b = (oversampled - w) * k;
    std::vector<double> response;
    response.reserve(grid.frequencies.size());
    for (const double frequency : grid.frequencies) {
        const double root = steady_sin(std::numbers::pi * frequency / rate_hz);
        const double moved = 4 * root * root;
        const double below = (1 - b) * (1 - b) + b * moved;
        response.push_back((high_pass ? b * b * moved : (1 - b) * (1 - b)) / below);
    }
    return response;
}

}  // namespace tanrove
