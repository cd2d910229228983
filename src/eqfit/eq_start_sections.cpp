// A shelf steeper than REAPER's becomes its steepest and two bells that undo each other; a pass
// filter becomes two-pole sections, its odd pole a filter of its own.
#include "eqfit/eq_start_sections.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/steady_math.hpp"

namespace tanrove {

namespace {

constexpr double silent_gain = 1e-6;  // dB; under it a bell or shelf changes nothing

constexpr double least_frequency = 10;
constexpr double greatest_share_of_rate = 0.48;

// The one-pole filter makes its coefficients as if it ran at three times the rate. Its corner is
// set so that it is 3 dB down at the band's frequency all the same.
constexpr double one_pole_oversampling = 3;
constexpr double greatest_corner_share = 0.49;
constexpr double least_corner = 20;
constexpr double greatest_corner = 20000;

constexpr double db_of_log2 = 6.020599913279624;  // 20 log10(2)

constexpr double unrealised_gain = -12;  // dB, of the shelf in place of a one-pole filter
constexpr double unrealised_q = 0.5;

double one_pole_corner(double frequency, double rate_hz) {
    const double held = std::min(frequency, greatest_corner_share * rate_hz);
    const double tangent = steady_tan(std::numbers::pi * held / rate_hz);
    const double bent = one_pole_oversampling * rate_hz * tangent / (2 * std::numbers::pi);
    return std::max(std::floor(bent + 0.5), least_corner);
}

void add_section(EqBand& band, SectionType type, double frequency, double gain, double q) {
    EqSection section;
    section.type = type;
    section.enabled = band.enabled;
    section.frequency = frequency;
    section.gain = gain;
    section.q = q;
    band.sections.push_back(section);
}

void add_shelf(EqBand& band) {
    const SectionType type = band.high ? SectionType::high_shelf : SectionType::low_shelf;
    const double greatest = greatest_shelf_q(band.gain);
    add_section(band, type, band.frequency, band.gain, std::min(band.q, greatest));
    if (band.q <= greatest || !is_worth_fitting(band)) return;
    const double spread = std::sqrt(steady_gain(band.gain / 2));
    const double first = band.high ? band.frequency / spread : band.frequency * spread;
    const double second = band.high ? band.frequency * spread : band.frequency / spread;
    const double q = std::sqrt(greatest * band.q);
    const double gain = db_of_log2 * steady_log2(band.q / greatest);
    add_section(band, SectionType::bell, first, -gain, q);
    add_section(band, SectionType::bell, second, gain, q);
}

void add_first_order(EqBand& band, double rate_hz) {
    const double corner = one_pole_corner(band.frequency, rate_hz);
    if (corner <= greatest_corner) {
        band.firstOrderFrequency = corner;
        return;
    }
    add_section(band, band.high ? SectionType::low_shelf : SectionType::high_shelf, band.frequency,
                unrealised_gain, unrealised_q);
    band.sections.back().locked = true;
}

void add_pass(EqBand& band, double rate_hz) {
    const PassSections parts = pass_sections(band.slope);
    const SectionType type = band.high ? SectionType::high_pass : SectionType::low_pass;
    for (int i = 0; i < parts.count; ++i) {
        add_section(band, type, band.frequency, 0, parts.q[i]);
    }
    if (parts.has_first_order) add_first_order(band, rate_hz);
}

}  // namespace

double greatest_shelf_q(double gain_db) {
    const double a = steady_gain(gain_db / 2);
    return 0.9999 / std::sqrt(2 - (a + 1 / a) / 6);
}

PassSections pass_sections(int slope) {
    switch (slope) {
        case 1:
            return {.has_first_order = true};
        case 3:
            return {.q = {1}, .count = 1, .has_first_order = true};
        case 4:
            return {.q = {0.5411961, 1.30656296}, .count = 2};
        default:
            return {.q = {0.70710678}, .count = 1};
    }
}

void add_start_sections(EqBand& band, double rate_hz) {
    switch (band.kind) {
        case BandKind::bell:
            add_section(band, SectionType::bell, band.frequency, band.gain, band.q);
            break;
        case BandKind::shelf:
            add_shelf(band);
            break;
        case BandKind::pass:
            add_pass(band, rate_hz);
            break;
        case BandKind::notch:
            for (int i = 0; i < 2; ++i) {
                add_section(band, SectionType::notch, band.frequency, 0, band.q);
            }
            break;
    }
    for (EqSection& section : band.sections) {
        section.frequency =
            std::clamp(section.frequency, least_frequency, greatest_share_of_rate * rate_hz);
    }
    band.fitStart = band.sections;
}

bool is_worth_fitting(const EqBand& band) {
    if (!band.enabled || band.kind == BandKind::notch) return false;
    return band.kind == BandKind::pass || std::fabs(band.gain) >= silent_gain;
}

}  // namespace tanrove
