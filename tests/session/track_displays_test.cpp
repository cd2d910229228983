// Display records and track colours.
#include "session/track_displays.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::SessionBuilder;
using builder::TrackKind;
using builder::TrackSpec;

std::vector<TrackDisplay> displays_of(const Bytes& image) {
    return over_rows(image, readTrackDisplays);
}

TEST(ReadTrackDisplays, ASwitchIsOnOrOffAndAModeOneOfSix) {
    for (const unsigned value : {0U, 1U, 2U, 5U, 6U}) {
        SCOPED_TRACE(value);
        const Bytes name = builder::block(0x2619, {});
        const Bytes switches = ByteWriter().raw(name).u8(value).u8(value).u8(value).bytes();
        const Bytes record = builder::block(0x2015, {});
        const Bytes image = ByteWriter()
                                .block(0x261b, builder::block(0x102d, switches))
                                .raw(record)
                                .u8(value)
                                .bytes();
        const TrackDisplay display = displays_of(image).at(0);
        const auto expected = value > 1 ? std::nullopt : std::optional(value == 1);
        EXPECT_EQ(display.soloed, expected);
        EXPECT_EQ(display.trim_mode, expected);
        EXPECT_EQ(display.solo_safe, expected);
        EXPECT_EQ(display.automation_mode.has_value(), value < 6);
    }
}

TEST(ReadTrackDisplays, ACommentHasALimitAndARowFallsBackToTheLastBytes) {
    for (const std::size_t length : {0U, 1U, 4095U, 4096U}) {
        const Bytes image =
            SessionBuilder().track({.name = "Vox", .comment = std::string(length, 'c')}).image();
        EXPECT_EQ(displays_of(image).at(0).comment.size(), length > 4095 ? 0 : length);
    }
    const auto row_of = [](const Bytes& record) {
        return displays_of(ByteWriter().block(0x2621, {}).block(0x2015, record).bytes())
            .at(0)
            .display_row;
    };
    EXPECT_EQ(row_of(ByteWriter().zeros(9).u32(12).bytes()), 12);
    EXPECT_EQ(row_of(ByteWriter().block(0x2434, {}).u32(5).u32(12).bytes()), 5);
    EXPECT_EQ(row_of(ByteWriter().block(0x2434, {}).u32(5).bytes()), 5);
    EXPECT_EQ(row_of(ByteWriter().block(0x2434, {}).zeros(3).bytes()), 0);
    EXPECT_EQ(row_of(ByteWriter().u8(9).bytes()), 0);
}

TEST(ReadTrackDisplays, WithoutARecordForEachRowTheStripTableTellsWhoseTheyAre) {
    const Bytes image = SessionBuilder()
                            .track({.name = "Set", .kind = TrackKind::basic_folder})
                            .track({.name = "Low", .height = 10})
                            .track({.name = "High", .height = 20})
                            .top_level(builder::display_record({.name = "", .height = 30}, 3))
                            .image();
    const auto displays = displays_of(image);
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(displays[0].height, 20) << "the second entry of the table, the second record";
    EXPECT_EQ(displays[1].height, 30);
    EXPECT_EQ(displays[0].soloed, false) << "switches stand in the row itself";
}

TEST(ReadTrackColours, TheColourMovesWithTheCommentAndNoColourHasNoEntry) {
    for (const auto kind : {TrackKind::audio, TrackKind::midi}) {
        for (const auto* comment :
             {"", "a", "a comment that is a good deal longer than the mark"}) {
            SCOPED_TRACE(comment);
            const Bytes image =
                SessionBuilder()
                    .track({.name = "None", .kind = kind, .comment = comment})
                    .track({.name = "Red", .kind = kind, .comment = comment, .colour = 87})
                    .image();
            const auto colours = over_rows(image, readTrackColours);
            ASSERT_EQ(colours.size(), 1U);
            EXPECT_EQ(colours[0].name, "Red");
            EXPECT_EQ(colours[0].index, 87);
        }
    }
    for (int index = 20; index < 100; ++index) {
        const bool is_drawn = index >= 25 && index <= 95 && index != 48 && index != 72;
        EXPECT_EQ(is_track_palette_index(static_cast<std::int16_t>(index)), is_drawn) << index;
    }
}

TEST(ReadTrackColours, AMarkThatEndsTooEarlyDoesNotMoveTheColour) {
    constexpr std::size_t child_end = 27;  // behind the row, and the head and child of the record
    for (const std::size_t mark_bytes : {1U, 2U}) {  // the mark ends at 23 and at 24
        ByteWriter record;
        record.block(0x2037, {}).zeros(13).block(0x2104, Bytes(mark_bytes)).pad_to(60);
        Bytes image = ByteWriter().block(0x261b, {}).block(0x2015, record.bytes()).bytes();
        image[child_end + (mark_bytes == 1 ? 23 : 25)] = 30;
        const auto colours = over_rows(image, readTrackColours);
        ASSERT_EQ(colours.size(), 1U);
        EXPECT_EQ(colours[0].index, 30) << mark_bytes;
    }
}

}  // namespace
}  // namespace tanrove
