// Dyn3 on REAPER's dynamics, read back from the bytes of their states, and those states against
// blocks that REAPER wrote.
#include "standins/dyn3_slots.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <fstream>
#include <limits>
#include <random>

#include "base/base64.hpp"
#include "plugins/state_frames.hpp"
#include "standins/dynamics_slots.hpp"

namespace tanrove {
namespace {

std::vector<float> parameters_of(const FxSlot& slot) {
    EXPECT_EQ(little_word(slot.state, 0), 0xdeadbeefU);
    EXPECT_EQ(little_word(slot.state, 4), 0xdeadf00dU);
    std::vector<float> parameters;
    for (std::size_t at = 8; at < slot.state.size(); at += 4) {
        parameters.push_back(std::bit_cast<float>(little_word(slot.state, at)));
    }
    EXPECT_EQ(parameters.size(), 21U);
    return parameters;
}

/// Controls of a compressor and of a gate that change nothing.
std::vector<float> compressor_controls_at_rest() {
    return {0, 2, 0.01F, 0.1F, 0, -20, 0, 5000, 0, 0, 80, 0, 0, 0};
}
std::vector<float> gate_controls_at_rest() {
    return {-40, 100, 0.01F, 0.1F, 0.05F, -30, 0, 0, 5000, 0, 0, 80, 0, 0, 0};
}

using Make = StandIn (*)(StandInMaker&, const PluginInsert&, const StandInTrack&);

StandIn made_by(Make make, std::vector<float> controls, const StandInTrack& track = {}) {
    StandInMaker maker{ByteView()};
    PluginInsert insert;
    insert.blockStart = 0x20;
    insert.controlValues = std::move(controls);
    return make(maker, insert, track);
}

bool notes(const StandIn& made, const std::string& beginning) {
    return std::ranges::any_of(made.notes,
                               [&](const auto& note) { return note.starts_with(beginning); });
}

TEST(Dynamics, BlocksAreThoseOfReaper7WhereTheSettingsAgree) {
    std::ifstream file("../shared/reaper/standins/reaper7_blocks.txt");
    if (!file) GTEST_SKIP() << "no blocks of REAPER's at hand";
    const float silence = static_cast<float>(std::pow(10, -7.5));
    const ReaCompSettings comp = {
        .ratio = 3.0F / 99, .attack = 0.006F, .release = 0.02F, .rms_size = 0.05F, .detector = {}};
    const ReaGateSettings gate = {
        .threshold = silence, .attack = 0.006F, .release = 0.02F, .floor = silence, .detector = {}};
    for (const FxSlot& slot : {reacomp_slot(comp, "A", "", 1), reagate_slot(gate, "A", "", 1)}) {
        SCOPED_TRACE(slot.name);
        file.clear();
        file.seekg(0);
        std::string line;
        while (std::getline(file, line) && line.find(slot.name) == std::string::npos) {
        }
        EXPECT_NE(line.find(slot.ident), std::string::npos);
        const auto text = [](const std::string& bytes) {
            return base64({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        };
        std::getline(file, line);
        EXPECT_EQ(line, "  " + text(slot.header));
        std::getline(file, line);
        // A gate whose floor is silence plays the rest in full, rounded or not.
        std::string state = slot.state;
        if (slot.name.find("Gate") != std::string::npos) {
            state.replace(8 + 4 * 10, 4, StateBytes().real(1).take());
        }
        EXPECT_EQ(line, "  " + text(state));
        std::getline(file, line);
        EXPECT_EQ(line, "  " + text(slot.tail));
    }
}

TEST(Dyn3Compressor, SettingsAreScaledAsMeasured) {
    auto controls = compressor_controls_at_rest();
    controls[0] = 12;
    controls[4] = 6.0206F;
    controls[6] = 1;
    for (const std::size_t filter : {7U, 10U}) controls[filter + 1] = controls[filter + 2] = 1;
    const StandIn made = made_by(make_dyn3_compressor, controls);
    ASSERT_EQ(made.slots.size(), 2U);
    EXPECT_EQ(made.slots[0].preset_name, "Dyn3 polarity");
    EXPECT_EQ(made.slots[1].title, "Dyn3 Compressor/Limiter (ReaComp)");
    EXPECT_EQ(made.slots[1].preset_name, "Dyn3 Compressor/Limiter 2:1");
    EXPECT_EQ(made.slots[1].guid_seed, (0x53540000U ^ 0x20U) + 1);
    const auto p = parameters_of(made.slots[1]);
    const struct {
        std::size_t at;
        double value;
    } cases[] = {{0, std::pow(10, (-20 + 0.337) / 20)},
                 {1, 1.0 / 99},
                 {2, 10 * 0.584 / 500},
                 {3, 100 * 0.4134 / 5000},
                 {6, 0.25},
                 {7, 0.004},
                 {8, 0},
                 {10, std::pow(10, -7.5)},
                 {11, std::pow(10, 6.0206 / 20)},
                 {14, 12 * 0.3575 / 24},
                 {17, 0.25}};
    for (const auto& c : cases) {
        EXPECT_NEAR(p[c.at], c.value, 2e-7 * std::max(c.value, 1e-9)) << c.at;
    }
    EXPECT_TRUE(made.notes.empty());

    controls[4] = 6.03F;
    controls[0] = 70;
    controls[1] = 300;
    controls[3] = 20;
    controls[8] = 0;
    const StandIn loud = made_by(make_dyn3_compressor, controls);
    ASSERT_EQ(loud.slots.size(), 3U);
    EXPECT_EQ(loud.slots[2].title, "Dyn3 Compressor/Limiter gain (Volume Adjustment)");
    EXPECT_EQ(loud.slots[2].preset_name, "Dyn3 gain +6.0 dB");
    const auto q = parameters_of(loud.slots[1]);
    EXPECT_EQ(q[1], 1);
    EXPECT_EQ(q[3], 1);
    EXPECT_EQ(q[6], 1);
    EXPECT_EQ(q[11], 1);
    EXPECT_EQ(q[14], 1);
    ASSERT_EQ(loud.notes.size(), 3U);
    EXPECT_TRUE(notes(loud, "Dyn3 side-chain band filter"));
    EXPECT_TRUE(notes(loud, "compressor time past"));
    EXPECT_TRUE(notes(loud, "compressor knee past"));
    controls = compressor_controls_at_rest();
    controls[4] = -6;
    EXPECT_EQ(parameters_of(made_by(make_dyn3_compressor, controls).slots[0])[11], 1);
}

TEST(Dyn3, ListensToTheKeyThatIsWired) {
    auto comp = compressor_controls_at_rest();
    auto gate = gate_controls_at_rest();
    auto expander = gate_controls_at_rest();
    expander[1] = 1.1F;
    comp[13] = gate[14] = expander[14] = 1;
    const float key = 0.0018450184725224972F;
    const struct {
        const char* name;
        StandInTrack track;
        float detector;
        std::uint32_t pin;  // the first of the detector's
        int notes;
        bool is_keyed;
        const char* expander;  // its line's fields from the third on; empty: it is a gate
    } cases[] = {{"wired", {.key_channel = 2}, key, 4, 0, true, "0 1 2 "},
                 {"wired behind six", {.width = 6, .key_channel = 6}, key, 64, 1, true, "0 0 2 "},
                 {"not wired", {}, key, 4, 1, false, ""},
                 {"not wired, wide", {.width = 6}, 0, 4, 2, false, "0 0 2 "}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        for (const bool is_gate : {false, true}) {
            const StandIn made = is_gate ? made_by(make_dyn3_gate, gate, c.track)
                                         : made_by(make_dyn3_compressor, comp, c.track);
            EXPECT_EQ(parameters_of(made.slots[0])[is_gate ? 7 : 8], c.detector);
            EXPECT_EQ(little_word(made.slots[0].header, 4 * (4 + 4 - 1)), c.pin);
            EXPECT_EQ(made.notes.size(), static_cast<std::size_t>(c.notes));
            EXPECT_EQ(made.is_keyed, c.is_keyed);
        }
        const FxSlot slot = made_by(make_dyn3_gate, expander, c.track).slots[0];
        if (*c.expander == '\0') {
            EXPECT_EQ(slot.title, "Dyn3 Expander/Gate (ReaGate)");
        } else {
            EXPECT_NE(slot.parameters.find(std::string("1.1000 ") + c.expander), std::string::npos);
        }
    }
}

TEST(Dyn3Gate, IsAnExpanderUnderItsSteepestRatio) {
    auto controls = gate_controls_at_rest();
    controls[1] = 9.98F;
    controls[7] = 1;
    controls[9] = controls[10] = 1;
    const StandIn expander = made_by(make_dyn3_gate, controls);
    EXPECT_EQ(expander.slots[0].title, "Dyn3 Expander/Gate (Downward Expander)");
    EXPECT_EQ(expander.slots[0].preset_name, "Dyn3 Expander/Gate 9.98:1");
    EXPECT_TRUE(
        expander.slots[0].parameters.starts_with("-30.000 9.9800 0 0 2 10.0000 100.0000 - "));
    EXPECT_EQ(std::ranges::count(expander.slots[0].parameters, ' '), 63);
    for (const char* note : {"expander depth", "expander hold", "Dyn3 look-ahead not carried",
                             "expander side-chain filter", "expander shallower"}) {
        EXPECT_TRUE(notes(expander, note)) << note;
    }
    controls = gate_controls_at_rest();
    controls[0] = -100;
    controls[1] = 1.2F;
    controls[4] = 0.0004F;
    EXPECT_TRUE(made_by(make_dyn3_gate, controls).notes.empty());
    controls[1] = 9.99F;
    const StandIn gate = made_by(make_dyn3_gate, controls);
    EXPECT_EQ(gate.slots[0].title, "Dyn3 Expander/Gate (ReaGate)");
    EXPECT_EQ(gate.notes, (std::vector<std::string>{
                              "expander at 1:10 or more written as a gate, with Pro Tools' depth "
                              "as its floor"}));
}

TEST(Dyn3Gate, SettingsAreScaledAsMeasured) {
    const struct {
        float range, attack, release;  // dB, ms, ms as written
    } cases[] = {{-80, 40, 27.5F}, {-20, 10, 100}, {-21, 10.5F, 100}, {-44, 22, 50}, {6, 10, 100}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.range);
        auto controls = gate_controls_at_rest();
        controls[0] = c.range;
        controls[7] = 1;
        const StandIn made = made_by(make_dyn3_gate, controls);
        const auto p = parameters_of(made.slots[0]);
        EXPECT_FLOAT_EQ(p[0], static_cast<float>(std::pow(10, -1.5)));
        EXPECT_FLOAT_EQ(p[1], c.attack / 500);
        EXPECT_FLOAT_EQ(p[2], c.release / 5000);
        EXPECT_FLOAT_EQ(p[3], 0.008F);
        EXPECT_FLOAT_EQ(p[4], 0.05F);
        EXPECT_FLOAT_EQ(p[9], static_cast<float>(std::pow(10, std::min(c.range, 0.0F) / 20)));
        EXPECT_FLOAT_EQ(p[10], 1 - p[9]);
        EXPECT_EQ(p[12], 1);
        EXPECT_FLOAT_EQ(p[16], 0.543307F);
        EXPECT_EQ(made.notes.size(), 1U);
    }
    auto controls = gate_controls_at_rest();
    controls[4] = 1.5F;
    EXPECT_TRUE(notes(made_by(make_dyn3_gate, controls), "gate time past"));
}

TEST(Dyn3, WritesNumbersWhateverTheControlsHold) {
    std::mt19937 random(5);
    for (int i = 0; i < 3000; ++i) {
        std::vector<float> controls(i % 2 == 0 ? 14 : 15);
        for (float& control : controls) control = std::bit_cast<float>(std::uint32_t(random()));
        const StandIn made = made_by(i % 2 == 0 ? make_dyn3_compressor : make_dyn3_gate, controls);
        for (const FxSlot& slot : made.slots) {
            EXPECT_EQ(slot.parameters.find("n"), std::string::npos);
            if (slot.form == SlotForm::js) continue;
            for (const float p : parameters_of(slot)) ASSERT_TRUE(std::isfinite(p));
        }
    }
}

}  // namespace
}  // namespace tanrove
