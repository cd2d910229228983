// Pro Tools' fade curves, one function a family. Settings are signed: their size bends the curve,
// their sign tells which way.
#include "timeline/fade_curve.hpp"

#include <algorithm>
#include <cmath>

namespace tanrove {
namespace {

constexpr std::uint32_t without_presets = 3;  // a family of fade-outs: a preset means nothing in it

constexpr std::int32_t neutral_below = 9;   // smaller settings, either sign, bend nothing
constexpr std::int32_t step_preset = 3;     // -2 to 2 are slopes, -3 and 3 steps
constexpr std::int32_t preset_bend = 8000;  // of the equal power presets, as a standard setting

constexpr double half_pi = 1.57079632679489661923;

double bend(const FadeSpec& spec) {
    return std::abs(static_cast<double>(spec.setting));
}

std::optional<FadeSpec> preset_form(const FadeSpec& spec, FadeSide side) {
    if (spec.family == without_presets) return std::nullopt;
    if (spec.setting > step_preset || spec.setting < -step_preset) return std::nullopt;
    if (spec.setting == step_preset || spec.setting == -step_preset)
        return FadeSpec{.family = spec.family, .type = fade_type::step, .setting = spec.setting};
    if (spec.family != equal_power_family) return spec;
    if (spec.setting > 0) return std::nullopt;
    // The three equal power presets lie on the standard curve: convex, neutral, concave.
    const std::int32_t rising = (spec.setting + 1) * preset_bend;
    const std::int32_t setting = side == FadeSide::fade_in ? rising : -rising;
    return FadeSpec{.family = spec.family, .type = fade_type::standard, .setting = setting};
}

/// The fade-in of equal power, bent below the quarter sine or, with `lifted`, above it.
double rising_power(double t, double bend_exponent, bool lifted) {
    const double angle = half_pi * std::clamp(t, 0.0, 1.0);
    if (lifted) return std::pow(std::sin(angle), 1 / bend_exponent);
    const double rest = std::pow(std::max(0.0, std::cos(angle)), 2 / bend_exponent);
    return rest >= 1 ? 0 : std::sqrt(1 - rest);
}

double equal_power_gain(const FadeSpec& spec, FadeSide side, double t) {
    const double exponent = 1 + bend(spec) * 5 / 32768;
    const bool rises = side == FadeSide::fade_in;
    // A setting's sign bends the drawn line, so a fade-out is lifted by the other one.
    const bool lifted = rises == (spec.setting < 0);
    if (spec.type == fade_type::standard) return rising_power(rises ? t : 1 - t, exponent, lifted);
    if (rises) {
        return t <= 0.5 ? 0.5 * rising_power(2 * t, exponent, lifted)
                        : 1 - 0.5 * rising_power(2 * (1 - t), exponent, lifted);
    }
    return t <= 0.5 ? 0.5 * (rising_power(1 - 2 * t, exponent, lifted) + 1)
                    : 0.5 * (1 - rising_power(1 - 2 * (1 - t), exponent, lifted));
}

/// The rising curve of equal gain in one piece: bent down by a positive setting.
double rising_gain(double t, double exponent, bool bent_down) {
    return bent_down ? std::pow(t, exponent) : 1 - std::pow(1 - t, exponent);
}

double equal_gain_gain(const FadeSpec& spec, FadeSide side, double t) {
    const bool rises = side == FadeSide::fade_in;
    const bool bent_down = spec.setting > 0;
    if (spec.setting == 0) return rises ? t : 1 - t;
    if (spec.type == fade_type::preset) {
        const double exponent = bend(spec) == 1 ? 1.7676 : 3.2069;
        return rising_gain(rises ? t : 1 - t, exponent, bent_down);
    }
    const double exponent = 1 + bend(spec) * 3 / 4096;
    double rising = 0;
    if (spec.type == fade_type::standard) {
        rising = rising_gain(t, exponent, bent_down);
    } else if (t <= 0.5) {
        rising = 0.5 * rising_gain(2 * t, exponent, bent_down);
    } else {
        rising = 1 - 0.5 * rising_gain(2 * (1 - t), exponent, bent_down);
    }
    return rises ? rising : 1 - rising;
}

/// A step stands at one end of the fade: silence up to it, or sound from it on.
double step_gain(const FadeSpec& spec, FadeSide side, double t) {
    const double u = side == FadeSide::fade_in ? t : 1 - t;
    return (spec.setting < 0 ? u > 0 : u >= 1) ? 1 : 0;
}

}  // namespace

std::optional<FadeSpec> normal_form(const FadeSpec& spec, FadeSide side) {
    if (spec.type == fade_type::preset) return preset_form(spec, side);
    if (spec.type != fade_type::standard && spec.type != fade_type::s_curve) return std::nullopt;
    FadeSpec normal = spec;
    if (spec.setting < neutral_below && spec.setting > -neutral_below) normal.setting = 0;
    return normal;
}

double fade_gain(const FadeSpec& spec, FadeSide side, double t) {
    const double within = t > 0 ? std::min(t, 1.0) : 0;
    const auto normal = normal_form(spec, side);
    if (!normal) return side == FadeSide::fade_in ? within : 1 - within;
    if (normal->type == fade_type::step) return step_gain(*normal, side, within);
    if (normal->family == equal_power_family) return equal_power_gain(*normal, side, within);
    return equal_gain_gain(*normal, side, within);
}

}  // namespace tanrove
