// Routing: outputs, sends with their lanes, inputs, I/O paths, hardware inserts.
#include "session/routing.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "reading.hpp"
#include "session/buses.hpp"
#include "session/hardware_inserts.hpp"
#include "session/output_names.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;

std::vector<RoutingRow> routing_of(const Bytes& image) {
    const BlockIndex index{ByteView(image)};
    return readRouting(index, readStripRows(index).rows, readIoPaths(index));
}

TEST(ReadIoPaths, BothFormsGiveTheSamePathWithinItsLimits) {
    const auto read = [](const IoPathSpec& spec, bool later) {
        const Bytes image = later ? io_path_record_later_count(spec, 21) : io_path_record(spec);
        std::string text;
        for (const auto& p : over(image, readIoPaths)) {
            text += fields(p.name, p.type, p.channels, p.parent.has_value(),
                           std::uint64_t{p.identity_high} << 32 | p.identity_low);
        }
        return text;
    };
    for (const bool later : {false, true}) {
        EXPECT_EQ(read({.name = "Verb.L", .type = 2, .channels = {7, 8}, .parent = 3}, later),
                  fields("Verb.L", bus_path_type, "7,8", !later, path_identity("Verb.L")));
        const std::pair<std::size_t, std::size_t> cases[] = {
            {1, 1}, {255, 16}, {0, 1}, {256, 1}, {5, 17}};
        for (const auto& [name_bytes, channels] : cases) {
            const IoPathSpec spec{.name = std::string(name_bytes, 'n'),
                                  .channels = std::vector<std::uint16_t>(channels, 0x2121)};
            const bool fits = name_bytes > 0 && name_bytes <= 255 && channels <= 16;
            EXPECT_NE(read(spec, later).empty(), fits) << name_bytes << ' ' << channels;
        }
    }
    const IoPathSpec one{.name = "In", .channels = {1}};
    const IoPathSpec other{.name = "In", .channels = {2}};
    EXPECT_EQ(over(io_paths_block({one, other, one}), readIoPaths).size(), 2U);
}

/// A path each: name, place in the session ("own", "mapped", or nothing), the whole's name.
std::string paths_text(const Bytes& image) {
    const auto paths = over(image, readIoPaths);
    std::string text;
    for (const IoPath& path : paths) {
        text += path.name + (path.mapped ? " mapped" : path.own ? " own" : "");
        for (const IoPath& other : paths) {
            if (path.parent_identity == other.identity()) text += " of " + other.name;
            if (std::ranges::count(path.hardware, other.identity()) > 0)
                text += " on " + other.name;
        }
        text += "; ";
    }
    return text;
}

TEST(ReadIoPaths, TheSessionsOwnTableComesFirstAndTellsWhatPlaysToTheHardware) {
    SessionBuilder session;
    session.io_path({"Mic", 0, {1}}).io_path({"Speakers", 1, {1, 2}});
    session.io_path(
        {.name = "Main", .type = 2, .channels = {1, 2}, .mapped = true, .hardware = "Speakers"});
    session.io_path({.name = "Main.L", .type = 2, .channels = {1}, .parent = 2});
    session.bus("Verb", 3).io_path({.name = "Key", .type = 2, .channels = {9}});
    const std::string own =
        "Main mapped on Speakers; Main.L mapped of Main; Verb own; Verb.L own of Verb; Verb.R own "
        "of Verb; "
        "Key own; Mic; Speakers; ";
    EXPECT_EQ(paths_text(session.image()), own);
    EXPECT_EQ(over(session.image(), readBuses), (std::vector<std::string>{"Key", "Verb"}));
    const std::string told = "Mic; Speakers; Main; Main.L; Verb; Verb.L; Verb.R; Key; ";
    SessionBuilder old = session;
    EXPECT_EQ(paths_text(old.without_path_table().image()), told);
    EXPECT_EQ(over(old.image(), readBuses), std::vector<std::string>{"Verb"});
    // A record that breaks its layout makes the whole table unread.
    const IoPathSpec verb{.name = "Verb", .type = 2, .channels = {3}};
    const auto table = [&](const Bytes& record, std::uint32_t count) {
        return block(0x2603, ByteWriter().u32(count).raw(record).bytes());
    };
    const Bytes whole = own_path_record(verb);
    Bytes no_marker = whole;
    no_marker[std::string("Z________tw____Verb").size() + 6 + 8] ^= 1;
    const std::pair<Bytes, bool> tables[] = {
        {table(whole, 1), true},
        {table(whole, 2), false},
        {table(whole, 0), false},
        {table(no_marker, 1), false},
        {table(own_path_record({.name = "Wide", .channels = std::vector<std::uint16_t>(16)}), 1),
         true},
        {table(own_path_record({.name = "Wide", .channels = std::vector<std::uint16_t>(17)}), 1),
         false},
        {table(own_path_record({.name = "", .channels = {1}}), 1), false}};
    for (const auto& [image, reads] : tables) {
        EXPECT_EQ(!over(image, readIoPaths).empty(), reads);
    }
}

TEST(ReadIoPaths, APathWhoseNameCannotBeReadKeepsItsPlaceInTheTable) {
    const auto table = [](const std::string& name) {
        return over(path_table_block({{.name = name, .type = 2, .channels = {1}},
                                      {.name = "Verb", .type = 2, .channels = {2}}}),
                    readIoPaths);
    };
    const auto paths = table(std::string(256, 'n'));
    ASSERT_EQ(paths.size(), 2U);
    EXPECT_EQ(fields(paths[0].name, paths[0].channels, paths[1].name), " 1 Verb");
    EXPECT_TRUE(table("").empty()) << "no table";
}

TEST(ReadRouting, AnInputStandsInItsRowAndInNoSendChannel) {
    const Bytes mark = input_mark("Mic", 0);
    const Bytes room = Bytes(9);
    const Bytes channel = channel_record({});
    const Bytes in_channel = send_channel(channel, {}, ByteWriter().raw(mark).raw(room).bytes());
    const Bytes other_type = ByteWriter().raw(input_mark("Mic", 1)).raw(room).bytes();
    Bytes renumbered = mark;
    renumbered[std::string("____Mic________").size()] ^= 1;
    const Reads cases[] = {
        {"in the row", ByteWriter().raw(send_channel(channel, {}, {})).raw(mark).raw(room).bytes(),
         "Mic"},
        {"in a send channel", in_channel, ""},
        {"of another type", other_type, ""},
        {"known by its name alone", ByteWriter().raw(renumbered).raw(room).bytes(), "Mic"},
        {"24 bytes behind the name", ByteWriter().raw(mark).zeros(1).bytes(), "Mic"},
        {"23 bytes behind the name", mark, ""},
        {"cut", cut_to(mark, mark.size() - 4), ""},
    };
    for (const auto& c : cases) {
        ByteWriter image;
        image.raw(io_path_record({.name = "Mic", .channels = {1}}))
            .block(0x261b, c.image)
            .zeros(40);
        EXPECT_EQ(routing_of(image.bytes()).at(0).input_name, c.text) << c.what;
    }
}

/// A send whose slot holds these lanes, behind the strip's own channel.
RoutingSend send_with_lanes(const Bytes& lanes, std::uint8_t shape = 1) {
    const Bytes output = output_name_record("Verb");
    const Bytes own = send_channel(channel_record({}), output, {});
    const Bytes slot = send_channel(channel_record({}), output, lanes, shape);
    const Bytes image = block(0x261b, ByteWriter().raw(own).raw(slot).bytes());
    return routing_of(image).at(0).sends.at(0);
}

TEST(ReadRouting, SendLanesFollowTheirGroups) {
    const auto lane = [](int initial) { return lane_record({.initial = initial}); };
    const auto group = [](const std::vector<Bytes>& lanes) { return lane_group(lanes); };
    const Bytes level = lane(-60);
    const Bytes mute = lane(1);
    const Bytes pan = lane(5);
    const Bytes right = lane(6);
    const Bytes none = group({});
    const struct {
        const char* what;
        std::vector<Bytes> lanes;
        std::uint8_t shape;
        const char* text;  ///< kind, pans, whether mono
    } cases[] = {
        {"no groups, mono", {level, mute, pan}, 1, "1 5 0 0"},
        {"no groups, stereo", {level, mute, pan, right}, 1, "2 5 6 0"},
        {"no pan", {level, mute}, 1, "0 0 0 0"},
        {"pan in its group", {level, mute, group({pan}), none}, 1, "1 5 0 1"},
        {"pans in groups", {level, mute, group({pan}), group({right})}, 2, "2 5 6 0"},
        {"all in groups", {group({level, mute}), group({pan, right})}, 1, "1 5 0 1"},
        {"one lane in front", {lane(7), group({level, mute}), group({pan})}, 1, "1 5 0 1"},
        {"two lanes in a group", {level, mute, group({pan, lane(7)}), none}, 1, "1 5 0 1"},
        {"hard left and right", {level, mute, lane(-100), lane(100)}, 1, "0 -100 100 0"},
    };
    for (const auto& c : cases) {
        ByteWriter lanes;
        for (const Bytes& block : c.lanes) lanes.raw(block);
        const RoutingSend s = send_with_lanes(lanes.bytes(), c.shape);
        EXPECT_EQ(fields(s.pan_kind, s.pan, s.pan_right, s.mono_flag), c.text) << c.what;
        EXPECT_EQ(fields(s.level_lane.initial, s.mute_lane.initial), "-60 1") << c.what;
    }
}

TEST(ReadHardwareInserts, NamesAndTracksAreFoundOrSaidToBeUnknown) {
    const std::pair<Bytes, const char*> cases[] = {
        {hardware_insert("Insert 1-2"), "Insert 1-2"},
        {hardware_insert_fixed_place("Comp\xc3\xa9"), "Comp\xc3\xa9"},
        {block(0x2612, Bytes(60)), "<unnamed>"},
        {hardware_insert(""), "<unnamed>"}};
    for (const auto& [insert, name] : cases) {
        const Bytes row = strip_row({.name = "Vox", .mixer = insert}, 0);
        const auto inserts =
            over_rows(ByteWriter().raw(row).raw(insert).bytes(), readHardwareInserts);
        ASSERT_EQ(inserts.size(), 2U);
        EXPECT_EQ(fields(inserts[0].name, inserts[0].track, inserts[1].track),
                  fields(name, "Vox", "<unknown track>"));
    }
}

TEST(ReadOutputNames, EachIdHasItsFirstName) {
    const Bytes image = ByteWriter()
                            .raw(output_name_record("Out 1-2", 2))
                            .raw(output_name_record("", 3))
                            .raw(output_name_record("Verb", 7))
                            .raw(output_name_record("Other", 7))
                            .raw(output_name_record(std::string(256, 'n'), 8))
                            .bytes();
    std::string text;
    for (const auto& [id, output] : over(image, readOutputNames)) {
        text += fields(id, output.name, output.identity == path_identity(output.name)) + "; ";
    }
    EXPECT_EQ(text, "2 Out 1-2 1; 7 Verb 1; 8  0; ") << "the last has a name too, if not for us";
}

}  // namespace
}  // namespace tanrove
