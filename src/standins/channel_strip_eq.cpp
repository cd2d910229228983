// Bells: the Q that is heard follows the gain, and narrows towards half of the rate. Shelves:
// REAPER's stand at half of their gain where the strip's stand at their corner.
#include "standins/channel_strip_eq.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>

#include "base/steady_math.hpp"

namespace tanrove {

namespace {

constexpr double least_frequency = 10;
constexpr double greatest_share_of_rate = 0.49;
constexpr double least_q = 0.2;
constexpr double least_filter_q = 0.02;
constexpr double greatest_gain = 100;  // dB; far above the knob's
constexpr double measured_rate = 48000;
constexpr double log10_of_2 = 0.3010299956639812;

constexpr double silent_gain = 0.05;
constexpr double low_gain = 3;
constexpr double q_factor = 0.4044;
constexpr double shelf_width = 1.41421356;
constexpr double pass_width = 1.8999686297483922;
constexpr double pass_width_above = 1.2095575965759668;  // from a quarter of the rate on

struct Node {
    double at;
    double value;
};

// Measured on bells at 1 kHz: gains in dB.
constexpr Node factors_of_gain[] = {{3, 0.6716}, {6, 0.8474}, {9, 0.9508}, {12, 1.0}, {18, 0.9911}};
// Measured at 48 kHz: logarithms of frequencies.
constexpr Node factors_of_frequency[] = {{2, 1.0297},      {2.4771, 1.0225}, {3, 1},
                                         {3.4771, 0.9394}, {3.7782, 0.8556}, {4, 0.7463},
                                         {4.1761, 0.5908}, {4.301, 0.3603}};

/// The value between the nodes; the last one's behind them.
double between(std::span<const Node> nodes, double at) {
    if (at <= nodes.front().at) return nodes.front().value;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        if (at > nodes[i].at) continue;
        const double share = (at - nodes[i - 1].at) / (nodes[i].at - nodes[i - 1].at);
        return nodes[i - 1].value + share * (nodes[i].value - nodes[i - 1].value);
    }
    return nodes.back().value;
}

double factor_of_gain(double gain_db) {
    const double gain = std::fabs(gain_db);
    if (gain < silent_gain) return 1;
    if (gain >= low_gain) return between(factors_of_gain, gain);
    return std::sqrt(std::sqrt(gain / low_gain)) * factors_of_gain[0].value;
}

double held_frequency(double frequency, double rate_hz) {
    return std::clamp(frequency, least_frequency, greatest_share_of_rate * rate_hz);
}

}  // namespace

EqSection strip_band_section(const StripBand& band, bool is_high, double rate_hz) {
    EqSection section;
    section.enabled = band.on;
    section.gain = std::clamp(band.gain_db, -greatest_gain, greatest_gain);
    section.frequency = held_frequency(band.frequency, rate_hz);
    if (!band.is_shelf) {
        const double frequency_48k = section.frequency * measured_rate / rate_hz;
        section.q = between(factors_of_frequency, steady_log2(frequency_48k) * log10_of_2) *
                    std::max(band.q, least_q) * q_factor * factor_of_gain(band.gain_db);
        return section;
    }
    section.type = is_high ? SectionType::high_shelf : SectionType::low_shelf;
    const double a = steady_gain(section.gain / 2);
    const double t = steady_tan(std::numbers::pi * section.frequency / rate_hz);
    section.frequency = steady_atan(t * (is_high ? 1 / a : a)) * rate_hz / std::numbers::pi;
    section.width = shelf_width;
    return section;
}

EqSection strip_filter_section(const StripFilter& filter, double rate_hz) {
    EqSection section;
    section.enabled = filter.on;
    section.frequency = held_frequency(filter.frequency, rate_hz);
    section.q = std::max(filter.q, least_filter_q);
    switch (filter.type) {
        case StripFilterType::high_pass:
            section.type = SectionType::high_pass;
            break;
        case StripFilterType::low_pass:
            section.type = SectionType::low_pass;
            break;
        case StripFilterType::band_pass:
            section.type = SectionType::band_pass;
            break;
        case StripFilterType::notch:
            section.type = SectionType::notch;
            break;
    }
    if (is_pass(section.type)) {
        const double w = 2 * std::numbers::pi * section.frequency / rate_hz;
        section.width =
            w <= std::numbers::pi / 2 ? steady_sin(w) * pass_width / w : pass_width_above;
    }
    return section;
}

}  // namespace tanrove
