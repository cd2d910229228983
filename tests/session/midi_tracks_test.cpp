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

using namespace builder;

TEST(ReadMidiSettings, ATrackHasWhatItsRecordHasRoomFor) {
    const Bytes image =
        SessionBuilder()
            .track({.name = "Vox"})
            .track({.kind = TrackKind::midi,
                    .midi_settings = {.volume = 127, .pan = 0, .patch = 5, .output = -3}})
            .track({.kind = TrackKind::instrument,
                    .midi_settings = {.volume = -1, .pan = -128, .patch = -128}})
            .image();
    EXPECT_EQ(over_rows(image, readMidiSettings),
              (std::vector<MidiTrackSettings>{{}, {127, 0, 5, -3}, {}}));
    const std::pair<std::size_t, const char*> cases[] = {
        {13, "-1 -1 -1 0"}, {14, "7 7 -1 0"}, {16, "7 7 -1 1"}, {17, "7 7 7 1"}};
    for (const auto& [payload, text] : cases) {
        const Bytes record = block(0x2036, Bytes(payload, 7));
        const auto read =
            over_rows(ByteWriter().block(0x2620, record).zeros(20).bytes(), readMidiSettings).at(0);
        EXPECT_EQ(fields(read.volume, read.pan, read.patch, read.output != 0), text);
    }
}

TEST(CountOtherMidiLanes, CountsLanesWithPointsBesideTheMuteOfMidiTracksAlone) {
    const Bytes moved = lane_record({.points = {{0, 1}}});
    const Bytes lanes = ByteWriter()
                            .block(0x2611, ByteWriter().raw(moved).raw(moved).bytes())
                            .raw(lane_record({.points = {}}))
                            .raw(moved)
                            .bytes();
    const Bytes image = SessionBuilder()
                            .track({.name = "Vox", .mixer = lanes})
                            .track({.name = "Keys", .kind = TrackKind::midi, .mixer = lanes})
                            .image();
    EXPECT_EQ(over_rows(image, count_other_midi_lanes), 2U);
}

TEST(ReadMidiOutputs, EachOutputKeepsItsPlaceInTheList) {
    const std::string longest(255, 'n');
    const std::vector<MidiOutput> expected = {{"Synth", 3, true, -7, 0}, {"", 0, false, 0, 0},
                                              {longest, 1, false, 0, 9}, {"", 0, false, 0, 1},
                                              {"Beside", 1, true, 5, 0}, {"Old", 1, true, 0, 0}};
    EXPECT_EQ(over(midi_outputs_block({{.name = "Synth", .number = 3, .node = -7},
                                       {},
                                       {.name = longest, .port = 9},
                                       {.name = longest + 'n', .port = 1},
                                       {.name = "Beside", .node = 5, .node_beside_name = true},
                                       {.name = "Old", .node = 5, .short_node = true}}),
                   readMidiOutputs),
              expected);
}

TEST(ReadInstrumentLinks, AMidiTrackNamesAPluginOrTheTrackOfItsInstrument) {
    constexpr std::uint64_t organ = 0x1122334455667788;
    const std::pair<const char*, MidiSettingsSpec> tracks[] = {
        {"to port", {.output = 1}},
        {"to node", {.output = 2}},
        {"to no name", {.output = 3}},
        {"past the list", {.output = 4}},
        {"below it", {.output = -1}},
        {"to organ", {.plays_instrument = true, .identity = organ}},
        {"to no track", {.plays_instrument = true, .identity = 1}},
        {"to nothing", {.plays_instrument = true, .identity = 0}},
        {"not switched on", {.identity = organ}}};
    SessionBuilder session;
    session.midi_output({.name = "Port", .port = 1}).midi_output({.name = "Node", .node = 4});
    session.midi_output({.node = 5, .node_beside_name = true});
    for (const std::uint64_t identity : {organ, std::uint64_t{0}}) {
        session.track({.name = identity == 0 ? "Null" : "Organ",
                       .kind = TrackKind::instrument,
                       .midi_settings = {.identity = identity}});
    }
    for (const auto& [name, settings] : tracks) {
        session.track({.name = name, .kind = TrackKind::midi, .midi_settings = settings});
    }
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
        spec.without_grid = grid_size == 0;
        spec.grid_size = grid_size == 0 ? 59 : grid_size;
        spec.delay_ticks = grid_size == 67 ? 1920 : -1920;
        const RealTimeProperties expected = {true, true, true, true, true, 33, spec.delay_ticks,
                                             150,  -20,  12,   -2,   7};
        EXPECT_EQ(read_back(spec), expected) << grid_size;
    }
    EXPECT_EQ(read_back({}), RealTimeProperties{});
}

TEST(ReadRealTimeProperties, ARecordTooShortIsPassedOverAndAGridTooLongMovesNothing) {
    const auto read = [](const Bytes& first) {
        const Bytes second = real_time_block({.transpose = true, .semitones = 5});
        const Bytes image = ByteWriter().raw(first).raw(second).block(0x2620, {}).zeros(20).bytes();
        return over_rows(image, readRealTimeProperties).at(0).transpose_semitones;
    };
    EXPECT_EQ(read(block(0x2502, Bytes(150))), 5) << "size 152";
    EXPECT_EQ(read(block(0x2502, Bytes(151))), 0) << "size 153";
    EXPECT_EQ(read(block(0x2505, real_time_block({.semitones = 9}))), 5) << "the defaults";
    Bytes grid_too_long = real_time_block({.transpose = true, .semitones = 3});
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
        image.raw(midi_playlist_block({.name = name, .real_time = {.semitones = semitones}}, 0));
    }
    const TrackSpec tracks[] = {{.name = "Keys", .original_name = "First", .kind = TrackKind::midi},
                                {.name = "Bass"},
                                {.name = "Bass", .kind = TrackKind::midi},
                                {.name = "Other", .kind = TrackKind::midi}};
    for (const auto& track : tracks) image.raw(strip_row(track, 0));
    for (const auto& track : tracks) {
        image.raw(strip_table_entry({.name = track.name}, 0, StripTableForm::since_2022));
    }
    std::vector<int> semitones;
    for (const auto& read : over_rows(image.bytes(), readRealTimeProperties)) {
        semitones.push_back(read.transpose_semitones);
    }
    EXPECT_EQ(semitones, (std::vector<int>{3, 0, 1, 2}))
        << "its original name, an audio track, the first of two, what no name claims";
}

}  // namespace
}  // namespace tanrove
