// Memory locations: kinds, positions, second copies and the forms of their colours.
#include "session/memory_locations.hpp"

#include <gtest/gtest.h>

#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::location_block;
using builder::LocationForm;
using builder::LocationSpec;
using builder::SessionBuilder;

std::vector<MemoryLocation> read(const Bytes& image) {
    return readMemoryLocations(BlockIndex(ByteView(image)));
}

TEST(MemoryLocations, ASessionKeepsTwoCopiesAndWeKeepOne) {
    const auto locations = read(SessionBuilder()
                                    .marker("Verse", 3840000)
                                    .selection("Chorus", 7680000, 1LL << 45)
                                    .marker("Verse", 3840000)
                                    .marker_in_samples("Sync", 96000)
                                    .image());
    ASSERT_EQ(locations.size(), 4U) << "one name and place under two numbers are two locations";
    EXPECT_EQ(locations[0].name, "Verse");
    EXPECT_EQ(locations[0].kind, LocationKind::marker);
    EXPECT_EQ(locations[0].start, 3840000);
    EXPECT_FALSE(locations[0].in_samples);
    EXPECT_EQ(locations[1].kind, LocationKind::selection);
    EXPECT_EQ(locations[1].end, 35184372088832.0) << "beyond five bytes";
    EXPECT_EQ(locations[2].number, 3U);
    EXPECT_TRUE(locations[3].in_samples);
    EXPECT_EQ(locations[3].start, 96000);
}

TEST(MemoryLocations, KindsOfBothGenerations) {
    for (int kind = 0; kind < 256; ++kind) {
        SCOPED_TRACE(kind);
        const auto locations =
            read(location_block({.name = "A", .kind = static_cast<std::uint8_t>(kind)}));
        const bool is_kind = kind <= 2 || (kind >= 8 && kind <= 10);
        ASSERT_EQ(locations.size(), is_kind ? 1U : 0U);
        if (is_kind) {
            EXPECT_EQ(static_cast<int>(locations[0].kind), kind % 8);
        }
    }
}

TEST(MemoryLocations, APositionInFrontOfTheTicksIsInSamplesOrNothing) {
    const std::int64_t tick = 1000000000000;  // as samples are stored, so that it reads as tick 0
    const struct {
        std::uint8_t flags;
        std::int64_t start, end;
        bool taken, in_samples;
    } cases[] = {
        {2, 0, 0, true, true},      {3, 500, 400, false, false},  {2, 500, tick, true, true},
        {2, tick, 5, false, false}, {2, tick, tick, true, false}, {1, -1, 0, false, false},
        {253, 0, -1, false, false}, {255, 7, 9, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << int{c.flags} << ' ' << c.start << ' ' << c.end);
        const auto locations =
            read(location_block({.name = "A", .flags = c.flags, .start = c.start, .end = c.end}));
        ASSERT_EQ(locations.size(), c.taken ? 1U : 0U);
        if (c.taken) {
            EXPECT_EQ(locations[0].in_samples, c.in_samples);
        }
    }
}

TEST(MemoryLocations, NamesAndBodiesHaveLimits) {
    EXPECT_EQ(read(location_block({.name = ""})).size(), 1U);
    EXPECT_EQ(read(location_block({.name = std::string(128, 'n')})).size(), 1U);
    EXPECT_TRUE(read(location_block({.name = std::string(129, 'n')})).empty());
    const Bytes whole = location_block({.name = "A"});
    for (const std::size_t bytes : {36U, 35U}) {  // start and end just fit, and do not
        const Bytes cut(whole.begin() + 9, whole.begin() + static_cast<std::ptrdiff_t>(bytes));
        EXPECT_EQ(read(builder::block(0x2077, cut)).size(), bytes == 36 ? 1U : 0U);
    }
}

TEST(MemoryLocations, TheColourDependsOnWhatFollowsTheColourBlocks) {
    const auto palette = LocationForm::palette;
    const struct {
        LocationForm form;
        std::uint16_t colour;
        std::optional<std::uint32_t> rgb;
        int blocks;
        std::int32_t slot, index, expected_rgb;
    } cases[] = {
        {LocationForm::slot, 17, {}, 1, 17, -1, -1},
        {LocationForm::slot_2021, 17, {}, 2, 17, -1, -1},
        {LocationForm::slot, 0xfffe, {}, 2, -2, -1, -1},
        {LocationForm::other, 17, {}, 1, -2, -1, -1},
        {palette, 12, 0xffb300, 1, -2, 12, 0xffb300},
        {palette, 12, 0x010203, 3, -2, 12, 0x010203},
        {palette, 12, {}, 1, -2, 12, -1},
        {palette, 12, {}, 2, -2, -1, -1},
        {palette, 0xfffe, {}, 1, -2, -1, -1},
        {palette, 12, {}, 0, -2, -1, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << static_cast<int>(c.form) << ' ' << c.colour << ' ' << c.blocks);
        LocationSpec spec = {.name = "A", .form = c.form, .colour = c.colour, .rgb = c.rgb};
        spec.colour_blocks = c.blocks;
        // Colour blocks of others around it must not be taken for its own.
        const Bytes stray = builder::block(0x2506, Bytes(8), 3);
        const auto locations =
            read(ByteWriter().raw(stray).raw(location_block(spec)).raw(stray).bytes());
        ASSERT_EQ(locations.size(), 1U);
        EXPECT_EQ(locations[0].colour_slot, c.slot);
        EXPECT_EQ(locations[0].colour_index, c.index);
        EXPECT_EQ(locations[0].colour_rgb, c.expected_rgb);
    }
}

}  // namespace
}  // namespace tanrove
