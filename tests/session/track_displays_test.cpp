// Display records and track colours, and every reader of tracks and strips on the real sessions.
#include "session/track_displays.hpp"

#include <gtest/gtest.h>

#include "session/inactive_tracks.hpp"
#include "session/master_name.hpp"
#include "session/strip_table.hpp"
#include "session/track_names.hpp"
#include "session/track_table.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::SessionBuilder;
using builder::TrackKind;
using builder::TrackSpec;

std::vector<TrackDisplay> displays_of(const Bytes& image) {
    const BlockIndex index{ByteView(image)};
    return readTrackDisplays(index, readStripRows(index).rows);
}

std::vector<TrackColour> colours_of(const Bytes& image) {
    const BlockIndex index{ByteView(image)};
    return readTrackColours(index, readStripRows(index).rows);
}

TEST(ReadTrackDisplays, GivesBackWhatEachTrackShows) {
    const Bytes image = SessionBuilder()
                            .track({.name = "Plain"})
                            .track({.name = "Vox",
                                    .hidden = true,
                                    .height = 300,
                                    .comment = "two\nlines",
                                    .soloed = true,
                                    .automation_mode = 5,
                                    .trim = true})
                            .track({.name = "Keys",
                                    .kind = TrackKind::midi,
                                    .height = 92,
                                    .comment = "upright",
                                    .solo_safe = true,
                                    .automation_mode = 6})
                            .image();
    const auto displays = displays_of(image);
    ASSERT_EQ(displays.size(), 3U);
    EXPECT_EQ(displays[0].soloed, false);
    EXPECT_EQ(displays[0].solo_safe, false);
    EXPECT_EQ(displays[0].automation_mode, AutomationMode::read);
    EXPECT_EQ(displays[0].trim_mode, false);
    EXPECT_FALSE(displays[1].shown);
    EXPECT_EQ(displays[1].height, 300);
    EXPECT_EQ(displays[1].display_row, 2);
    EXPECT_EQ(displays[1].soloed, true);
    EXPECT_EQ(displays[1].automation_mode, AutomationMode::touch_latch);
    EXPECT_EQ(displays[1].trim_mode, true);
    EXPECT_EQ(displays[1].comment, "two\nlines");
    EXPECT_EQ(displays[2].display_row, 3);
    EXPECT_EQ(displays[2].solo_safe, true);
    EXPECT_EQ(displays[2].automation_mode, std::nullopt);
    EXPECT_EQ(displays[2].comment, "upright");
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
            const auto colours = colours_of(image);
            ASSERT_EQ(colours.size(), 1U);
            EXPECT_EQ(colours[0].name, "Red");
            EXPECT_EQ(colours[0].index, 87);
        }
    }
    for (const int index : {25, 47, 49, 71, 73, 95})
        EXPECT_TRUE(is_track_palette_index(static_cast<std::int16_t>(index)));
    for (const int index : {24, 48, 72, 96})
        EXPECT_FALSE(is_track_palette_index(static_cast<std::int16_t>(index)));
}

struct RealTrack {
    std::string original_name;
    std::string name;
    std::uint16_t type;
    std::size_t channels;  ///< 0: not in the track list of the clip data
    std::uint16_t height;
};

struct RealSession {
    std::string file;
    std::vector<RealTrack> tracks;
};

void compare_with(const BlockIndex& index, const RealSession& real) {
    const auto read = readStripRows(index);
    const auto displays = readTrackDisplays(index, read.rows);
    const auto table = readStripTable(index);
    const auto list = readTrackNames(index);
    EXPECT_TRUE(read.bound);
    ASSERT_EQ(read.rows.size(), real.tracks.size());
    ASSERT_EQ(table.size(), real.tracks.size());
    std::vector<std::string> names;
    std::size_t in_list = 0;
    for (std::size_t i = 0; i < real.tracks.size(); ++i) {
        const RealTrack& track = real.tracks[i];
        SCOPED_TRACE(track.name);
        names.push_back(track.name);
        EXPECT_EQ(read.rows[i].original_name, track.original_name);
        EXPECT_EQ(read.rows[i].current_name, track.name);
        EXPECT_EQ(static_cast<std::uint16_t>(read.rows[i].type), track.type);
        EXPECT_TRUE(read.rows[i].active);
        EXPECT_FALSE(read.rows[i].is_aux);
        EXPECT_EQ(table[i].name, track.name);
        EXPECT_EQ(table[i].width, track.channels == 2 ? 1 : 0);
        EXPECT_TRUE(table[i].width_is_code);
        EXPECT_NE(table[i].identity, 0U);
        EXPECT_TRUE(displays[i].shown);
        EXPECT_EQ(displays[i].height, track.height);
        EXPECT_EQ(displays[i].display_row, static_cast<std::int32_t>(i) + 1);
        EXPECT_EQ(displays[i].soloed, false);
        EXPECT_EQ(displays[i].solo_safe, false);
        EXPECT_EQ(displays[i].automation_mode, AutomationMode::read);
        EXPECT_EQ(displays[i].trim_mode, false);
        if (track.channels == 0) continue;
        ASSERT_LT(in_list, list.size());
        EXPECT_EQ(list[in_list].name, track.name);
        EXPECT_EQ(list[in_list].channels.size(), track.channels);
        EXPECT_NE(list[in_list++].identity, 0U);
    }
    EXPECT_EQ(in_list, list.size());
    EXPECT_EQ(readTrackTable(index, names, read).names, names);
    EXPECT_TRUE(readTrackColours(index, read.rows).empty());
    EXPECT_TRUE(readVoiceOffNames(index, read.rows).empty());
    EXPECT_TRUE(readInactiveNames(index).empty());
    EXPECT_EQ(readMasterName(index), "");
}

TEST(StripReaders, RealSessionsHaveTheTracksThatTheyShow) {
    const RealSession sessions[] = {
        {"RegionTest.ptx",
         {{"mysticMountain_Act1.L", "Track_Name", 0x261b, 1, 36},
          {"Audio 1", "Audio 1", 0x261b, 1, 36},
          {"Audio 2", "Audio 2", 0x261b, 2, 36},
          {"Audio 3", "Audio 3", 0x261b, 2, 36}}},
        {"TestPTX.ptx",
         {{"monoTone", "monoTone", 0x261b, 1, 92},
          {"stereoTone", "stereoTone", 0x261b, 2, 92},
          {"MIDI 1", "MIDI 1", 0x2620, 0, 300},
          {"MIDI 2", "MIDI 2", 0x2620, 0, 300},
          {"MIDI 3", "MIDI 3", 0x2620, 0, 300}}},
        {"TempoTimeKeySig.ptx",
         {{"Audio 1", "Audio 1", 0x261b, 1, 92}, {"Audio 2", "Audio 2", 0x261b, 1, 92}}},
        {"Untitled32.ptx", {}}};
    for (const auto& real : sessions) {
        SCOPED_TRACE(real.file);
        TANROVE_REAL_SESSION(image, real.file);
        compare_with(BlockIndex(ByteView(image)), real);
    }
}

}  // namespace
}  // namespace tanrove
