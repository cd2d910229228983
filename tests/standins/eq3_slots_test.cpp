// EQ3 on REAPER's EQ: heard through the bytes of its state, and held against the analogue EQ.
#include "standins/eq3_slots.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "plugins/state_frames.hpp"
#include "standins/eq3_controls.hpp"
#include "standins/eq3_q_table.hpp"
#include "support/heard_eq.hpp"

namespace tanrove {
namespace {

using namespace testing;

/// The state of REAPER's EQ as its own plug-in reads it.
struct ReaEqState {
    explicit ReaEqState(const std::string& state, double rate) {
        const auto real = [&](std::size_t at) {
            const std::uint64_t high = little_word(state, at + 4);
            return std::bit_cast<double>(high << 32 | little_word(state, at));
        };
        EXPECT_EQ(little_word(state, 0), 33U);
        const std::size_t count = little_word(state, 4);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = 8 + 33 * i;
            HeardSection s;
            s.type = static_cast<int>(little_word(state, at));
            enabled.push_back(little_word(state, at + 4) == 1);
            s.frequency = real(at + 8);
            s.gain = 20 * std::log10(real(at + 16));
            widths.push_back(real(at + 24));
            s.q = q_of(s, widths.back(), rate);
            EXPECT_EQ(state[at + 32], 1);
            sections.push_back(s);
        }
        const std::size_t end = 8 + 33 * count;
        EXPECT_EQ(state.size(), end + 32);
        output_gain = 20 * std::log10(real(end + 8));
        EXPECT_EQ(little_word(state, end + 28), 0x00010002U);
    }

    static double q_of(const HeardSection& s, double width, double rate) {
        if (s.type <= 1) {
            const double a = std::pow(10, s.gain / 40);
            return 1 / std::sqrt((a + 1 / a) * (width * width - 1) + 2);
        }
        const double w = std::min(2 * std::numbers::pi * s.frequency / rate, std::numbers::pi / 2);
        return 1 / (2 * std::sinh(std::numbers::ln2 / 2 * width * w / std::sin(w)));
    }

    std::vector<HeardSection> sections;
    std::vector<bool> enabled;
    std::vector<double> widths;
    double output_gain = 0;
};

constexpr std::size_t seven = seven_band_controls;
constexpr std::size_t one = one_band_controls;

PluginInsert insert_of(std::vector<float> controls) {
    PluginInsert insert;
    insert.blockStart = 0x1234;
    insert.controlValues = std::move(controls);
    return insert;
}

StandIn stand_in(std::vector<float> controls, double rate = 48000, int width = 2) {
    StandInMaker maker{ByteView()};
    return make_eq3(maker, insert_of(std::move(controls)), {.width = width, .rate_hz = rate});
}

const FxSlot& reaeq_of(const StandIn& made) {
    for (const FxSlot& slot : made.slots) {
        if (slot.form == SlotForm::stock_vst) return slot;
    }
    ADD_FAILURE() << "no ReaEQ";
    return made.slots.front();
}

/// The first-order filter's corner, from the slider as the JS takes it.
double corner_of(const FxSlot& slot) {
    const double slider = std::stod(slot.parameters.substr(4));
    return std::exp((slider * 1.20103 + 16) * 0.05732506661926935) * 8.17742;
}

/// The bands of a 7-Band as its knobs can set them, one of them in use.
struct RandomBand {
    explicit RandomBand(std::mt19937& random) : controls(seven) {
        const auto part = [&] { return static_cast<double>(random()) / 4294967296.0; };
        const auto between = [&](double low, double high) {
            return static_cast<float>(low * std::pow(high / low, part()));
        };
        const float gain = static_cast<float>(36 * part() - 18);
        const float q = between(0.1, 10);
        const int slope = static_cast<int>(part() * 4);
        const bool shelf = part() < 0.5;
        const struct {
            std::size_t at;
            double low, high;
            bool can_shelve;
        } gains[] = {{10, 20, 500, true},
                     {15, 40, 1000, false},
                     {19, 125, 8000, false},
                     {23, 1000, 18000, false},
                     {27, 1800, 20000, true}};
        const auto which = static_cast<std::size_t>(part() * 7);
        if (which < 5) {
            const auto& g = gains[which];
            controls[g.at] = 1;
            controls[g.at + 1] = gain;
            controls[g.at + 2] = between(g.low, g.high);
            controls[g.at + 3] = q;
            const bool is_shelf = g.can_shelve && shelf;
            if (is_shelf) controls[g.at + 4] = 1;
            const double held = std::clamp(static_cast<double>(gain), -12.0, 12.0);
            band = {is_shelf ? 1 : 0, controls[g.at + 2], is_shelf ? held : gain,
                    is_shelf ? std::min<double>(q, 2) : corrected_q(gain, q), which == 4};
        } else {
            const bool high = which == 5;
            const std::size_t at = high ? 5 : 32;
            controls[at] = controls[at + 1] = 1;
            controls[at + 3] = static_cast<float>(slope);
            controls[at + 4] = high ? between(20, 8000) : between(120, 20000);
            band = {2, controls[at + 4], 0, 1, high, slope + 1};
        }
    }

    std::vector<float> controls;
    HeardBand band;
};

/// How far the stand-in is from the band at these frequencies.
double heard_error(const StandIn& made, const HeardBand& band, double rate,
                   const std::vector<double>& frequencies) {
    const ReaEqState eq(reaeq_of(made).state, rate);
    double worst = 0;
    for (const double hz : frequencies) {
        const double target = in_db(analogue_response(band, hz));
        if (target < -50) continue;
        Complex heard = std::pow(10, eq.output_gain / 20);
        for (std::size_t i = 0; i < eq.sections.size(); ++i) {
            if (eq.enabled[i]) heard *= section_response_of(eq.sections[i], rate, hz);
        }
        for (const FxSlot& slot : made.slots) {
            if (slot.name != "Liteon/simplelp6db") continue;
            heard *= one_pole_of(corner_of(slot), slot.parameters.starts_with("0 1 "), rate, hz);
        }
        const double error = target < -20
                                 ? 25 * std::abs(std::pow(10, target / 20) - std::abs(heard))
                                 : std::abs(in_db(heard) - target);
        worst = std::max(worst, error);
    }
    return worst;
}

TEST(Eq3, SoundsAsInProToolsOverFiveHundredBands) {
    constexpr int bands = 500;
    std::mt19937 random(3);
    int close = 0;
    int close_between = 0;
    double worst = 0;
    for (int i = 0; i < bands; ++i) {
        const double rate = i % 3 == 0 ? 44100 : i % 3 == 1 ? 48000 : 96000;
        const RandomBand wanted(random);
        const StandIn made = stand_in(wanted.controls, rate);
        SCOPED_TRACE(::testing::Message() << i << ": kind " << wanted.band.kind << " at "
                                          << wanted.band.frequency << ", rate " << rate);
        const double error = heard_error(made, wanted.band, rate, heard_frequencies(rate, 0));
        const double between = heard_error(made, wanted.band, rate, heard_frequencies(rate, 0.5));
        worst = std::max({worst, error, between});
        if (error <= 0.0501) {
            ++close;
            close_between += between <= 0.06 ? 1 : 0;
            EXPECT_LE(between, 0.1);
        }
        EXPECT_EQ(error > 0.5, !made.notes.empty());
    }
    RecordProperty("within_0_05_db", close);
    EXPECT_GE(close, bands * 95 / 100);
    // Between two points of the fit nothing is searched for.
    EXPECT_GE(close_between, close - 2);
    EXPECT_LE(worst, 0.65);
}

TEST(Eq3, WritesSlotsUnderNamesAndNumbersOfTheirOwn) {
    std::vector<float> controls(seven);
    controls[2] = 2;
    controls[3] = -3.5F;
    controls[4] = 1;
    controls[5] = controls[6] = 1;  // high-pass of 18 dB an octave
    controls[8] = 2;
    controls[9] = 100;
    controls[32] = controls[33] = 1;  // low-pass of 6
    controls[36] = 5000;
    const StandIn made = stand_in(controls, 48000, 6);
    ASSERT_EQ(made.slots.size(), 4U);
    const struct {
        const char* title;
        const char* preset;
        std::uint32_t number;
    } cases[] = {{"EQ3 7-Band polarity (Channel Polarity Control)", "EQ3 input polarity", 0},
                 {"EQ3 7-Band (ReaEQ)", "EQ3 7-Band", 1},
                 {"EQ3 7-Band high-pass 6 of 18 dB/oct (Simple 1-Pole Filter)",
                  "EQ3 high-pass, first-order part", 2 + 900 + 0},
                 {"EQ3 7-Band low-pass 6 dB/oct (Simple 1-Pole Filter)",
                  "EQ3 low-pass, first-order part", 3 + 900 + 6}};
    for (std::size_t i = 0; i < made.slots.size(); ++i) {
        EXPECT_EQ(made.slots[i].title, cases[i].title);
        EXPECT_EQ(made.slots[i].preset_name, cases[i].preset);
        EXPECT_EQ(made.slots[i].guid_seed, (0x53540000U ^ 0x1234U) + cases[i].number);
    }
    const ReaEqState eq(made.slots[1].state, 48000);
    EXPECT_NEAR(eq.output_gain, -1.5, 1e-9);
    // The bands that are off are there, switched off.
    EXPECT_EQ(std::count(eq.enabled.begin(), eq.enabled.end(), false), 5);
    EXPECT_EQ(made.one_pole_filters, 2);
    ASSERT_EQ(made.notes.size(), 1U);
    EXPECT_EQ(made.notes[0],
              "on a track wider than stereo REAPER's plug-in works on the first two channels only");
    EXPECT_EQ(made.slots[2].parameters.find("0 1 "), 0U);
    EXPECT_NEAR(corner_of(made.slots[2]), 150, 1);
}

TEST(Eq3, OneBandKnowsSixTypes) {
    const struct {
        float type;
        int kind;
        bool high;
    } cases[] = {{0, 2, true},    {1, 1, false}, {2, 3, false}, {3, 0, false},
                 {4.4F, 1, true}, {9, 2, false}, {-3, 2, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        std::vector<float> controls(one);
        controls[1] = 40;
        controls[2] = 1000;
        controls[3] = 0.5F;
        controls[4] = 1;
        controls[5] = c.type;
        controls[6] = 3;
        controls[7] = -0.5F;
        const EqBand band = read_one_band(controls).bands[0];
        EXPECT_EQ(static_cast<int>(band.kind), c.kind);
        EXPECT_EQ(band.high, c.high);
        if (c.kind == 0) {
            EXPECT_EQ(band.gain, 18);
            EXPECT_NEAR(band.q, 0.5 * 0.3370, 1e-12);
        }
        const StandIn made = stand_in(controls);
        ASSERT_EQ(made.slots.size(), 2U);
        EXPECT_EQ(made.slots[0].preset_name, "EQ3 polarity");
        const ReaEqState eq(made.slots[1].state, 48000);
        EXPECT_NEAR(eq.output_gain, 3, 1e-9);
        if (c.kind == 3) {
            EXPECT_EQ(eq.sections.size(), 1U);
            EXPECT_NEAR(eq.sections[0].q, 0.5, 1e-9);
        }
    }
}

TEST(Eq3, ReadsControlsWithinTheirRanges) {
    std::vector<float> controls(seven, std::numeric_limits<float>::quiet_NaN());
    controls[10] = controls[14] = 1;
    controls[11] = -30;
    controls[13] = 9;
    const auto bands = read_seven_bands(controls).bands;
    const double lowest[] = {20, 20, 40, 125, 1, 1800, 120};
    for (std::size_t i = 0; i < bands.size(); ++i) EXPECT_EQ(bands[i].frequency, lowest[i]);
    EXPECT_EQ(bands[0].kind, BandKind::notch);
    EXPECT_NEAR(bands[0].q, 0.1 * 1.5538, 1e-12);
    EXPECT_EQ(bands[1].kind, BandKind::shelf);
    EXPECT_EQ(bands[1].gain, -12);
    EXPECT_EQ(bands[1].q, 2);
    controls.assign(seven, std::numeric_limits<float>::infinity());
    controls[9] = controls[36] = 1e30F;
    const auto top = read_seven_bands(controls).bands;
    EXPECT_EQ(top[0].frequency, 8000);
    EXPECT_EQ(top[6].frequency, 20000);
}

TEST(CorrectedQ, IsAsMeasured) {
    const struct {
        double q, gain, corrected;
    } cases[] = {{1, 12, 0.4983},
                 {1, -12, 0.4983},
                 {4, 18, 4 * 0.3442},
                 {9.5, 7, 9.5 * 0.9627},
                 {0.2, 18, 0.1},
                 {0.01, 0, 0.1},
                 {1, 0.5, 1 + 0.5 * 0.0142},
                 {7, 40, 7 * 0.5926},
                 {1, 7.5, (0.8113 + 0.6543) / 2},
                 {2, 6, 2 * (0.9999 + 0.9836) / 2}};
    for (const auto& c : cases) {
        EXPECT_NEAR(corrected_q(c.gain, c.q), c.corrected, 1e-12) << c.q << ' ' << c.gain;
    }
    // Past the table its last step goes on.
    EXPECT_GT(corrected_q(18, 10), 10 * 0.9105);
}

}  // namespace
}  // namespace tanrove
