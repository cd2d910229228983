// What a band starts from, and where the fit takes it.
#include "eqfit/fit_eq_band.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "eqfit/eq_start_sections.hpp"
#include "eqfit/reaeq_width.hpp"
#include "support/heard_eq.hpp"

namespace tanrove {
namespace {

using namespace testing;

EqBand band_of(BandKind kind, double frequency, double gain, double q, bool high = false,
               int slope = 2) {
    EqBand band;
    band.kind = kind;
    band.frequency = frequency;
    band.gain = gain;
    band.q = q;
    band.high = high;
    band.slope = slope;
    return band;
}

EqBand started(EqBand band, double rate = 48000) {
    add_start_sections(band, rate);
    return band;
}

TEST(StartSections, OfPassFiltersFollowTheSlope) {
    struct {
        int slope;
        std::vector<double> q;
        double first_order;
    } const cases[] = {
        {1, {}, 1502}, {2, {0.70710678}, 0}, {3, {1}, 1502}, {4, {0.5411961, 1.30656296}, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.slope);
        const EqBand band = started(band_of(BandKind::pass, 1000, 0, 1, true, c.slope));
        ASSERT_EQ(band.sections.size(), c.q.size());
        for (std::size_t i = 0; i < c.q.size(); ++i) {
            EXPECT_EQ(band.sections[i].type, SectionType::high_pass);
            EXPECT_EQ(band.sections[i].q, c.q[i]);
        }
        EXPECT_EQ(band.firstOrderFrequency, c.first_order);
    }
}

TEST(StartSections, StandInForAOnePoleFilterAboveItsReach) {
    const EqBand reached = started(band_of(BandKind::pass, 10962, 0, 1, false, 3));
    EXPECT_EQ(reached.firstOrderFrequency, 19998);
    EXPECT_EQ(reached.sections.size(), 1U);
    const EqBand beyond = started(band_of(BandKind::pass, 12000, 0, 1, false, 3));
    EXPECT_EQ(beyond.firstOrderFrequency, 0);
    ASSERT_EQ(beyond.sections.size(), 2U);
    EXPECT_TRUE(beyond.sections[1].locked);
    EXPECT_EQ(beyond.sections[1].type, SectionType::high_shelf);
    EXPECT_EQ(beyond.sections[1].gain, -12);
    EXPECT_EQ(started(band_of(BandKind::pass, 2, 0, 1, false, 1)).firstOrderFrequency, 20);
}

TEST(StartSections, OfASteepShelfAreTheSteepestAndTwoBells) {
    const double greatest = greatest_shelf_q(6);
    EqBand band = started(band_of(BandKind::shelf, 1000, 6, 2));
    ASSERT_EQ(band.sections.size(), 3U);
    EXPECT_EQ(band.sections[0].q, greatest);
    const double apart = std::pow(10, 6.0 / 80);
    EXPECT_NEAR(band.sections[1].frequency, 1000 * apart, 1e-9);
    EXPECT_NEAR(band.sections[2].frequency, 1000 / apart, 1e-9);
    EXPECT_NEAR(band.sections[1].gain, 20 * std::log10(greatest / 2), 1e-9);
    EXPECT_NEAR(band.sections[2].gain, 20 * std::log10(2 / greatest), 1e-9);
    EXPECT_NEAR(band.sections[1].q, std::sqrt(greatest * 2), 1e-12);
    band = started(band_of(BandKind::shelf, 1000, 6, 2, true));
    EXPECT_NEAR(band.sections[1].frequency, 1000 / apart, 1e-9);
    EXPECT_EQ(band.sections[0].type, SectionType::high_shelf);
    EXPECT_EQ(started(band_of(BandKind::shelf, 1000, 6, 0.7)).sections.size(), 1U);
    // One that is not heard needs no bells.
    band = band_of(BandKind::shelf, 1000, 6, 2);
    band.enabled = false;
    band = started(band);
    ASSERT_EQ(band.sections.size(), 1U);
    EXPECT_EQ(band.sections[0].q, greatest);
    EXPECT_FALSE(band.sections[0].enabled);
}

TEST(StartSections, StayUnderHalfOfTheRate) {
    EXPECT_EQ(started(band_of(BandKind::bell, 30000, 3, 1), 44100).sections[0].frequency,
              0.48 * 44100);
    EXPECT_EQ(started(band_of(BandKind::bell, 1, 3, 1)).sections[0].frequency, 10);
    EXPECT_EQ(started(band_of(BandKind::notch, 1000, 0, 3)).sections.size(), 2U);
}

/// What the written sections and the filter beside them are off by at these frequencies.
double heard_error(const EqBand& band, double rate, const std::vector<double>& frequencies) {
    const HeardBand wanted = {
        static_cast<int>(band.kind), band.frequency, band.gain, band.q, band.high, band.slope};
    double worst = 0;
    for (const double hz : frequencies) {
        const double target = in_db(analogue_response(wanted, hz));
        if (target < -20) continue;
        Complex heard = band.firstOrderFrequency > 0
                            ? one_pole_of(band.firstOrderFrequency, band.high, rate, hz)
                            : 1;
        for (const EqSection& s : band.sections) {
            heard *=
                section_response_of({static_cast<int>(s.type), s.frequency, s.gain, s.q}, rate, hz);
        }
        worst = std::max(worst, std::abs(in_db(heard) - target));
    }
    return worst;
}

TEST(FitEqBand, FollowsTheCurveAndStaysInItsBounds) {
    const EqBand bands[] = {band_of(BandKind::bell, 12000, -9, 1.1),
                            band_of(BandKind::bell, 17000, 12, 4),
                            band_of(BandKind::shelf, 9000, 12, 1.9, true),
                            band_of(BandKind::shelf, 15000, -5, 0.4, true),
                            band_of(BandKind::pass, 8000, 0, 1, false, 4),
                            band_of(BandKind::pass, 16000, 0, 1, false, 2),
                            band_of(BandKind::pass, 12000, 0, 1, false, 3),
                            band_of(BandKind::pass, 6000, 0, 1, true, 3)};
    for (const double rate : {44100.0, 96000.0}) {
        EqFitter fitter;
        for (const EqBand& wanted : bands) {
            SCOPED_TRACE(::testing::Message() << static_cast<int>(wanted.kind) << " at "
                                              << wanted.frequency << ", rate " << rate);
            EqBand band = started(wanted, rate);
            fitter.fit(band, rate);
            EXPECT_LE(heard_error(band, rate, heard_frequencies(rate, 0)), band.worstDb + 1e-7);
            const double between = heard_error(band, rate, heard_frequencies(rate, 0.5));
            EXPECT_LE(between, band.worstDb <= 0.05 ? 0.06 : band.worstDb + 0.15);
            EXPECT_EQ(band.sections.size(),
                      band.fitStart.size() + static_cast<std::size_t>(band.extraSections));
            for (std::size_t i = 0; i < band.sections.size(); ++i) {
                const EqSection& s = band.sections[i];
                EXPECT_LE(s.frequency, 0.48 * rate);
                if (has_gain(s.type)) {
                    EXPECT_LE(reaeq_width(s, rate), greatest_fit_width + 1e-9);
                }
                if (i >= band.fitStart.size()) continue;
                const EqSection& start = band.fitStart[i];
                EXPECT_LE(std::abs(s.gain - start.gain), 3 + 1e-9);
                EXPECT_GE(s.frequency, 0.8 * start.frequency - 1e-9);
                EXPECT_LE(s.frequency, (is_pass(s.type) ? 1.8 : 1.25) * start.frequency + 1e-9);
                if (s.locked) {
                    EXPECT_EQ(s.frequency, start.frequency);
                    EXPECT_EQ(s.gain, -12);
                }
            }
        }
    }
}

TEST(EqFitter, FitsASettingOnceAndCountsItEachTime) {
    EqFitter fitter;
    EqBand first = started(band_of(BandKind::bell, 14000, 9, 1));
    EqBand second = first;
    fitter.fit(first, 48000);
    ASSERT_TRUE(first.fitted);
    fitter.fit(second, 48000);
    EXPECT_EQ(fitter.searches(), 1);
    EXPECT_TRUE(second.fitted);
    EXPECT_EQ(second.worstDb, first.worstDb);
    ASSERT_EQ(second.sections.size(), first.sections.size());
    EXPECT_EQ(second.sections.back().frequency, first.sections.back().frequency);
    // A band far below half of the rate needs no search.
    EqBand low = started(band_of(BandKind::bell, 100, 9, 1));
    fitter.fit(low, 48000);
    EXPECT_FALSE(low.fitted);
    EXPECT_EQ(low.sections[0].frequency, 100);
    EXPECT_EQ(fitter.searches(), 1);
    EqFitTallies tallies;
    for (const EqBand* band : {&first, &second, &low}) tallies.add(*band);
    EXPECT_EQ(tallies.fitted_bands, 2);
    EXPECT_EQ(tallies.extra_sections, 2 * first.extraSections);
    EXPECT_EQ(tallies.worst_db, first.worstDb);
}

}  // namespace
}  // namespace tanrove
