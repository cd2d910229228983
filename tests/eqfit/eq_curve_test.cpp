// The curve that a fit is after, and how far sections lie from it, against the same in complex
// numbers.
#include "eqfit/eq_curve.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "eqfit/section_response.hpp"
#include "support/heard_eq.hpp"

namespace tanrove {
namespace {

using namespace testing;
constexpr double no_limit = std::numeric_limits<double>::infinity();

TEST(EqGrid, EndsAtWhatCanBeHeardAndHasEightPointsAbove) {
    struct {
        double rate;
        double within;
        double last;
    } const cases[] = {{44100, 20000, 0.48 * 44100},
                       {48000, 20000, 23040},
                       {192000, 20000, 92160},
                       {32000, 0.46 * 32000, 0.48 * 32000}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rate);
        const EqGrid grid = eq_grid(c.rate);
        ASSERT_EQ(grid.frequencies.size(), grid.within + 8);
        EXPECT_LE(grid.frequencies[grid.within - 1], c.within);
        EXPECT_GT(grid.frequencies[grid.within - 1] * std::exp2(1.0 / 24), c.within);
        EXPECT_NEAR(grid.frequencies.back(), c.last, 1e-6);
    }
}

TEST(EqTarget, IsTheAnaloguePrototype) {
    const EqGrid grid = eq_grid(48000);
    const HeardBand bands[] = {
        {0, 90, 7.5, 0.4},        {0, 11000, -18, 9},       {1, 300, -12, 2}, {1, 300, 5, 0.3},
        {1, 7000, 12, 1.9, true}, {1, 7000, -4, 0.5, true}, {3, 1000, 0, 4}};
    auto all = std::vector<HeardBand>(std::begin(bands), std::end(bands));
    for (const int slope : {1, 2, 3, 4}) {
        all.push_back({2, 500, 0, 1, true, slope});
        all.push_back({2, 9000, 0, 1, false, slope});
    }
    for (const HeardBand& b : all) {
        SCOPED_TRACE(::testing::Message() << b.kind << ' ' << b.frequency << ' ' << b.slope);
        EqBand band;
        band.kind = static_cast<BandKind>(b.kind);
        band.frequency = b.frequency;
        band.gain = b.gain;
        band.q = b.q;
        band.high = b.high;
        band.slope = b.slope;
        const auto target = eq_target(band, grid);
        for (std::size_t i = 0; i < target.size(); ++i) {
            ASSERT_NEAR(target[i], in_db(analogue_response(b, grid.frequencies[i])), 1e-8) << i;
        }
    }
}

/// The error of sections by its definition.
double plain_error(const EqGrid& grid, const std::vector<double>& target,
                   const std::vector<HeardSection>& sections, double corner, double rate,
                   FitMeasure measure) {
    double greatest = 0;
    double sum = 0;
    int count = 0;
    for (std::size_t i = 0; i < target.size(); ++i) {
        const bool is_above = i >= grid.within;
        if (target[i] < -50) continue;
        Complex response = corner > 0 ? one_pole_of(corner, true, rate, grid.frequencies[i]) : 1;
        for (const auto& s : sections) {
            response *= section_response_of(s, rate, grid.frequencies[i]);
        }
        double error = std::abs(in_db(response) - target[i]);
        if (is_above) {
            error = std::max(0.0, in_db(response) - target[i] - 3);
        } else if (target[i] < -20) {
            error = 25 * std::abs(std::pow(10, target[i] / 20) - std::abs(response));
        }
        greatest = std::max(greatest, error);
        if (!is_above && i % 2 != 0) continue;
        sum += std::pow(error, 8);
        ++count;
    }
    return measure == FitMeasure::greatest ? greatest : std::pow(sum / count, 0.125);
}

TEST(SectionResponse, MeasuresAsDefinedWithEverySectionAndAtEveryLevel) {
    const double rate = 44100;
    const EqGrid grid = eq_grid(rate);
    EqBand steep;  // reaches far below -50 dB
    steep.kind = BandKind::pass;
    steep.high = true;
    steep.slope = 4;
    steep.frequency = 2000;
    const auto target = eq_target(steep, grid);
    const std::vector<HeardSection> sets[] = {
        {},
        {{4, 2000, 0, 0.54}, {4, 2100, 0, 1.3}},
        {{4, 2000, 0, 0.7}, {0, 100, -12, 0.5}, {1, 9000, 11, 0.9}, {8, 19000, 12, 0.1}},
        {{8, 30, -18, 9}, {3, 20000, 0, 0.7}, {6, 1000, 0, 5}, {7, 8000, 0, 0.3}},
    };
    for (const auto& set : sets) {
        std::vector<EqSection> sections;
        for (const HeardSection& s : set) {
            EqSection& section = sections.emplace_back();
            section.type = static_cast<SectionType>(s.type);
            section.frequency = s.frequency;
            section.gain = s.gain;
            section.q = s.q;
        }
        for (const double corner : {0.0, 3000.0}) {
            SCOPED_TRACE(::testing::Message() << set.size() << " sections, one pole " << corner);
            const auto one_pole =
                corner > 0 ? one_pole_response(corner, true, grid, rate) : std::vector<double>();
            const SectionResponse response(grid, target, one_pole, rate);
            for (const FitMeasure measure : {FitMeasure::greatest, FitMeasure::eighth_norm}) {
                const double plain = plain_error(grid, target, set, corner, rate, measure);
                EXPECT_NEAR(response.error(sections, measure, no_limit), plain, 1e-7 * (1 + plain));
                // What gives up early says so; what need not give up says the same.
                EXPECT_GT(response.error(sections, measure, 0.9 * plain), 0.9 * plain);
                EXPECT_EQ(response.error(sections, measure, 1.1 * plain),
                          response.error(sections, measure, no_limit));
            }
        }
    }
}

}  // namespace
}  // namespace tanrove
