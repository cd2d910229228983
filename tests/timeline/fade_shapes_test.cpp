// REAPER's shapes against Pro Tools' curves, and the shapes that nobody has measured.
#include "timeline/fade_shapes.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <optional>

#include "timeline/fade_fit_table.hpp"

namespace tanrove {
namespace {

constexpr FadeSide sides[] = {FadeSide::fade_in, FadeSide::fade_out};

double power(double x, int exponent) {
    return std::pow(x, exponent);
}

/// REAPER's fade-in as far as it is known from its own drawing: a curve value mixes the shape at
/// rest with a steeper one. Nothing for the S-curves and for the shapes' other halves.
std::optional<double> reaper_gain(double shape, double curve, double x) {
    const double part = std::abs(curve);
    const auto mix = [part](double at_rest, double bent) {
        return (1 - part) * at_rest + part * bent;
    };
    if (shape == 0 || shape == 4) return mix(x, curve > 0 ? power(x, 4) : 1 - power(1 - x, 4));
    if (shape == 2) return mix(x, curve > 0 ? x * x : 1 - power(1 - x, 2));
    if (shape == 1 && curve >= 0) return mix(1 - power(1 - x, 2), power(x, 4));
    if (shape == 7 && curve >= 0) return mix(std::sin(x * std::numbers::pi / 2), power(x, 4));
    return std::nullopt;
}

/// The greatest distance in dB while Pro Tools is above -30 dB.
std::optional<double> distance_db(const ReaperFade& fade, const FadeSpec& spec, FadeSide side) {
    double greatest = 0;
    for (int i = 1; i < 256; ++i) {
        const double x = i / 256.0;
        const bool is_in = side == FadeSide::fade_in;
        const auto made = reaper_gain(fade.shape, is_in ? fade.curve : -fade.curve, x);
        if (!made) return std::nullopt;
        const double wanted = fade_gain(spec, side, is_in ? x : 1 - x);
        if (wanted < 0.0316) continue;
        greatest = std::max(greatest, std::abs(20 * std::log10(*made / wanted)));
    }
    return greatest;
}

TEST(ReaperFade, LiesAsNearToProToolsAsItSays) {
    constexpr double rounding_db = 0.1;
    constexpr double counts_as_none_db = 0.25;
    int checked = 0;
    const auto check = [&](const FadeSpec& spec) {
        for (const FadeSide side : sides) {
            const ReaperFade fade = reaper_fade(spec, side);
            const auto distance = distance_db(fade, spec, side);
            if (!distance) continue;
            EXPECT_LE(*distance, std::max(fade.error_db, counts_as_none_db) + rounding_db)
                << "family " << spec.family << " type " << spec.type << " setting " << spec.setting
                << (side == FadeSide::fade_in ? " in" : " out");
            ++checked;
        }
    };
    for (std::uint32_t family = 1; family <= 2; ++family) {
        for (std::int32_t type = 0; type <= 1; ++type) {
            for (const std::int32_t setting : fitted_settings()) {
                check({family, type, setting});
                check({family, type, -setting});
            }
            check({family, type, 0});
        }
        const std::int32_t last_measured = family == 1 ? 0 : 2;
        for (std::int32_t preset = -2; preset <= last_measured; ++preset)
            check({family, 2, preset});
    }
    EXPECT_GE(checked, 260) << "REAPER's known shapes are in most of the table";
}

TEST(FadeGain, RunsFromEndToEndWithoutTurningBack) {
    for (std::uint32_t family = 1; family <= 3; ++family) {
        for (std::int32_t type = 0; type <= 4; ++type) {
            for (const std::int32_t setting : {-32768, -5000, -9, -3, -1, 0, 1, 2, 3, 9, 32767}) {
                SCOPED_TRACE(testing::Message() << family << ' ' << type << ' ' << setting);
                for (const FadeSide side : sides) {
                    const auto rising = [&](double t) {
                        const double gain = fade_gain({family, type, setting}, side, t);
                        return side == FadeSide::fade_in ? gain : 1 - gain;
                    };
                    EXPECT_NEAR(rising(-1), 0, 1e-5);
                    EXPECT_NEAR(rising(2), 1, 1e-5);
                    for (int i = 0; i < 100; ++i) {
                        ASSERT_GE(rising((i + 1) / 100.0), rising(i / 100.0) - 1e-12) << i;
                    }
                }
            }
        }
    }
}

TEST(ReaperFade, ChoosesBetweenMeasuredSettingsStepsAndThePlainFade) {
    struct {
        const char* what;
        FadeSpec spec;
        FadeSide side;
        double shape;
        double curve;
        double error_db;
        bool unmeasured = false;
    } const cases[] = {
        {"below the first", {2, 0, 9}, FadeSide::fade_in, 2, 0.43, 1.2},
        {"half way: the lower", {2, 0, 375}, FadeSide::fade_in, 2, 0.43, 1.4},
        {"past half way: the upper", {2, 0, 376}, FadeSide::fade_in, 2, 0.64, 1.4},
        {"between unlike fits", {2, 0, 300}, FadeSide::fade_out, 2, 0.21, 0.6},
        {"between like fits", {1, 1, 600}, FadeSide::fade_in, 1, 0.32, 1.3},
        {"the last", {1, 0, 32767}, FadeSide::fade_out, 1, 1, 7.2},
        {"a small error is none", {1, 0, -250}, FadeSide::fade_out, 7, -0.02, 0},
        {"small settings bend nothing", {1, 0, -8}, FadeSide::fade_in, 7, 0, 0},
        {"a neutral S-curve of equal power", {1, 1, 0}, FadeSide::fade_in, 1, 0.31, 1.52},
        {"a step up at the end", {2, 2, 3}, FadeSide::fade_in, 6, 1, 99},
        {"a step up at the start", {2, 2, -3}, FadeSide::fade_in, 6, -1, 99},
        {"a step down", {1, 2, 3}, FadeSide::fade_out, 6, -1, 99},
        {"an equal power preset is a standard curve", {1, 2, -2}, FadeSide::fade_in, 7, -0.3, 0.5},
        {"a preset that bends equal power down", {1, 2, 1}, FadeSide::fade_in, 7, 0, 0, true},
        {"a preset too far", {2, 2, -4}, FadeSide::fade_in, 0, 0, 0, true},
        {"a family without presets", {3, 2, 0}, FadeSide::fade_out, 0, 0, 0, true},
        {"a type of its own", {2, 3, 1}, FadeSide::fade_in, 0, 0, 0, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ReaperFade fade = reaper_fade(c.spec, c.side);
        EXPECT_EQ(fade.shape, c.shape);
        EXPECT_EQ(fade.curve, c.curve);
        EXPECT_EQ(fade.error_db, c.error_db);
        EXPECT_EQ(fade.unmeasured, c.unmeasured);
    }
}

}  // namespace
}  // namespace tanrove
