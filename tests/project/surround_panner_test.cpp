// The state of the surround panner, decoded again: each input where Pro Tools has it, each speaker
// where it stands.
#include "project/surround_panner.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <tuple>

#include "plugins/state_frames.hpp"

namespace tanrove {
namespace {

/// Reads the bytes of a state one after the other.
class StateReader {
public:
    explicit StateReader(std::string_view bytes) : bytes_(bytes) {}

    std::int32_t word() {
        const auto value = static_cast<std::int32_t>(little_word(bytes_, at_));
        at_ += 4;
        return value;
    }
    double real() {
        std::uint64_t bits = little_word(bytes_, at_ + 4);
        bits = bits << 32 | little_word(bytes_, at_);
        at_ += 8;
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    std::string text() {
        const auto length = static_cast<std::size_t>(word());
        const std::string read(bytes_.substr(std::min(at_, bytes_.size()), length));
        at_ += length;
        return read;
    }
    std::vector<std::int32_t> words(std::size_t count) {
        std::vector<std::int32_t> read;
        while (read.size() < count) read.push_back(word());
        return read;
    }
    bool is_at_end() const { return at_ == bytes_.size(); }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
};

using Reals = std::vector<double>;
using Words = std::vector<std::int32_t>;

/// Gain, place, height and reach of one input or speaker.
Reals reals(StateReader& state, std::size_t count) {
    Reals read;
    while (read.size() < count) read.push_back(state.real());
    return read;
}

void expect_near(const Reals& read, const Reals& expected) {
    ASSERT_EQ(read.size(), expected.size());
    for (std::size_t i = 0; i < read.size(); ++i) EXPECT_NEAR(read[i], expected[i], 1e-12) << i;
}

/// Where a source stands that is so far left or right on both lines and so far in front.
Reals expected_input(const Words& numbers, double lfe_gain) {
    const double rear_share = (100.0 - numbers[2]) / 200;
    const auto mixed = [&](int front, int rear) {
        return front * (1 - rear_share) + rear * rear_share;
    };
    const double reach = std::min<double>(mixed(numbers[3], numbers[4]), numbers[5]);
    return {
        1, lfe_gain, mixed(numbers[0], numbers[1]) / 100, numbers[2] / 100.0, 0, 1 - reach / 100,
        0};
}

const std::map<std::string, std::pair<double, double>> places = {
    {"L", {-1, 1}},   {"R", {1, 1}},   {"C", {0, 1}},     {"Lc", {-.5, 1}}, {"Rc", {.5, 1}},
    {"Ls", {-1, -1}}, {"Rs", {1, -1}}, {"S", {0, -1}},    {"Cs", {0, -1}},  {"Lss", {-1, 0}},
    {"Rss", {1, 0}},  {"LFE", {0, 0}}, {"Lsr", {-1, -1}}, {"Rsr", {1, -1}}, {"Other", {0, 0}}};

void expect_state(const PannerPlan& plan, const Words& left, const Words& right) {
    const std::string bytes = panner_state(plan);
    StateReader state(bytes);
    const int inputs = plan.is_stereo ? 2 : 1;
    EXPECT_EQ(state.words(8), (Words{5, 0, 5, 0, 0, 0, 1, inputs}));
    expect_near(reals(state, 2), {plan.center_percent / 100.0, plan.is_stereo ? 0.25 : 1});
    EXPECT_EQ(state.words(2), (Words{inputs, plan.channels}));
    const bool is_silent = !plan.has_lfe || plan.lfe_db <= -143.9;
    const double gain = is_silent ? 0 : std::min(std::exp(plan.lfe_db / 20 * std::log(10)), 4.0);
    for (int i = 0; i < inputs; ++i) {
        expect_near(reals(state, 7), expected_input(i == 0 ? left : right, gain));
        EXPECT_EQ(state.word(), i == 0 ? 0 : 8);
        EXPECT_EQ(state.text(), i == 0 ? "channel 1" : "channel 2");
        EXPECT_EQ(state.word(), i == 0 ? -986896 : -57312);
    }
    for (const std::string& speaker : plan.speakers) {
        const auto [x, y] = places.at(speaker);
        expect_near(reals(state, 5), {1, x, y, 0, 1});
        EXPECT_EQ(state.word(), speaker == "LFE" ? 4 : 0);
        EXPECT_EQ(state.text(), speaker);
    }
    EXPECT_EQ(state.real(), -3);
    EXPECT_EQ(state.word(), 0);
    EXPECT_TRUE(state.is_at_end());
}

TEST(PannerState, HoldsEachInputAndSpeakerInItsPlace) {
    std::mt19937 random(3);
    const auto number = [&](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    const auto numbers = [&] {
        Words drawn;
        for (int i = 0; i < 6; ++i) drawn.push_back(number(i < 3 ? -100 : 0, 100));
        if (number(0, 3) == 0) drawn[2] = number(0, 1) * 200 - 100;
        return drawn;
    };
    std::vector<std::string> names;
    for (const auto& [name, place] : places) names.push_back(name);
    for (int round = 0; round < 300; ++round) {
        PannerPlan plan;
        const Words left = numbers();
        const Words right = numbers();
        plan.is_stereo = round % 2 == 1;
        std::tie(plan.front_x, plan.rear_x, plan.front_rear) = std::tie(left[0], left[1], left[2]);
        std::tie(plan.front_divergence, plan.rear_divergence, plan.front_rear_divergence) =
            std::tie(left[3], left[4], left[5]);
        std::tie(plan.right_front_x, plan.right_rear_x, plan.right_front_rear) =
            std::tie(right[0], right[1], right[2]);
        std::tie(plan.right_front_divergence, plan.right_rear_divergence,
                 plan.right_front_rear_divergence) = std::tie(right[3], right[4], right[5]);
        plan.center_percent = number(0, 100);
        plan.side_percent = 0.25;
        plan.has_lfe = number(0, 2) > 0;
        plan.lfe_db = number(-1445, 180) / 10.0;
        std::ranges::shuffle(names, random);
        plan.speakers.assign(names.begin(), names.begin() + number(3, 10));
        plan.channels = static_cast<std::int32_t>(plan.speakers.size());
        expect_state(plan, left, right);
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace tanrove
