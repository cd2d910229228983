// Places on the palettes at their edges, and what holds for all of them.
#include "mix/palette_colours.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace tanrove {
namespace {

constexpr auto measured = ColourQuality::measured;
constexpr auto tinted = ColourQuality::tinted;
constexpr auto invented = ColourQuality::invented;
constexpr auto not_measured = ColourQuality::not_measured;
constexpr std::uint32_t none = 0;

TEST(PaletteColours, EachPlaceHasItsColourAndSaysHowItWasMade) {
    const struct {
        std::int32_t place;
        std::uint32_t track;
        ColourQuality track_quality;
        std::uint32_t clip;
        ColourQuality clip_quality;
    } cases[] = {
        {2, 0x1fd6699, tinted, none, not_measured},
        {5, 0x1d966d8, tinted, 0x1dbb1da, measured},
        {24, 0x168d8c0, invented, 0x168d8c0, invented},
        {26, 0x1fc0056, measured, 0x1fc0056, measured},
        {48, 0x1a8c090, invented, 0x1a8c090, invented},
        {72, 0x1e8a860, invented, 0x1e8a860, invented},
        {96, 0x1609030, invented, 0x1609030, invented},
        {0, 0x1282828, invented, 0x1282828, invented},
        {-1, 0x133bd71, invented, 0x133bd71, invented},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.place);
        ColourQuality quality = measured;
        EXPECT_EQ(trackColour(c.place, quality), c.track);
        EXPECT_EQ(quality, c.track_quality);
        EXPECT_EQ(clipColour(c.place, quality).value_or(none), c.clip);
        EXPECT_EQ(quality, c.clip_quality);
    }
}

TEST(PaletteColours, TheDarkThemeTakesMeasuredShadesAndDerivesTheOthers) {
    const struct {
        std::uint32_t classic, dark;
        bool measured;
    } colours[] = {{0x808080, 0x11b1b1b, false}, {0x1808080, 0x11b1b1b, false},
                   {0x000000, 0x1000000, false}, {0xffffff, 0x1595959, false},
                   {0xd7c090, 0x1443a24, true},  {0x1a2a5d8, 0x1232648, true}};
    for (const auto& c : colours) {
        SCOPED_TRACE(c.classic);
        EXPECT_EQ(darkClipColour(c.classic).colour, c.dark);
        EXPECT_EQ(darkClipColour(c.classic).measured, c.measured);
    }
    const struct {
        std::int32_t place;
        std::uint32_t tint;
        bool measured;
    } tints[] = {{93, 0x1d7c090, true}, {94, 0x1d2b39a, false}, {44, 0x1fff3c7, false}};
    for (const auto& c : tints) {
        EXPECT_EQ(clip_tint(c.place).colour, c.tint) << c.place;
        EXPECT_EQ(clip_tint(c.place).measured, c.measured) << c.place;
        EXPECT_EQ(darkClipColour(clip_tint(c.place).colour).measured, c.measured) << c.place;
    }
    EXPECT_TRUE(darkIndexColour(11)->measured);
    EXPECT_FALSE(darkIndexColour(47)->measured);
    EXPECT_FALSE(darkIndexColour(24) || darkIndexColour(0) || darkIndexColour(-5));
}

TEST(PaletteColours, WhateverIsStoredGivesAColourAndTheTablesAreAsMeasured) {
    constexpr auto least = std::numeric_limits<std::int32_t>::min();
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    ColourQuality quality = measured;
    for (const std::int32_t place : {least, least + 1, -300, -1, 0, 300, most}) {
        EXPECT_EQ(trackColour(place, quality) >> 24, 1U) << place;
        EXPECT_EQ(clipColour(place, quality), trackColour(place, quality)) << place;
    }
    // One wrong digit in any shade or row gives another sum.
    std::uint32_t sum = 0;
    const auto add = [&sum](std::uint32_t value) { sum = sum * 31 + value; };
    for (std::int32_t place = 1; place <= 96; ++place) {
        add(trackColour(place, quality));
        add(clipColour(place, quality).value_or(none));
        add(clip_tint(place).colour);
        add(darkIndexColour(place).value_or(DarkColour{}).colour);
        add(darkClipColour(clipColour(place, quality).value_or(none)).colour);
    }
    for (std::int64_t row = 1; row <= 17; ++row) add(static_cast<std::uint32_t>(rowIndex(row)));
    for (const std::int32_t place : {93, 87, 75, 57, 90, 84, 73, 81, 65, 69}) {
        EXPECT_TRUE(clip_tint(place).measured) << place;
        EXPECT_TRUE(darkClipColour(clip_tint(place).colour).measured) << place;
        add(darkClipColour(clip_tint(place).colour).colour);
    }
    EXPECT_EQ(sum, 802228291U);
}

}  // namespace
}  // namespace tanrove
