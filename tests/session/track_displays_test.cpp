// Display records and track colours.
#include "session/track_displays.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;
std::vector<TrackDisplay> displays_of(const Bytes& image) {
    return over_rows(image, readTrackDisplays);
}

TEST(ReadTrackDisplays, ASwitchIsOnOrOffAndAModeOneOfSix) {
    const std::pair<unsigned, const char*> cases[] = {
        {0, "0 0 0 1"}, {1, "1 1 1 1"}, {2, "- - - 1"}, {5, "- - - 1"}, {6, "- - - 0"}};
    for (const auto& [value, text] : cases) {
        const Bytes name = block(0x2619, {});
        const Bytes switches = ByteWriter().raw(name).u8(value).u8(value).u8(value).bytes();
        ByteWriter image;
        image.block(0x261b, block(0x102d, switches)).block(0x2015, {}).u8(value);
        const TrackDisplay d = displays_of(image.bytes()).at(0);
        EXPECT_EQ(fields(d.soloed, d.trim_mode, d.solo_safe, d.automation_mode.has_value()), text);
    }
}

TEST(ReadTrackDisplays, ACommentHasALimitAndARowFallsBackToTheLastBytes) {
    for (const std::size_t length : {0U, 1U, 65535U, 65536U}) {
        const Bytes image =
            SessionBuilder().track({.name = "Vox", .comment = std::string(length, 'c')}).image();
        EXPECT_EQ(displays_of(image).at(0).comment.size(), length > 65535 ? 0 : length);
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

TEST(ReadTrackDisplays, WithoutARecordForEachRowItIsTheOneInTheRowElseTheOneOfItsPlaceInTheTable) {
    const auto heights_in = [](const Bytes& image) {
        std::string text;
        for (const auto& d : displays_of(image)) text += fields(d.height) + ", ";
        return text;
    };
    const std::vector<TrackSpec> tracks = {{.name = "Set", .kind = TrackKind::basic_folder},
                                           {.name = "Low", .height = 10},
                                           {.name = "High", .kind = TrackKind::aux, .height = 20},
                                           {.name = "Keys", .kind = TrackKind::midi, .height = 30}};
    SessionBuilder session;
    for (const auto& track : tracks) session.track(track);
    EXPECT_EQ(heights_in(session.top_level(display_record({.height = 40}, 3)).image()),
              "10, 20, 30, ");
    ByteWriter apart;
    apart.raw(strip_table_block(tracks, StripTableForm::before_2022));
    for (const auto* name : {"High", "Low"}) {
        apart.block(0x2620, block(0x2619, ByteWriter().counted(name).bytes()));
    }
    for (const auto& track : tracks) apart.raw(display_record(track, 0));
    EXPECT_EQ(heights_in(apart.bytes()), "20, 10, ");
}

std::string colours_of(const Bytes& image) {
    std::string text;
    for (const auto& c : over_rows(image, readTrackColours)) text += fields(c.name, c.index) + ",";
    return text;
}

TEST(ReadTrackColours, TheColourMovesWithTheCommentAndNoColourHasNoEntry) {
    for (const auto kind : {TrackKind::audio, TrackKind::midi, TrackKind::video}) {
        for (const auto* comment : {"", "a", "a comment a good deal longer than the mark"}) {
            SessionBuilder session;
            session.track({.name = "None", .kind = kind, .comment = comment});
            session.track({.name = "Red", .kind = kind, .comment = comment, .colour = 87});
            EXPECT_EQ(colours_of(session.image()), "Red 87,") << comment;
        }
    }
    for (int index = 20; index < 100; ++index) {
        const bool is_drawn = index >= 25 && index <= 95 && index != 48 && index != 72;
        EXPECT_EQ(is_track_palette_index(static_cast<std::int16_t>(index)), is_drawn) << index;
    }
    constexpr std::size_t child_end = 27;  // behind the row, and the head and child of the record
    for (const std::size_t mark_bytes : {1U, 2U}) {  // only the second ends late enough, at 24
        ByteWriter record;
        record.block(0x2037, {}).zeros(13).block(0x2104, Bytes(mark_bytes)).pad_to(60);
        Bytes image = ByteWriter().block(0x261b, {}).block(0x2015, record.bytes()).bytes();
        image[child_end + (mark_bytes == 1 ? 23 : 25)] = 30;
        EXPECT_EQ(colours_of(image), " 30,") << mark_bytes;
    }
}

}  // namespace
}  // namespace tanrove
