// The 7-Band's controls: 2 and 3 gains, 4 polarity; 5 type, 6 in, 7 notch Q, 8 slope, 9 frequency
// of the high-pass; 10 in, 11 gain, 12 frequency, 13 Q, 14 shelf of the low band; 15, 19 and 23 in,
// gain, frequency, Q of the mid bands; 27 to 31 the high band as the low one; 32 type, 33 in, 34
// notch Q, 35 slope, 36 frequency of the low-pass. The 1-Band's: 1 gain, 2 frequency, 3 Q, 4 slope,
// 5 type, 6 output gain, 7 polarity.
#include "standins/eq3_controls.hpp"

#include <algorithm>
#include <cmath>

#include "standins/eq3_q_table.hpp"

namespace tanrove {

namespace {

constexpr double on_from = 0.5;
constexpr double notch_q_factor = 1.5538;
constexpr double greatest_shelf_gain = 12;
constexpr double greatest_shelf_control_q = 2;
constexpr double greatest_gain = 18;
constexpr double least_q = 0.1;
constexpr int greatest_slope = 4;

struct FrequencyRange {
    double low;
    double high;
};

constexpr FrequencyRange high_pass_range = {20, 8000};
constexpr FrequencyRange low_range = {20, 500};
constexpr FrequencyRange low_mid_range = {40, 1000};
constexpr FrequencyRange mid_range = {125, 8000};
constexpr FrequencyRange high_mid_range = {1, 18000};
constexpr FrequencyRange high_range = {1800, 20000};
constexpr FrequencyRange low_pass_range = {120, 20000};
constexpr FrequencyRange one_band_range = {20, 20000};

class Controls {
public:
    explicit Controls(std::span<const float> values) : values_(values) {}
    double value(std::size_t i) const { return std::isfinite(values_[i]) ? values_[i] : 0.0; }
    bool is_on(std::size_t i) const { return value(i) >= on_from; }
    double frequency(std::size_t i, FrequencyRange range) const {
        return std::clamp(value(i), range.low, range.high);
    }
    int slope(std::size_t i) const {
        const double rounded = std::floor(value(i) + 0.5) + 1;
        return static_cast<int>(std::clamp(rounded, 1.0, static_cast<double>(greatest_slope)));
    }

private:
    std::span<const float> values_;
};

void make_shelf(EqBand& band, double gain, double q) {
    band.kind = BandKind::shelf;
    band.gain = std::clamp(gain, -greatest_shelf_gain, greatest_shelf_gain);
    band.q = std::clamp(q, least_q, greatest_shelf_control_q);
}

void make_bell(EqBand& band, double gain, double q) {
    band.kind = BandKind::bell;
    band.gain = std::clamp(gain, -greatest_gain, greatest_gain);
    band.q = corrected_q(band.gain, q);
}

/// High-pass or low-pass, or the notch in its place. `first` is the band's type.
EqBand pass_band(const Controls& controls, std::size_t first, bool high, FrequencyRange range) {
    EqBand band;
    band.high = high;
    band.enabled = controls.is_on(first + 1);
    band.slope = controls.slope(first + 3);
    band.frequency = controls.frequency(first + 4, range);
    band.kind = controls.is_on(first) ? BandKind::pass : BandKind::notch;
    if (band.kind == BandKind::notch) {
        band.q = std::max(controls.value(first + 2), least_q) * notch_q_factor;
    }
    return band;
}

/// `first` is the band's switch; `shelf` tells whether it is one.
EqBand gain_band(const Controls& controls, std::size_t first, bool shelf, bool high,
                 FrequencyRange range) {
    EqBand band;
    band.high = high;
    band.enabled = controls.is_on(first);
    band.frequency = controls.frequency(first + 2, range);
    const double gain = controls.value(first + 1);
    const double q = controls.value(first + 3);
    if (shelf) {
        make_shelf(band, gain, q);
    } else {
        make_bell(band, gain, q);
    }
    return band;
}

}  // namespace

Eq3Settings read_seven_bands(std::span<const float> controls) {
    const Controls read(controls);
    Eq3Settings settings;
    settings.bands = {
        pass_band(read, 5, true, high_pass_range),
        gain_band(read, 10, read.is_on(14), false, low_range),
        gain_band(read, 15, false, false, low_mid_range),
        gain_band(read, 19, false, false, mid_range),
        gain_band(read, 23, false, false, high_mid_range),
        gain_band(read, 27, read.is_on(31), true, high_range),
        pass_band(read, 32, false, low_pass_range),
    };
    settings.output_gain_db = read.value(2) + read.value(3);
    settings.inverts = read.is_on(4);
    return settings;
}

Eq3Settings read_one_band(std::span<const float> controls) {
    enum class Type { high_pass, low_shelf, notch, bell, high_shelf, low_pass };
    const Controls read(controls);
    const auto type =
        static_cast<Type>(static_cast<int>(std::clamp(std::floor(read.value(5) + 0.5), 0.0, 5.0)));
    const double gain = read.value(1);
    const double q = read.value(3);
    EqBand band;
    band.frequency = read.frequency(2, one_band_range);
    band.slope = read.slope(4);
    band.high = type == Type::high_pass || type == Type::high_shelf;
    switch (type) {
        case Type::high_pass:
        case Type::low_pass:
            band.kind = BandKind::pass;
            break;
        case Type::low_shelf:
        case Type::high_shelf:
            make_shelf(band, gain, q);
            break;
        case Type::notch:
            band.kind = BandKind::notch;
            band.q = std::max(q, least_q);
            break;
        case Type::bell:
            make_bell(band, gain, q);
            break;
    }
    Eq3Settings settings;
    settings.bands = {band};
    settings.output_gain_db = read.value(6);
    settings.inverts = std::fabs(read.value(7)) >= on_from;
    return settings;
}

}  // namespace tanrove
