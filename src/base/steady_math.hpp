// Logarithms, powers and sines made of nothing but additions, multiplications and divisions, so
// that a numeric search takes the same road on every machine and its result has the same bytes.
// Inline, for loops that run hundreds of thousands of times. Accurate to some 1e-15.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace tanrove {

/// The logarithm to base 2 of a positive, normal number.
inline double steady_log2(double x) {
    constexpr std::uint64_t exponent_mask = std::uint64_t{0x7ff} << 52;
    constexpr std::uint64_t one_bits = std::uint64_t{1023} << 52;
    constexpr std::uint64_t half_root_bits = 0x3fe6a09e667f3bcd;  // of the root of one half
    // Bits of 2^52, into whose last places a small number is put to become a double: compilers
    // turn that into the same few instructions for several numbers at once.
    constexpr std::uint64_t whole_bits = std::uint64_t{1023 + 52} << 52;
    constexpr double whole = 4503599627370496;
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const std::uint64_t moved = bits + (one_bits - half_root_bits);
    const double exponent = std::bit_cast<double>((moved >> 52) | whole_bits) - (whole + 1023);
    const double m = std::bit_cast<double>(bits - (moved & exponent_mask) + one_bits);
    // 2 artanh(t), as a series; m lies within a root of 2 around 1.
    const double t = (m - 1) / (m + 1);
    const double s = t * t;
    double sum = 1.0 / 19;
    sum = sum * s + 1.0 / 17;
    sum = sum * s + 1.0 / 15;
    sum = sum * s + 1.0 / 13;
    sum = sum * s + 1.0 / 11;
    sum = sum * s + 1.0 / 9;
    sum = sum * s + 1.0 / 7;
    sum = sum * s + 1.0 / 5;
    sum = sum * s + 1.0 / 3;
    sum = sum * s + 1;
    constexpr double two_over_ln2 = 2.8853900817779268;
    return exponent + two_over_ln2 * t * sum;
}

/// 2 to the power of a number; held to powers between -1000 and 1000.
inline double steady_exp2(double x) {
    constexpr double limit = 1000;
    const double held = x > limit ? limit : (x > -limit ? x : -limit);
    const auto whole = static_cast<std::int64_t>(held < 0 ? held - 0.5 : held + 0.5);
    const double y = (held - static_cast<double>(whole)) * std::numbers::ln2;
    // The series of e, from behind.
    double sum = 1 + y * (1.0 / 16);
    sum = 1 + sum * y * (1.0 / 15);
    sum = 1 + sum * y * (1.0 / 14);
    sum = 1 + sum * y * (1.0 / 13);
    sum = 1 + sum * y * (1.0 / 12);
    sum = 1 + sum * y * (1.0 / 11);
    sum = 1 + sum * y * (1.0 / 10);
    sum = 1 + sum * y * (1.0 / 9);
    sum = 1 + sum * y * (1.0 / 8);
    sum = 1 + sum * y * (1.0 / 7);
    sum = 1 + sum * y * (1.0 / 6);
    sum = 1 + sum * y * (1.0 / 5);
    sum = 1 + sum * y * (1.0 / 4);
    sum = 1 + sum * y * (1.0 / 3);
    sum = 1 + sum * y * (1.0 / 2);
    sum = 1 + sum * y;
    return sum * std::bit_cast<double>(static_cast<std::uint64_t>(whole + 1023) << 52);
}

/// The natural logarithm of a positive, normal number.
inline double steady_log(double x) {
    return steady_log2(x) * std::numbers::ln2;
}

/// e to the power of a number.
inline double steady_exp(double x) {
    return steady_exp2(x * std::numbers::log2e);
}

/// 10^(db / 20): the gain of a level.
inline double steady_gain(double db) {
    constexpr double octaves_a_db = 0.16609640474436813;  // log2(10) / 20
    return steady_exp2(db * octaves_a_db);
}

/// The sine of an angle within half a turn.
inline double steady_sin(double x) {
    const double s = x * x;
    double sum = 1 - s * (1.0 / (26 * 27));
    sum = 1 - sum * s * (1.0 / (24 * 25));
    sum = 1 - sum * s * (1.0 / (22 * 23));
    sum = 1 - sum * s * (1.0 / (20 * 21));
    sum = 1 - sum * s * (1.0 / (18 * 19));
    sum = 1 - sum * s * (1.0 / (16 * 17));
    sum = 1 - sum * s * (1.0 / (14 * 15));
    sum = 1 - sum * s * (1.0 / (12 * 13));
    sum = 1 - sum * s * (1.0 / (10 * 11));
    sum = 1 - sum * s * (1.0 / (8 * 9));
    sum = 1 - sum * s * (1.0 / (6 * 7));
    sum = 1 - sum * s * (1.0 / (4 * 5));
    sum = 1 - sum * s * (1.0 / (2 * 3));
    return x * sum;
}

/// The tangent of an angle above 0 and under a quarter turn.
inline double steady_tan(double x) {
    return steady_sin(x) / steady_sin(std::numbers::pi / 2 - x);
}

/// The angle above 0 of a tangent above 0.
inline double steady_atan(double x) {
    // Three halvings bring the angle to where a short series does.
    double part = x;
    for (int i = 0; i < 3; ++i) part /= 1 + std::sqrt(1 + part * part);
    const double s = part * part;
    double sum = 0;
    for (int n = 19; n > 0; n -= 2) sum = 1.0 / n - sum * s;
    return 8 * part * sum;
}

}  // namespace tanrove
