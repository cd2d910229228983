// Routing: outputs, sends with their lanes, inputs, I/O paths, buses, hardware inserts.
#include "session/routing.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/buses.hpp"
#include "session/hardware_inserts.hpp"
#include "session/output_names.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::IoPathSpec;

std::vector<RoutingRow> routing_of(const Bytes& image) {
    const BlockIndex index{ByteView(image)};
    return readRouting(index, readStripRows(index).rows, readIoPaths(index));
}

std::vector<IoPath> paths_of(const Bytes& image) {
    return over(image, readIoPaths);
}

TEST(ReadIoPaths, BothFormsGiveTheSamePath) {
    const IoPathSpec spec{.name = "Verb.L", .type = 2, .channels = {7}, .parent = 3};
    for (const bool later : {false, true}) {
        SCOPED_TRACE(later);
        const auto paths =
            paths_of(later ? io_path_record_later_count(spec, 21) : io_path_record(spec));
        ASSERT_EQ(paths.size(), 1U);
        EXPECT_EQ(paths[0].name, "Verb.L");
        EXPECT_EQ(paths[0].type, bus_path_type);
        EXPECT_EQ(paths[0].channels, std::vector<std::uint16_t>{7});
        const auto identity = builder::path_identity("Verb.L");
        EXPECT_EQ(paths[0].identity_low, static_cast<std::uint32_t>(identity));
        EXPECT_EQ(paths[0].identity_high, identity >> 32);
        EXPECT_EQ(paths[0].parent.has_value(), !later);
    }
}

TEST(ReadIoPaths, LimitsAreInclusiveAndDoublesAreLeftOut) {
    const struct {
        std::size_t name_bytes, channels;
        bool accepted;
    } cases[] = {{1, 1, true}, {80, 16, true}, {0, 1, false}, {81, 1, false}, {5, 17, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name_bytes << ' ' << c.channels);
        const IoPathSpec spec{.name = std::string(c.name_bytes, 'n'),
                              .channels = std::vector<std::uint16_t>(c.channels, 0x2121)};
        EXPECT_EQ(paths_of(io_path_record(spec)).size(), c.accepted ? 1U : 0U);
        EXPECT_EQ(paths_of(io_path_record_later_count(spec, 0)).size(), c.accepted ? 1U : 0U);
    }
    const IoPathSpec one{.name = "In", .channels = {1}};
    const IoPathSpec other{.name = "In", .channels = {2}};
    EXPECT_EQ(paths_of(builder::io_paths_block({one, other, one})).size(), 2U);
}

TEST(ReadBuses, LegsAroundANameMakeItABus) {
    const struct {
        const char* what;
        std::vector<std::string> texts;
        std::vector<std::string> buses;
    } cases[] = {
        {"both legs", {"Verb", "Verb.L", "Verb.R"}, {"Verb"}},
        {"one leg", {"Verb", "Verb.L"}, {}},
        {"no name of its own", {"Verb.L", "Verb.R"}, {}},
        {"text behind the leg", {"Verb", "Verb.Left", "Verb.Right"}, {}},
        {"a name that ends another",
         {"Big Verb", "Verb", "Big Verb.L", "Big Verb.R"},
         {"Big Verb", "Verb"}},
        {"a file path", {"a/b", "a/b.L", "a/b.R"}, {}},
        {"a first name", {"Bus 1-2", "Bus 1", "Bus 2"}, {"Bus 1-2"}},
        {"a first name with one leg", {"Bus 1-2", "Bus 1"}, {}},
        {"no numbers", {"Bus a-b", "Bus a", "Bus b", "Bus a-b.L", "Bus a-b.R"}, {}},
        {"in order of bytes", {"b b", "b b.L", "b b.R", "Acc", "Acc.L", "Acc.R"}, {"Acc", "b b"}},
        {"too short and too long",
         {"ab", "ab.L", "ab.R", std::string(41, 'x'), std::string(41, 'x') + ".L",
          std::string(41, 'x') + ".R"},
         {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ByteWriter image;
        for (const auto& text : c.texts) image.counted(text).zeros(1);
        EXPECT_EQ(over(image.bytes(), readBuses), c.buses);
    }
}

TEST(ReadRouting, AnInputStandsInItsRowAndInNoSendChannel) {
    const IoPathSpec mic{.name = "Mic", .channels = {1}};
    const Bytes mark = builder::input_mark("Mic", 0);
    const Bytes channel = builder::channel_record({});
    Bytes other_type = builder::input_mark("Mic", 1);
    const auto cut = [&](std::size_t bytes) {
        return Bytes(mark.begin(), mark.end() - static_cast<std::ptrdiff_t>(bytes));
    };
    const struct {
        const char* what;
        Bytes row;
        bool found;
    } cases[] = {
        {"in the row",
         ByteWriter().raw(builder::send_channel(channel, {}, {})).raw(mark).zeros(9).bytes(), true},
        {"in a send channel",
         builder::send_channel(channel, {}, ByteWriter().raw(mark).zeros(9).bytes()), false},
        {"of another type", ByteWriter().raw(other_type).zeros(9).bytes(), false},
        {"24 bytes behind the name", ByteWriter().raw(mark).zeros(1).bytes(), true},
        {"23 bytes behind the name", mark, false},
        {"cut", cut(4), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Bytes image =
            ByteWriter().raw(io_path_record(mic)).block(0x261b, c.row).zeros(40).bytes();
        EXPECT_EQ(routing_of(image).at(0).input_name, c.found ? "Mic" : "");
    }
}

/// A send whose slot holds these lanes, behind the strip's own channel.
RoutingSend send_with_lanes(const Bytes& lanes, std::uint8_t shape = 1) {
    const Bytes output = builder::output_name_record("Verb");
    const Bytes own = builder::send_channel(builder::channel_record({}), output, {});
    const Bytes slot = builder::send_channel(builder::channel_record({}), output, lanes, shape);
    const Bytes image = builder::block(0x261b, ByteWriter().raw(own).raw(slot).bytes());
    return routing_of(image).at(0).sends.at(0);
}

TEST(ReadRouting, SendLanesFollowTheirGroups) {
    const auto lane = [](int initial) { return builder::lane_record({.initial = initial}); };
    const auto group = [](const std::vector<Bytes>& lanes) { return builder::lane_group(lanes); };
    const struct {
        const char* what;
        std::vector<Bytes> lanes;
        std::uint8_t shape;
        int kind, pan, pan_right;
        bool mono;
    } cases[] = {
        {"no groups, mono", {lane(-60), lane(1), lane(5)}, 1, 1, 5, 0, false},
        {"no groups, stereo", {lane(-60), lane(1), lane(5), lane(6)}, 1, 2, 5, 6, false},
        {"no pan", {lane(-60), lane(1)}, 1, 0, 0, 0, false},
        {"pan in its group", {lane(-60), lane(1), group({lane(5)}), group({})}, 1, 1, 5, 0, true},
        {"pans in their groups",
         {lane(-60), lane(1), group({lane(5)}), group({lane(6)})},
         2,
         2,
         5,
         6,
         false},
        {"everything in groups",
         {group({lane(-60), lane(1)}), group({lane(5), lane(6)})},
         1,
         1,
         5,
         0,
         true},
        {"everything in groups, with one lane in front of them",
         {lane(7), group({lane(-60), lane(1)}), group({lane(5)})},
         1,
         1,
         5,
         0,
         true},
        {"a panner with two lanes in its group",
         {lane(-60), lane(1), group({lane(5), lane(7)}), group({})},
         1,
         1,
         5,
         0,
         true},
        {"hard left and right",
         {lane(-60), lane(1), lane(-100), lane(100)},
         1,
         0,
         -100,
         100,
         false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ByteWriter lanes;
        for (const Bytes& block : c.lanes) lanes.raw(block);
        const RoutingSend send = send_with_lanes(lanes.bytes(), c.shape);
        EXPECT_EQ(send.level_lane.initial, -60);
        EXPECT_EQ(send.mute_lane.initial, 1);
        EXPECT_EQ(send.pan_kind, c.kind);
        EXPECT_EQ(send.pan, c.pan);
        EXPECT_EQ(send.pan_right, c.pan_right);
        EXPECT_EQ(send.mono_flag, c.mono);
    }
}

TEST(ReadHardwareInserts, NamesAndTracksAreFoundOrSaidToBeUnknown) {
    const struct {
        Bytes insert;
        std::string name;
    } cases[] = {{builder::hardware_insert("Insert 1-2"), "Insert 1-2"},
                 {builder::hardware_insert_fixed_place("Comp"), "Comp"},
                 {builder::hardware_insert_fixed_place("Comp\xc3\xa9"), "Comp\xc3\xa9"},
                 {builder::block(0x2612, Bytes(60)), "<unnamed>"},
                 {builder::hardware_insert(""), "<unnamed>"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Bytes image = ByteWriter()
                                .raw(builder::strip_row({.name = "Vox", .mixer = c.insert}, 0))
                                .raw(c.insert)
                                .bytes();
        const auto inserts = over_rows(image, readHardwareInserts);
        ASSERT_EQ(inserts.size(), 2U);
        EXPECT_EQ(inserts[0].name, c.name);
        EXPECT_EQ(inserts[0].track, "Vox");
        EXPECT_EQ(inserts[1].track, "<unknown track>");
    }
}

TEST(ReadOutputNames, EachIdHasItsFirstName) {
    const Bytes image = ByteWriter()
                            .raw(builder::output_name_record("Out 1-2", 2))
                            .raw(builder::output_name_record("", 3))
                            .raw(builder::output_name_record("Verb", 7))
                            .raw(builder::output_name_record("Other", 7))
                            .bytes();
    const std::map<std::uint16_t, std::string> expected = {{2, "Out 1-2"}, {7, "Verb"}};
    EXPECT_EQ(over(image, readOutputNames), expected);
}

}  // namespace
}  // namespace tanrove
