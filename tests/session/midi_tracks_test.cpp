// What MIDI and instrument tracks are set to: fader, pan and patch, outputs, instruments, real-time
// properties.
#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/instrument_links.hpp"
#include "session/midi_lanes.hpp"
#include "session/midi_outputs.hpp"
#include "session/midi_track_settings.hpp"
#include "session/real_time_properties.hpp"
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
    EXPECT_EQ(over_rows(image, readMidiSettings),
              (std::vector<MidiTrackSettings>{{}, {127, 0, 5, -3}, {}}));
    for (const std::size_t payload : {13U, 14U, 16U, 17U}) {
        const Bytes record = builder::block(0x2036, Bytes(payload, 7));
        const auto read =
            over_rows(ByteWriter().block(0x2620, record).zeros(20).bytes(), readMidiSettings).at(0);
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
    EXPECT_EQ(over_rows(image, countOtherMidiLanes), 2U);
}

TEST(ReadMidiOutputs, EachOutputKeepsItsPlaceInTheList) {
    const std::string longest(199, 'n');
    const Bytes image =
        builder::midi_outputs_block({{.name = "Synth", .number = 3, .node = -7},
                                     {},
                                     {.name = longest, .port = 9},
                                     {.name = longest + 'n', .port = 1},
                                     {.name = "Beside", .node = 5, .node_beside_name = true}});
    const std::vector<MidiOutput> expected = {{"Synth", 3, true, -7, 0},
                                              {"", 0, false, 0, 0},
                                              {longest, 1, false, 0, 9},
                                              {"", 0, false, 0, 1},
                                              {"Beside", 1, true, 5, 0}};
    EXPECT_EQ(over(image, readMidiOutputs), expected);
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
    const std::vector<InstrumentLink> expected = {
        {"to node", "Node"},
        {"to no name", "an instrument on another track"},
        {"to organ", "Organ"},
        {"to no track", "an instrument on another track"}};
    EXPECT_EQ(over_rows(session.image(), readInstrumentLinks), expected);
}

/// What a record of these properties reads as, in a session where it belongs to the second track.
RealTimeProperties read_back(const RealTimeSpec& spec) {
    const Bytes image = SessionBuilder()
                            .track({.name = "Vox"})
                            .track({.name = "Plain", .kind = TrackKind::midi})
                            .track({.name = "Aux", .kind = TrackKind::aux})
                            .track({.name = "Keys", .kind = TrackKind::midi, .real_time = spec})
                            .image();
    const auto list = over_rows(image, readRealTimeProperties);
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
    for (const std::uint32_t grid_size : {0U, 59U, 67U, 300U}) {  // 0: without a grid
        for (const int delay : {1920, -1920}) {
            SCOPED_TRACE(grid_size);
            spec.without_grid = grid_size == 0;
            spec.grid_size = grid_size == 0 ? 59 : grid_size;
            spec.delay_ticks = delay;
            const RealTimeProperties expected = {true,  true, true, true, true, 33,
                                                 delay, 150,  -20,  12,   -2,   7};
            EXPECT_EQ(read_back(spec), expected);
        }
    }
    EXPECT_EQ(read_back({}), RealTimeProperties{});
}

TEST(ReadRealTimeProperties, ARecordTooShortIsPassedOverAndAGridTooLongMovesNothing) {
    const auto read = [](const Bytes& first) {
        const Bytes second = builder::real_time_block({.transpose = true, .semitones = 5});
        const Bytes image = ByteWriter().raw(first).raw(second).block(0x2620, {}).zeros(20).bytes();
        return over_rows(image, readRealTimeProperties).at(0).transpose_semitones;
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
    const auto list = over_rows(image.bytes(), readRealTimeProperties);
    ASSERT_EQ(list.size(), 4U);
    EXPECT_EQ(list[0].transpose_semitones, 3) << "under its original name";
    EXPECT_EQ(list[1].transpose_semitones, 0) << "an audio track";
    EXPECT_EQ(list[2].transpose_semitones, 1) << "the first of its playlists";
    EXPECT_EQ(list[3].transpose_semitones, 2) << "what no name claims, in order";
}

}  // namespace
}  // namespace tanrove
