// The channel strip, from the names of its controls to its slots; on clips as shares of a throw.
#include "standins/channel_strip_slots.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "plugins/state_frames.hpp"
#include "standins/channel_strip_eq.hpp"
#include "standins/read_channel_strip_settings.hpp"
#include "support/named_controls.hpp"

namespace tanrove {
namespace {

using Controls = std::map<std::string, double>;

Controls controls_of(const std::string& text) {
    const auto named = builder::named_controls(text);
    return {named.begin(), named.end()};
}

StandIn strip_of(const Controls& controls, const StandInTrack& track = {}) {
    return strip_stand_in(read_channel_strip(controls), track, SlotNumbers(0));
}

ClipEffectsRecord record_of(const Controls& controls) {
    ClipEffectsRecord record;
    for (const auto& [name, value] : controls) {
        record.parameters.push_back(
            {name, std::bit_cast<std::uint32_t>(static_cast<float>(value))});
    }
    return record;
}

float parameter(const FxSlot& slot, std::size_t i) {
    return std::bit_cast<float>(little_word(slot.state, 8 + 4 * i));
}

TEST(ChannelStrip, BlocksStandInTheirOrderAndKeepTheirSwitches) {
    const Controls all = controls_of(
        "Phase Switch In/Out 1, Input Trim 3, EQ On/Off 0, Filters On/Off 0, Exp Ratio 9.99, "
        "Exp In/Out 0, Cmp Ratio 4, Cmp Gain Makeup 9, Fader Volume -2");
    const struct {
        const char* title;
        const char* preset;
        bool bypassed;
    } slots[] = {
        {"Channel Strip polarity (Channel Polarity Control)", "Channel Strip polarity", false},
        {"Channel Strip input trim (Volume Adjustment)", "Channel Strip input trim +3.0 dB", false},
        {"Channel Strip EQ (ReaEQ)", "Channel Strip EQ", true},
        {"Channel Strip Filters (ReaEQ)", "Channel Strip Filters", true},
        {"Channel Strip Exp/Gate (ReaGate)", "Channel Strip Exp/Gate 1:9.99", true},
        {"Channel Strip Comp/Lim (ReaComp)", "Channel Strip Comp/Lim 4:1", false},
        {"Channel Strip makeup (Volume Adjustment)", "Channel Strip makeup +9.0 dB", false},
        {"Channel Strip fader (Volume Adjustment)", "Channel Strip fader -2.0 dB", false}};
    for (const bool dynamics_on : {true, false}) {
        Controls controls = all;
        controls["Dynamics On/Off"] = dynamics_on ? 1 : 0;
        const StandIn made = strip_of(controls);
        ASSERT_EQ(made.slots.size(), std::size(slots));
        for (std::size_t i = 0; i < made.slots.size(); ++i) {
            SCOPED_TRACE(slots[i].title);
            EXPECT_EQ(made.slots[i].title, slots[i].title);
            EXPECT_EQ(made.slots[i].preset_name, slots[i].preset);
            const bool is_dynamics = i >= 4 && i <= 6;
            EXPECT_EQ(made.slots[i].bypassed, slots[i].bypassed || (is_dynamics && !dynamics_on));
            EXPECT_EQ(made.slots[i].guid_seed, i);
        }
        EXPECT_EQ(made.carried, (std::vector<std::string>{"polarity", "input trim", "EQ", "filters",
                                                          "gate", "compressor", "fader"}));
    }
}

TEST(ChannelStrip, DynamicsAreScaledAndLossesNamed) {
    const Controls dynamics = controls_of(
        "Exp Ratio 20, Exp Threshold -40, Exp Attack Time 0.6, Exp Hold Time 0.1, "
        "Exp Hysteresis 6, Exp Knee 3, Cmp Ratio 100, Cmp Threshold -20, Cmp Attack Time 0.05, "
        "Cmp Knee 30, Cmp Gain Makeup 6.0206, Cmp Depth -20, Sc Filter Type 1, "
        "Sc Filter Frequency 5000, Sc Source 1, Process Order 1, EQ Range 1");
    const StandIn made = strip_of(dynamics, {.key_channel = 4});
    ASSERT_EQ(made.slots.size(), 4U);
    EXPECT_TRUE(made.is_keyed);
    const FxSlot& gate = made.slots[2];
    const auto gain = [](double db) { return std::pow(10, db / 20); };
    const double gate_values[] = {
        0.01,          1,       0.04,     0, 0.1,  0.25, 0,         0.0018450185, 0, gain(-36),
        1 - gain(-36), 3.16e-8, gain(-6), 0, 0.05, 0,    0.54330707};
    for (std::size_t i = 0; i < std::size(gate_values); ++i) {
        EXPECT_NEAR(parameter(gate, i), gate_values[i], 1e-6) << i;
    }
    const FxSlot& comp = made.slots[3];
    const double comp_values[] = {0.1, 1,       0.1,          0.04, 0,    0, 0.25, 0, 0.0018450185,
                                  0,   3.16e-8, gain(6.0206), 0,    0.05, 1, 0,    0, 0.25};
    for (std::size_t i = 0; i < std::size(comp_values); ++i) {
        EXPECT_NEAR(parameter(comp, i), comp_values[i], 1e-6) << i;
    }
    EXPECT_EQ(made.notes.size(), 8U);
    // The same with a band filter, peaks and no key; and as a Downward Expander.
    Controls other = dynamics;
    other["Sc Detector Type Avg/Pk"] = 0;
    other["Sc Filter Type"] = 3;
    const StandIn unkeyed = strip_of(other);
    EXPECT_EQ(parameter(unkeyed.slots[2], 14), 0);
    EXPECT_EQ(parameter(unkeyed.slots[3], 13), 0);
    EXPECT_EQ(parameter(unkeyed.slots[3], 8), 0);
    EXPECT_EQ(unkeyed.notes.size(), 10U);
    other["Exp Ratio"] = 9.98;
    const FxSlot expander = strip_of(other).slots[2];
    EXPECT_EQ(expander.title, "Channel Strip Exp/Gate (Downward Expander)");
    EXPECT_EQ(expander.preset_name, "Channel Strip Expander 1:9.98");
    EXPECT_TRUE(expander.parameters.starts_with("-40.000 9.9800 0 0 2 600.0000 200.0000 - "));
}

TEST(StripEq, FollowsTheMeasurements) {
    const struct {
        double gain, frequency, q, of_gain, of_frequency;
    } bells[] = {{3, 1000, 1, 0.6716, 1},
                 {-6, 50, 2, 0.8474, 1.0297},
                 {0.01, 1000, 0.1, 1, 1},
                 {12, 10000, 4, 1, 0.7463},
                 {24, 20000, 1, 0.9911, 0.3603},
                 {7.5, 1000, 1, (0.8474 + 0.9508) / 2, 1},
                 {0.75, 1000, 1, std::pow(0.25, 0.25) * 0.6716, 1}};
    for (const auto& b : bells) {
        SCOPED_TRACE(b.gain);
        const EqSection s = strip_band_section(
            {.gain_db = b.gain, .frequency = b.frequency, .q = b.q}, false, 48000);
        const double q = std::max(b.q, 0.2);
        EXPECT_EQ(s.type, SectionType::bell);
        EXPECT_NEAR(
            2 / std::numbers::ln2 * std::asinh(1 / (2 * s.q)),
            2 / std::numbers::ln2 * std::asinh(1 / (2 * q * 0.4044 * b.of_gain * b.of_frequency)),
            2e-4);
        EXPECT_EQ(s.gain, b.gain);
    }
    for (const bool high : {false, true}) {
        const EqSection s =
            strip_band_section({.is_shelf = true, .gain_db = 12, .frequency = 2000}, high, 48000);
        const double a = std::pow(10, (high ? -12 : 12) / 40.0);
        const double t = std::tan(std::numbers::pi * 2000 / 48000);
        EXPECT_NEAR(s.frequency, std::atan(t * a) * 48000 / std::numbers::pi, 1e-8);
        EXPECT_EQ(s.width, 1.41421356);
    }
    ChannelStripSettings strip;
    strip.filters[0] = {true, StripFilterType::low_pass, 18000, 1, true};
    strip.filters[1] = {true, StripFilterType::notch, 1000, 3, true};
    const FxSlot filters = strip_stand_in(strip, {}, SlotNumbers(0)).slots[1];
    EXPECT_EQ(little_word(filters.state, 4), 3U);
    EXPECT_EQ(little_word(filters.state, 8), 3U);
    EXPECT_EQ(little_word(filters.state, 8 + 2 * 33), 6U);
    EXPECT_EQ(strip_filter_section(strip.filters[0], 48000).width, 1.2095575965759668);
    EXPECT_NEAR(strip_filter_section({.frequency = 100}, 48000).width, 1.8999, 2e-4);
}

TEST(ClipEffectsSettings, StandOnTheScalesOfTheirKnobs) {
    using Settings = const ChannelStripSettings&;
    EXPECT_TRUE(read_clip_effects({}).is_clip);
    const struct {
        const char* control;
        double stored;
        double wanted;
        double (*value)(Settings);
    } cases[] = {
        {"Input Trim", 1, 36, [](Settings s) { return s.input_trim_db; }},
        {"EQ Low Gain", 0.25, -12, [](Settings s) { return s.bands[0].gain_db; }},
        {"EQ Low-Mid Frequency", 0.5, 20 * std::sqrt(1050),
         [](Settings s) { return s.bands[1].frequency; }},
        {"EQ High-Mid Q", 1, 100, [](Settings s) { return s.bands[2].q; }},
        {"EQ High Frequency", 1, 21000, [](Settings s) { return s.bands[3].frequency; }},
        {"Filter 2 Type", 0.333333, 1,
         [](Settings s) { return static_cast<double>(s.filters[1].type); }},
        {"Sc Filter Type", 1, 3, [](Settings s) { return static_cast<double>(s.detector.filter); }},
        {"Sc Source", 0.5, 2, [](Settings s) { return double{1} * s.detector.source; }},
        {"Exp Ratio", 0, 1, [](Settings s) { return s.expander.ratio; }},
        {"Exp Ratio", 0.614583, 3, [](Settings s) { return s.expander.ratio; }},
        {"Exp Ratio", 0.909404, 10, [](Settings s) { return s.expander.ratio; }},
        {"Exp Threshold", 1, -10, [](Settings s) { return s.expander.threshold_db; }},
        {"Exp Attack Time", 0.2, 0.2, [](Settings s) { return s.expander.attack_ms; }},
        {"Exp Release Time", 0.5, 100, [](Settings s) { return s.expander.release_ms; }},
        {"Exp Hold Time", 0.25, 10, [](Settings s) { return s.expander.hold_ms; }},
        {"Exp Depth", 0.5, -54, [](Settings s) { return s.expander.depth_db; }},
        {"Exp Knee", 0.5, 15, [](Settings s) { return s.expander.knee_db; }},
        {"Cmp Ratio", 0.253906, 3, [](Settings s) { return s.compressor.ratio; }},
        {"Cmp Ratio", (0.3359375 + 0.593715) / 2, std::sqrt(40.0),
         [](Settings s) { return s.compressor.ratio; }},
        {"Cmp Threshold", 0.5, -30, [](Settings s) { return s.compressor.threshold_db; }},
        {"Cmp Attack Time", 0.5, 10, [](Settings s) { return s.compressor.attack_ms; }},
        {"Cmp Release Time", 1, 10000, [](Settings s) { return s.compressor.release_ms; }},
        {"Cmp Knee", 1, 30, [](Settings s) { return s.compressor.knee_db; }},
        {"Cmp Gain Makeup", 0.1, 3, [](Settings s) { return s.compressor.makeup_db; }},
        {"Fader Volume", 0.9, 1, [](Settings s) { return s.fader_is_lost ? 1.0 : 0; }},
        {"EQ Range", 0.0002, 1, [](Settings s) { return s.other_ranges ? 1.0 : 0; }}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.control);
        const ChannelStripSettings moved = read_clip_effects(record_of({{c.control, c.stored}}));
        EXPECT_NEAR(c.value(moved), c.wanted, 1e-4 * std::max(1.0, std::abs(c.wanted)));
    }
    EXPECT_FALSE(read_clip_effects(record_of({{"Cmp Ratio", 0.593715}})).compressor.past_table);
    const auto past = read_clip_effects(record_of({{"Cmp Ratio", 0.6}})).compressor;
    EXPECT_TRUE(past.past_table);
    EXPECT_GT(past.ratio, 10);
}

TEST(ClipEffectsSettings, ChangeTheSoundOnceAControlIsMoved) {
    const Controls told = controls_of(
        "Input Trim 0.5, EQ Low Frequency 0.103889, EQ Low Q 0.147441, Filter 1 Frequency 0.0042, "
        "Filter 2 Type 0.333333, Filter 2 Frequency 1, Cmp Threshold 0.6, Cmp Depth 0.666667, "
        "Exp Release Time 0.575257, Exp Threshold 0.314286, Fader Volume 0.888889, "
        "Fader Volume Pre/Post 0, Dynamics On/Off 1, EQ High In/Out 1, EQ Range 0, "
        "Exp Hysteresis 0, Sc Filter Frequency 0");
    EXPECT_FALSE(changes_sound(record_of(told)));
    for (const auto& [name, value] : told) {
        const double moved = value + (value > 0.5 ? -0.001 : 0.001);
        EXPECT_TRUE(changes_sound(record_of({{name, moved}}))) << name;
    }
    const auto inverted = record_of({{"Phase Switch In/Out", 1}});
    EXPECT_FALSE(changes_sound(inverted));
    EXPECT_TRUE(inverts_clip(inverted));
    // The take inverts, and no slot does so again.
    EXPECT_EQ(strip_stand_in(read_clip_effects(inverted), {}, SlotNumbers(0)).slots.size(), 2U);
    const auto no_number = record_of({{"Input Trim", std::numeric_limits<double>::quiet_NaN()}});
    EXPECT_FALSE(changes_sound(no_number));
}

TEST(ChannelStripSettings, WriteNumbersWhateverIsStored) {
    const char* const names[] = {"Input Trim",         "EQ Low Gain",         "EQ Low Frequency",
                                 "EQ Low Q",           "EQ Low Type",         "EQ High Gain",
                                 "Filter 1 Frequency", "Filter 1 Type",       "Filter 1 Q",
                                 "Exp Ratio",          "Exp Threshold",       "Exp Attack Time",
                                 "Exp Depth",          "Exp Hysteresis",      "Cmp Ratio",
                                 "Cmp Threshold",      "Cmp Gain Makeup",     "Cmp Knee",
                                 "Sc Source",          "Sc Filter Frequency", "Fader Volume"};
    std::mt19937_64 random(7);
    for (int i = 0; i < 3000; ++i) {
        Controls controls;
        for (const char* name : names) {
            const std::uint64_t bits = random();
            controls[name] = i % 2 == 0 ? std::bit_cast<double>(bits)
                                        : double{std::bit_cast<float>(std::uint32_t(bits))};
        }
        const StandIn made =
            i % 2 == 0 ? strip_of(controls)
                       : strip_stand_in(read_clip_effects(record_of(controls)), {}, SlotNumbers(0));
        for (const FxSlot& slot : made.slots) {
            ASSERT_EQ(slot.parameters.find('n'), std::string::npos);
            if (slot.title.find("ReaComp") == std::string::npos) continue;
            for (std::size_t k = 0; k < 21; ++k) ASSERT_TRUE(std::isfinite(parameter(slot, k)));
        }
    }
}

}  // namespace
}  // namespace tanrove
