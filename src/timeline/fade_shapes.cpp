// REAPER numbers its eight fade shapes: 0 is a straight line, 7 equal power, the others are bent
// or S-shaped, and a curve value bends each of them further.
#include "timeline/fade_shapes.hpp"

#include <algorithm>
#include <cstdlib>

#include "timeline/fade_fit_table.hpp"

namespace tanrove {
namespace {

// A step cannot be measured in dB against a slope; every other error lies far below.
constexpr double step_error_db = 99;

constexpr double inaudible_db = 0.25;           // an error up to here counts as none
constexpr double between_unlike_fits_db = 0.6;  // at least: the fit changes between two settings

ReaperFade plain_fade(std::uint32_t family) {
    ReaperFade fade;
    fade.shape = family == equal_power_family ? 7 : 0;
    return fade;
}

ReaperFade step_fade(std::int32_t setting, FadeSide side) {
    const bool rises = side == FadeSide::fade_in;
    return {.shape = 6, .curve = rises != (setting < 0) ? 1.0 : -1.0, .error_db = step_error_db};
}

/// A preset of equal gain, -2 to 2.
ReaperFade preset_fade(std::int32_t setting, FadeSide side) {
    const auto fit = [&](double shape, double fade_in_curve, double error_db) {
        const double curve = side == FadeSide::fade_in ? fade_in_curve : -fade_in_curve;
        return ReaperFade{.shape = shape, .curve = curve, .error_db = error_db};
    };
    switch (setting) {
        case 0:
            return {};
        case -1:
            return fit(2, -0.8, 0);
        case -2:
            return fit(4, -0.79, 0.48);
        case 1:
            return fit(2, 0.92, 0.94);
        default:
            return fit(7, 0.97, 2.42);
    }
}

ReaperFade unbent_fade(const FadeSpec& spec, FadeSide side) {
    ReaperFade fade = plain_fade(spec.family);
    if (spec.type != fade_type::s_curve) return fade;
    if (spec.family != equal_power_family) {
        fade.neutral_s_curve = true;
        return fade;
    }
    return side == FadeSide::fade_in ? ReaperFade{.shape = 1, .curve = 0.31, .error_db = 1.52}
                                     : ReaperFade{.shape = 5, .curve = -0.06, .error_db = 0.4};
}

/// The fit of the nearest measured setting; of two equally near the lower.
ReaperFade fitted_fade(const FadeSpec& spec, FadeSide side) {
    const std::int64_t bend = std::abs(std::int64_t{spec.setting});
    const auto settings = fitted_settings();
    const auto fits = fade_fits({.equal_power = spec.family == equal_power_family,
                                 .s_curve = spec.type == fade_type::s_curve,
                                 .negative = spec.setting < 0,
                                 .fade_out = side == FadeSide::fade_out});
    const auto found = std::ranges::lower_bound(settings, bend);
    const auto behind = static_cast<std::size_t>(found - settings.begin());
    const std::size_t hi = std::min(behind, settings.size() - 1);
    const bool is_between = found != settings.begin() && found != settings.end() && *found != bend;
    const std::size_t lo = is_between ? hi - 1 : hi;

    const bool hi_is_nearer = settings[hi] - bend < bend - settings[lo];
    const FadeFit& fit = fits[hi_is_nearer ? hi : lo];
    const bool unlike = fits[lo].shape != fits[hi].shape || fits[lo].curve != fits[hi].curve;
    const double worst = std::max(fits[lo].error_db, fits[hi].error_db);
    ReaperFade fade{.shape = static_cast<double>(fit.shape), .curve = fit.curve};
    if (unlike && worst < between_unlike_fits_db) {
        fade.error_db = between_unlike_fits_db;
    } else {
        fade.error_db = worst > inaudible_db ? worst : 0;
    }
    return fade;
}

}  // namespace

FadeSpec clip_fade_spec(const FadeRecord& record, FadeSide side) {
    const bool is_in = side == FadeSide::fade_in;
    return {.family = record.slope,
            .type = is_in ? record.in_type : record.out_type,
            .setting = is_in ? record.in_setting : record.out_setting};
}

ReaperFade reaper_fade(const FadeSpec& spec, FadeSide side) {
    const auto normal = normal_form(spec, side);
    if (!normal) {
        ReaperFade fade = plain_fade(spec.family);
        fade.unmeasured = true;
        return fade;
    }
    if (normal->type == fade_type::step) return step_fade(normal->setting, side);
    if (normal->type == fade_type::preset) return preset_fade(normal->setting, side);
    return normal->setting == 0 ? unbent_fade(*normal, side) : fitted_fade(*normal, side);
}

ReaperFade reaper_fade(const FadeRecord& record, FadeSide side) {
    if (record.has_shapes) return reaper_fade(clip_fade_spec(record, side), side);
    ReaperFade fade = plain_fade(record.slope);
    // The record breaks off in front of its shapes, but its handles have been moved.
    fade.unmeasured = record.has_handles && (record.x != 0 || record.y != 0);
    return fade;
}

ClipFade clip_fade(const FadeRecord& record, FadeSide side, double length, FadeForm form,
                   FadeTallies& tallies) {
    const ReaperFade nearest = reaper_fade(record, side);
    if (nearest.unmeasured) ++tallies.unmeasured;
    if (nearest.neutral_s_curve) ++tallies.neutral_s_curves;

    ClipFade fade;
    fade.length = length;
    fade.shape = nearest.shape;
    fade.curve = nearest.curve;
    fade.spec = clip_fade_spec(record, side);
    if (nearest.error_db <= 0) return fade;
    if (form == FadeForm::plain) {
        count_approximated(nearest.error_db, tallies);
        return fade;
    }
    fade.as_envelope = true;
    fade.spec_length = length;
    return fade;
}

void count_approximated(double error_db, FadeTallies& tallies) {
    ++tallies.approximated;
    if (error_db >= step_error_db) {
        ++tallies.approximated_steps;
    } else {
        tallies.worst_db = std::max(tallies.worst_db, error_db);
    }
}

}  // namespace tanrove
