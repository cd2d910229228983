// What MIDI and instrument tracks are set to: fader, pan and patch, outputs, instruments, real-time
// properties.
#include <gtest/gtest.h>

#include "session/instrument_links.hpp"
#include "session/midi_lanes.hpp"
#include "session/midi_outputs.hpp"
#include "session/midi_track_settings.hpp"
#include "session/real_time_properties.hpp"
#include "support/damaged_sessions.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::MidiSettingsSpec;
using builder::RealTimeSpec;
using builder::SessionBuilder;
using builder::TrackKind;

TEST(ReadMidiSettings, ATrackHasWhatItsRecordHasRoomFor) {
    const Bytes image =
        SessionBuilder()
            .track({.name = "Vox"})
            .track({.name = "Full",
                    .kind = TrackKind::midi,
                    .midi_settings = {.volume = 127, .pan = 0, .patch = 5, .output = -3}})
            .track({.name = "Unset",
                    .kind = TrackKind::instrument,
                    .midi_settings = {.volume = -1, .pan = -128, .patch = -128}})
            .image();
    const BlockIndex index{ByteView(image)};
    const auto settings = readMidiSettings(index, readStripRows(index).rows);
    const std::int32_t expected[3][4] = {{-1, -1, -1, 0}, {127, 0, 5, -3}, {-1, -1, -1, 0}};
    ASSERT_EQ(settings.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(settings[i].volume, expected[i][0]);
        EXPECT_EQ(settings[i].pan, expected[i][1]);
        EXPECT_EQ(settings[i].patch, expected[i][2]);
        EXPECT_EQ(settings[i].output, expected[i][3]);
    }
    for (const std::size_t payload : {13U, 14U, 16U, 17U}) {
        SCOPED_TRACE(payload);
        const Bytes record = builder::block(0x2036, Bytes(payload, 7));
        const Bytes row = ByteWriter().block(0x2620, record).zeros(20).bytes();
        const BlockIndex short_index{ByteView(row)};
        const auto read = readMidiSettings(short_index, readStripRows(short_index).rows).at(0);
        EXPECT_EQ(read.volume, payload < 14 ? -1 : 7);
        EXPECT_EQ(read.pan, payload < 14 ? -1 : 7);
        EXPECT_EQ(read.patch, payload < 17 ? -1 : 7);
        EXPECT_EQ(read.output != 0, payload >= 16);
    }
}

TEST(CountOtherMidiLanes, CountsLanesWithPointsBesideTheMuteOfMidiTracksAlone) {
    const Bytes moved = builder::lane_record({.points = {{0, 1}}});
    const Bytes lanes = ByteWriter()
                            .block(0x2611, ByteWriter().raw(moved).raw(moved).bytes())
                            .raw(builder::lane_record({.points = {}}))
                            .raw(moved)
                            .bytes();
    const Bytes image = SessionBuilder()
                            .track({.name = "Vox", .mixer = lanes})
                            .track({.name = "Keys", .kind = TrackKind::midi, .mixer = lanes})
                            .image();
    const BlockIndex index{ByteView(image)};
    EXPECT_EQ(countOtherMidiLanes(index, readStripRows(index).rows), 2U);
}

TEST(ReadMidiOutputs, EachOutputKeepsItsPlaceInTheList) {
    const std::string longest(199, 'n');
    const Bytes image =
        builder::midi_outputs_block({{.name = "Synth", .number = 3, .node = -7},
                                     {},
                                     {.name = longest, .port = 9},
                                     {.name = longest + 'n', .port = 1},
                                     {.name = "Beside", .node = 5, .node_beside_name = true}});
    const auto outputs = readMidiOutputs(BlockIndex{ByteView(image)});
    const MidiOutput expected[] = {{"Synth", 3, true, -7, 0},
                                   {"", 0, false, 0, 0},
                                   {longest, 1, false, 0, 9},
                                   {"", 0, false, 0, 1},
                                   {"Beside", 1, true, 5, 0}};
    ASSERT_EQ(outputs.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(outputs[i].name, expected[i].name);
        EXPECT_EQ(outputs[i].number, expected[i].number);
        EXPECT_EQ(outputs[i].is_plugin_node, expected[i].is_plugin_node);
        EXPECT_EQ(outputs[i].node_value, expected[i].node_value);
        EXPECT_EQ(outputs[i].port_code, expected[i].port_code);
    }
}

TEST(ReadInstrumentLinks, AMidiTrackNamesAPluginOrTheTrackOfItsInstrument) {
    SessionBuilder session;
    session.midi_output({.name = "Port", .port = 1}).midi_output({.name = "Node", .node = 4});
    session.midi_output({.node = 5, .node_beside_name = true});
    const auto track = [&](const char* name, TrackKind kind, const MidiSettingsSpec& settings) {
        session.track({.name = name, .kind = kind, .midi_settings = settings});
    };
    track("Organ", TrackKind::instrument, {.identity = 0x1122334455667788});
    track("Null", TrackKind::instrument, {.identity = 0});
    track("to port", TrackKind::midi, {.output = 1});
    track("to node", TrackKind::midi, {.output = 2});
    track("to no name", TrackKind::midi, {.output = 3});
    track("past the list", TrackKind::midi, {.output = 4});
    track("below it", TrackKind::midi, {.output = -1});
    track("to organ", TrackKind::midi, {.plays_instrument = true, .identity = 0x1122334455667788});
    track("to no track", TrackKind::midi, {.plays_instrument = true, .identity = 1});
    track("to nothing", TrackKind::midi, {.plays_instrument = true, .identity = 0});
    track("not switched on", TrackKind::midi, {.identity = 0x1122334455667788});
    const Bytes image = session.image();
    const BlockIndex index{ByteView(image)};
    const auto links = readInstrumentLinks(index, readStripRows(index).rows);
    const InstrumentLink expected[] = {{"to node", "Node"},
                                       {"to no name", "an instrument on another track"},
                                       {"to organ", "Organ"},
                                       {"to no track", "an instrument on another track"}};
    ASSERT_EQ(links.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(links[i].midi_track, expected[i].midi_track);
        EXPECT_EQ(links[i].instrument, expected[i].instrument);
    }
}

/// What a record of these properties reads as, in a session where it belongs to the second track.
RealTimeProperties read_back(const RealTimeSpec& spec) {
    const Bytes image = SessionBuilder()
                            .track({.name = "Vox"})
                            .track({.name = "Plain", .kind = TrackKind::midi})
                            .track({.name = "Aux", .kind = TrackKind::aux})
                            .track({.name = "Keys", .kind = TrackKind::midi, .real_time = spec})
                            .image();
    const BlockIndex index{ByteView(image)};
    const auto list = readRealTimeProperties(index, readStripRows(index).rows);
    EXPECT_EQ(list.size(), 4U);
    EXPECT_FALSE(list.at(1).transpose_on);
    return list.at(3);
}

TEST(ReadRealTimeProperties, GivesBackEachValueWhereverTheGridEnds) {
    RealTimeSpec spec{.quantize = true, .swing = 33, .duration = true, .duration_value = 12};
    spec.delay = spec.velocity = spec.transpose = true;
    spec.velocity_scale = 150;
    spec.velocity_offset = -20;
    spec.octaves = -2;
    spec.semitones = 7;
    for (const bool without_grid : {false, true}) {
        for (const std::uint32_t grid_size : {59U, 67U, 300U}) {
            if (without_grid && grid_size != 59) continue;
            for (const int delay : {1920, -1920}) {
                SCOPED_TRACE(grid_size);
                spec.grid_size = grid_size;
                spec.without_grid = without_grid;
                spec.delay_ticks = delay;
                const auto read = read_back(spec);
                EXPECT_TRUE(read.quantize_on && read.duration_on && read.delay_on);
                EXPECT_TRUE(read.velocity_on && read.transpose_on);
                EXPECT_EQ(read.swing, 33);
                EXPECT_EQ(read.delay_ticks, delay);
                EXPECT_EQ(read.velocity_scale, 150);
                EXPECT_EQ(read.velocity_offset, -20);
                EXPECT_EQ(read.duration_value, 12);
                EXPECT_EQ(read.transpose_octaves, -2);
                EXPECT_EQ(read.transpose_semitones, 7);
            }
        }
    }
    const auto off = read_back({});
    EXPECT_FALSE(off.quantize_on || off.duration_on || off.delay_on || off.velocity_on);
    EXPECT_EQ(off.velocity_scale, 100);
}

TEST(ReadRealTimeProperties, ARecordTooShortIsPassedOverAndAGridTooLongMovesNothing) {
    const auto read = [](const Bytes& first) {
        const Bytes second = builder::real_time_block({.transpose = true, .semitones = 5});
        const Bytes image = ByteWriter().raw(first).raw(second).block(0x2620, {}).zeros(20).bytes();
        const BlockIndex index{ByteView(image)};
        return readRealTimeProperties(index, readStripRows(index).rows).at(0).transpose_semitones;
    };
    EXPECT_EQ(read(builder::block(0x2502, Bytes(150))), 5) << "size 152";
    EXPECT_EQ(read(builder::block(0x2502, Bytes(151))), 0) << "size 153";
    Bytes grid_too_long = builder::real_time_block({.transpose = true, .semitones = 3});
    grid_too_long[16] = 63;
    EXPECT_EQ(read(grid_too_long), 3);
    grid_too_long[16] = 62;  // fits, and moves the place by 3
    EXPECT_EQ(read(grid_too_long), 0);
}

TEST(ReadRealTimeProperties, AreThoseOfThePlaylistWithTheTracksName) {
    ByteWriter image;
    const std::pair<const char*, int> playlists[] = {
        {"Bass", 1}, {"Keys.01", 2}, {"First", 3}, {"Bass", 4}};
    for (const auto& [name, semitones] : playlists) {
        image.raw(
            builder::midi_playlist_block({.name = name, .real_time = {.semitones = semitones}}, 0));
    }
    for (const auto* name : {"Keys", "Bass", "Other"}) {
        const bool is_first = *name == 'K';
        image.raw(builder::strip_row(
            {.name = name, .original_name = is_first ? "First" : "", .kind = TrackKind::midi}, 0));
        if (is_first) image.raw(builder::strip_row({.name = "Bass"}, 0));
    }
    for (const auto* name : {"Keys", "Bass", "Bass", "Other"}) {
        image.raw(
            builder::strip_table_entry({.name = name}, 0, builder::StripTableForm::since_2022));
    }
    const Bytes bytes = image.bytes();
    const BlockIndex index{ByteView(bytes)};
    const auto list = readRealTimeProperties(index, readStripRows(index).rows);
    ASSERT_EQ(list.size(), 4U);
    EXPECT_EQ(list[0].transpose_semitones, 3) << "under its original name";
    EXPECT_EQ(list[1].transpose_semitones, 0) << "an audio track";
    EXPECT_EQ(list[2].transpose_semitones, 1) << "the first of its playlists";
    EXPECT_EQ(list[3].transpose_semitones, 2) << "what no name claims, in order";
}

/// Every reader of this family against a scan of every byte of the row.
void compare_with_byte_scan(const Bytes& bytes) {
    const ByteView image(bytes);
    const BlockIndex index{image};
    const auto rows = readStripRows(index).rows;
    const auto settings = readMidiSettings(index, rows);
    const auto properties = readRealTimeProperties(index, rows);
    ASSERT_EQ(settings.size(), rows.size());
    ASSERT_EQ(properties.size(), rows.size());
    ASSERT_LE(readMidiOutputs(index).size(), bytes.size() / 9);
    ASSERT_LE(readInstrumentLinks(index, rows).size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto is = [&](std::size_t p, std::size_t limit, std::uint16_t type) {
            return isBlockAt(image, p, limit) && image.u16(p + 7) == type && p + 9 <= image.size();
        };
        std::int32_t volume = -1;
        const bool is_midi = plays_midi(rows[i].type);
        for (std::size_t p = rows[i].start + 9; is_midi && p < rows[i].end; ++p) {
            if (!is(p, rows[i].end, 0x2036)) continue;
            if (image.u32(p + 3) > 15 && image.u8(p + 9) < 128) volume = image.u8(p + 9);
            break;
        }
        ASSERT_EQ(settings[i].volume, volume);
    }
}

TEST(MidiTrackReaders, DamagedSessionsReadAsAScanOfEveryByteDoes) {
    const Bytes good =
        SessionBuilder()
            .midi_output({.name = "Node", .node = 4, .port = 3})
            .track(
                {.name = "Organ", .kind = TrackKind::instrument, .midi_settings = {.identity = 5}})
            .track({.name = "Keys",
                    .kind = TrackKind::midi,
                    .midi_settings = {.output = 1, .plays_instrument = true, .identity = 5},
                    .real_time = {.quantize = true}})
            .image();
    builder::for_each_damage(good, 7, compare_with_byte_scan);
}

TEST(MidiTrackReaders, RealSessionsHaveTheSettingsThatTheyShow) {
    for (const auto* file : {"RegionTest.ptx", "TempoTimeKeySig.ptx"}) {
        TANROVE_REAL_SESSION(image, file);
        compare_with_byte_scan(image);
        EXPECT_TRUE(readMidiOutputs(BlockIndex{ByteView(image)}).empty());
    }
    TANROVE_REAL_SESSION(with_output, "Untitled32.ptx");
    const auto outputs = readMidiOutputs(BlockIndex{ByteView(with_output)});
    ASSERT_EQ(outputs.size(), 1U);
    EXPECT_EQ(outputs[0].name, "Xpand!2 4");
    EXPECT_EQ(outputs[0].number, 1);
    EXPECT_TRUE(outputs[0].is_plugin_node);
    EXPECT_EQ(outputs[0].node_value, 0x500ffbc5);

    TANROVE_REAL_SESSION(image, "TestPTX.ptx");
    compare_with_byte_scan(image);
    const BlockIndex index{ByteView(image)};
    const auto rows = readStripRows(index).rows;
    const auto settings = readMidiSettings(index, rows);
    const auto properties = readRealTimeProperties(index, rows);
    ASSERT_EQ(rows.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(settings[i].volume, i < 2 ? -1 : 96);
        EXPECT_EQ(settings[i].pan, i < 2 ? -1 : 64);
        EXPECT_EQ(settings[i].patch, -1);
        EXPECT_EQ(properties[i].velocity_scale, 100);
        EXPECT_FALSE(properties[i].transpose_on || properties[i].delay_on);
    }
    EXPECT_TRUE(readInstrumentLinks(index, rows).empty());
}

}  // namespace
}  // namespace tanrove
