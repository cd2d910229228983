// An EQ a second time, as textbooks give it and in complex numbers: the analogue prototypes of a
// band, and the digital filters by which REAPER plays a section. It shares nothing with the
// program, so that a slip there cannot agree with itself.
#pragma once

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace tanrove::testing {

using Complex = std::complex<double>;

inline double in_db(Complex response) {
    return 20 * std::log10(std::max(std::abs(response), 1e-12));
}

/// A band by the numbers of the program: kind 0 bell, 1 shelf, 2 pass filter, 3 notch.
struct HeardBand {
    int kind = 0;
    double frequency = 1000;
    double gain = 0;
    double q = 1;
    bool high = false;
    int slope = 2;
};

/// What the band does to a tone, if nothing were digital.
inline Complex analogue_response(const HeardBand& band, double hz) {
    const Complex s(0, hz / band.frequency);
    const double a = std::pow(10, band.gain / 40);
    if (band.kind == 0) return (s * s + s * a / band.q + 1.0) / (s * s + s / (a * band.q) + 1.0);
    if (band.kind == 1) {
        const Complex middle = std::sqrt(a) / band.q * s;
        const Complex near = s * s + middle + a;
        const Complex far = a * s * s + middle + 1.0;
        return a * (band.high ? far / near : near / far);
    }
    if (band.kind == 3) return std::pow((s * s + 1.0) / (s * s + s / band.q + 1.0), 2);
    const Complex t = band.high ? 1.0 / s : s;
    const auto two_poles = [&](double q) { return 1.0 / (t * t + t / q + 1.0); };
    switch (band.slope) {
        case 1:
            return 1.0 / (1.0 + t);
        case 2:
            return two_poles(0.70710678);
        case 3:
            return two_poles(1) / (1.0 + t);
        default:
            return two_poles(0.5411961) * two_poles(1.30656296);
    }
}

/// A section by REAPER's number of its type.
struct HeardSection {
    int type = 8;
    double frequency = 1000;
    double gain = 0;
    double q = 1;
};

/// The audio cookbook's filter of this section at a frequency.
inline Complex section_response_of(const HeardSection& section, double rate, double hz) {
    const double w0 = 2 * std::numbers::pi * section.frequency / rate;
    const double c = std::cos(w0);
    const double alpha = std::sin(w0) / (2 * section.q);
    const double a = std::pow(10, section.gain / 40);
    const double t = 2 * std::sqrt(a) * alpha;
    const Complex z = std::polar(1.0, -2 * std::numbers::pi * hz / rate);
    const auto over = [&](double b0, double b1, double b2, double a0, double a1, double a2) {
        return (b0 + b1 * z + b2 * z * z) / (a0 + a1 * z + a2 * z * z);
    };
    switch (section.type) {
        case 0:
            return over(a * ((a + 1) - (a - 1) * c + t), 2 * a * ((a - 1) - (a + 1) * c),
                        a * ((a + 1) - (a - 1) * c - t), (a + 1) + (a - 1) * c + t,
                        -2 * ((a - 1) + (a + 1) * c), (a + 1) + (a - 1) * c - t);
        case 1:
            return over(a * ((a + 1) + (a - 1) * c + t), -2 * a * ((a - 1) + (a + 1) * c),
                        a * ((a + 1) + (a - 1) * c - t), (a + 1) - (a - 1) * c + t,
                        2 * ((a - 1) - (a + 1) * c), (a + 1) - (a - 1) * c - t);
        case 3:
            return over((1 - c) / 2, 1 - c, (1 - c) / 2, 1 + alpha, -2 * c, 1 - alpha);
        case 4:
            return over((1 + c) / 2, -(1 + c), (1 + c) / 2, 1 + alpha, -2 * c, 1 - alpha);
        case 6:
            return over(1, -2 * c, 1, 1 + alpha, -2 * c, 1 - alpha);
        case 7:
            return over(alpha, 0, -alpha, 1 + alpha, -2 * c, 1 - alpha);
        default:
            return over(1 + alpha * a, -2 * c, 1 - alpha * a, 1 + alpha / a, -2 * c, 1 - alpha / a);
    }
}

/// The one-pole filter that stands beside REAPER's EQ: it makes its coefficients as if it ran at
/// three times the rate, so that a tone of the corner itself is far from 3 dB down.
inline Complex one_pole_of(double corner, bool high_pass, double rate, double hz) {
    const double w = 2 * std::numbers::pi * corner;
    const double k = 1 / (w + 3 * rate);
    const Complex z = std::polar(1.0, -2 * std::numbers::pi * hz / rate);
    const Complex low = 2 * w * k / (1.0 - (3 * rate - w) * k * z);
    return high_pass ? 1.0 - low : low;
}

/// The frequencies from 20 Hz on at which two EQs are held against each other, 24 an octave; with
/// `shift` between them. Up to the top of what has to fit.
inline std::vector<double> heard_frequencies(double rate, double shift) {
    std::vector<double> frequencies;
    const double top = std::min(0.46 * rate, 20000.0);
    for (double i = shift; 20 * std::exp2(i / 24) <= top; ++i) {
        frequencies.push_back(20 * std::exp2(i / 24));
    }
    return frequencies;
}

}  // namespace tanrove::testing
