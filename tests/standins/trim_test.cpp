// Trim: its records, its gain there and back, and the polarity that several of them add up to.
#include "standins/trim.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>

#include "standins/trim_polarity.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

/// A Trim in an image of its own; the state begins `cut` bytes before its end.
struct StoredTrim {
    explicit StoredTrim(const std::vector<TrimSpec>& channels, bool is_older = false,
                        std::size_t cut = 0)
        : image(trim_state(channels, is_older)) {
        insert.code = "DigiTrim";
        insert.chunkLimit = image.size() - cut;
    }
    std::vector<TrimChannel> channels() const { return read_trim(insert, ByteView(image)); }
    FxSlot slot(std::size_t first_channel = 0) const {
        StandInMaker maker{ByteView(image)};
        return make_trim(maker, insert, {.first_channel = first_channel}).slots.front();
    }
    Bytes image;
    PluginInsert insert;
};

/// The word that a level in dB is stored as, straight between the measured ones.
double word_of(double db) {
    const double levels[] = {-12, -6, -3, 0, 3, 6};
    const double words[] = {-161638556, 463923640, 778803940, 1093684240, 1635278356, 2147483646};
    std::size_t i = 0;
    while (i < 4 && db > levels[i + 1]) ++i;
    return words[i] + (words[i + 1] - words[i]) * (db - levels[i]) / (levels[i + 1] - levels[i]);
}

TEST(Trim, GainsGoThereAndBack) {
    EXPECT_EQ(trim_gain(1093684240).db, 0);
    EXPECT_EQ(trim_gain(0x7fffffff).db, 6);
    EXPECT_FALSE(trim_gain(-161638556).below_measured);
    EXPECT_TRUE(trim_gain(-161638557).below_measured);
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        const auto word = static_cast<std::int32_t>(random());
        const StoredTrim trim(std::vector{TrimSpec{.gain_word = word}});
        const FxSlot slot = trim.slot();
        // REAPER's slider doubles at 6; its line has six decimals.
        const double db = std::stod(slot.parameters) * 20 * std::log10(2.0) / 6;
        EXPECT_NEAR(word_of(db), word, 400);
        char name[64];
        std::snprintf(name, sizeof name, "Avid Trim %+.2f dB", trim_gain(word).db);
        EXPECT_EQ(slot.preset_name, name);
        EXPECT_EQ(std::count(slot.parameters.begin(), slot.parameters.end(), ' '), 63);
        EXPECT_NE(slot.parameters.find(" 150 - "), std::string::npos);
    }
}

TEST(Trim, ReadsARecordForEachChannel) {
    const TrimSpec inverted = {.gain_word = 463923640, .inverted = true};
    EXPECT_EQ(StoredTrim({inverted, {}}).channels().size(), 2U);
    EXPECT_TRUE(StoredTrim({inverted, {}}).channels()[0].inverted);
    EXPECT_FALSE(StoredTrim({inverted, {}}).channels()[1].inverted);
    EXPECT_FALSE(StoredTrim({inverted, inverted}, true).channels()[0].inverted);
    EXPECT_FALSE(StoredTrim({inverted}, false, 1).channels()[0].inverted) << "half a word";
    EXPECT_EQ(StoredTrim({inverted, inverted}, true, 1).channels().size(), 1U);
    EXPECT_TRUE(StoredTrim({inverted}, true, 1).channels().empty());
    EXPECT_EQ(StoredTrim({{}, inverted}).slot(1).preset_name, "Avid Trim -6.00 dB");
    EXPECT_EQ(StoredTrim(std::vector{TrimSpec{}}).slot(1).preset_name, "Avid Trim +0.00 dB")
        << "stands for all";
    const StoredTrim trim(std::vector{TrimSpec{}});
    StandInMaker maker{ByteView(trim.image)};
    EXPECT_NE(maker.product_of(trim.insert, {.width = 2}), nullptr);
    EXPECT_EQ(maker.product_of(trim.insert, {.width = 3}), nullptr);
}

// Each Trim as its bits say: 1 inverts the left channel, 2 the right, 4 it is linked (the left
// stands for both), 8 it is bypassed.
TEST(TrimPolarity, AddsUpChannelByChannel) {
    constexpr int trims = 2, kinds = 16;
    for (int combination = 0; combination < kinds * kinds; ++combination) {
        SCOPED_TRACE(combination);
        std::vector<TrackTrim> found;
        int left = 0, right = 0, inverting = 0, off = 0;
        for (int i = 0; i < trims; ++i) {
            const int bits = i == 0 ? combination % kinds : combination / kinds;
            const bool is_linked = (bits & 4) != 0, plays = (bits & 8) == 0;
            TrackTrim trim{{{0, (bits & 1) != 0}, {0, (bits & 2) != 0}}, plays};
            if (is_linked) trim.channels.pop_back();
            const int in_left = bits & 1, in_right = is_linked ? in_left : bits >> 1 & 1;
            left += plays ? in_left : 0;
            right += plays ? in_right : 0;
            const bool inverts = (in_left | in_right) != 0;
            (plays ? inverting : off) += inverts ? 1 : 0;
            found.push_back(trim);
        }
        const bool is_left = left % 2 != 0, is_right = right % 2 != 0;
        const TrackPolarity stereo = track_polarity(found, 2);
        EXPECT_EQ(stereo.inverts_track, is_left && is_right);
        EXPECT_EQ(stereo.one_side == InvertedSide::left, is_left && !is_right);
        EXPECT_EQ(stereo.one_side == InvertedSide::right, is_right && !is_left);
        EXPECT_EQ(stereo.switched_off, off);
        EXPECT_EQ(stereo.cancels_out, inverting == 2 && !is_left && !is_right);
        EXPECT_FALSE(stereo.mixed_wide);
        EXPECT_EQ(track_polarity(found, 1).inverts_track, is_left);
        EXPECT_EQ(track_polarity(found, 6).mixed_wide, is_left != is_right);
    }
    const TrackPolarity centre = track_polarity({{{{0, false}, {0, false}, {0, true}}, true}}, 3);
    EXPECT_TRUE(centre.mixed_wide);
    EXPECT_EQ(centre.one_side, InvertedSide::none);
}

}  // namespace
}  // namespace tanrove
