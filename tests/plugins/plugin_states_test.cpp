// Where the state lies in a settings block: tagged containers, control lists, chains of chunks, and
// the scoring of everything else.
#include <gtest/gtest.h>

#include "plugins/elck_chunks.hpp"
#include "plugins/plugin_inserts.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr std::size_t block_at = 16;  // of the one settings block in these images
constexpr std::size_t payload_at = block_at + 73;
const Bytes noise(100, 0x81);

PluginInsert read_state(const Bytes& state, std::size_t padding = 0) {
    const Bytes image = ByteWriter()
                            .zeros(block_at)
                            .raw(plugin_settings_block({.state = state, .padding = padding}))
                            .u8(1)
                            .bytes();
    const auto inserts = read_plugin_inserts(BlockIndex(ByteView(image)));
    EXPECT_EQ(inserts.size(), 1U);
    return inserts.empty() ? PluginInsert() : inserts.front();
}

TEST(TaggedContainers, EachTagTellsPlaceAndSize) {
    auto cases = tagged_containers();
    const auto add = [&](std::uint32_t kind, const ByteWriter& payload, std::size_t size) {
        cases.push_back({kind, payload.bytes(), 0, size});
    };
    add(1, ByteWriter().raw("FFBSxFFEx12"), 11);
    add(1, ByteWriter().raw("FFBSxFFEx1234FFEx5678"), 21);
    add(2, ByteWriter().raw("VC2!").u32(~0U).u32(7), 12);
    add(2, ByteWriter().raw("VC2!ab"), 6);
    add(3, ByteWriter().raw("<?xml?>"), 7);
    add(7, ByteWriter().u32(0x0085988d).u32(0).u32(9).zeros(9), 21);
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.kind << ' ' << c.size);
        const auto insert = read_state(bare_state(c.payload), 5);
        EXPECT_EQ(insert.containerKind, static_cast<ContainerKind>(c.kind));
        EXPECT_EQ(insert.chunkOffset, payload_at + c.offset);
        EXPECT_EQ(insert.chunkSize, c.size);
    }
    EXPECT_EQ(read_state(bare_state(cases[6].payload)).zlibWords,
              (std::array<std::uint32_t, 4>{1, 2, 14, 64}));
}

TEST(TaggedContainers, OnesThatBreakTheirLimitsEndTheSearchOrAreNone) {
    const Bytes list = whole_control("Mode", 1, 8);
    const auto zlib = [](std::uint32_t counted, std::uint32_t unpacked) {
        return ByteWriter().u32(counted).u32(unpacked).u16(0x9c78).zeros(30);
    };
    const auto hsin = [](std::uint32_t bytes, std::uint32_t zero, std::uint32_t one) {
        return ByteWriter().u32(bytes).u32(zero).u32(one).raw("hsin").zeros(64);
    };
    const struct {
        const char* what;
        Bytes payload;
        ContainerKind kind;  ///< with a "VC2!" behind the payload and a control list in front
    } cases[] = {
        {"sized, past the end", ByteWriter().u32(0x0085988d).u32(0).u32(999).bytes(),
         ContainerKind::control_values},
        {"zlib, small", zlib(11, 64).bytes(), ContainerKind::control_values},
        {"zlib, least", zlib(12, 64).bytes(), ContainerKind::zlib},
        {"zlib, unpacked small", zlib(12, 63).bytes(), ContainerKind::control_values},
        {"zlib, past the end", zlib(999, 64).bytes(), ContainerKind::control_values},
        {"index, open", ByteWriter().raw("{\n\tindex = {\n").bytes(), ContainerKind::vc2},
        {"hsin, least", hsin(76, 0, 1).bytes(), ContainerKind::hsin},
        {"hsin, small", hsin(75, 0, 1).bytes(), ContainerKind::vc2},
        {"hsin, not 0", hsin(76, 1, 1).bytes(), ContainerKind::vc2},
        {"hsin, not 1", hsin(76, 0, 2).bytes(), ContainerKind::vc2},
        {"tree, missing", preset_chunk("<PresetChunkXMLTre >"), ContainerKind::vc2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Bytes state = ByteWriter().raw(list).raw(c.payload).raw("VC2!abcdefgh").bytes();
        EXPECT_EQ(
            read_state(ByteWriter().zeros(8).raw("DigiTest").raw(state).bytes()).containerKind,
            c.kind);
    }
}

TEST(PresetTree, NamesThePluginOfTheShell) {
    const std::string tree =
        "<PresetChunkXMLTree><PluginName>Q10</PluginName><PluginSubComp>WQ10</PluginSubComp>"
        "<ActiveSetup>SETUP_B</ActiveSetup></PresetChunkXMLTree>";
    const auto insert = read_state(bare_state(preset_chunk(tree)));
    EXPECT_EQ(insert.containerKind, ContainerKind::preset_tree);
    EXPECT_EQ(insert.chunkOffset, payload_at + 28);
    EXPECT_EQ(insert.chunkSize, tree.size());
    EXPECT_EQ(insert.pluginName, "Q10");
    EXPECT_EQ(insert.activeSetup, "setB");
    EXPECT_EQ(insert_key(insert), "DigiTestWQ10");

    std::string shorter = tree;
    shorter.erase(shorter.find("WQ10"), 1);
    const auto other = read_state(bare_state(preset_chunk(shorter)));
    EXPECT_EQ(other.containerKind, ContainerKind::scored) << "a text with its length in front";
    EXPECT_EQ(insert_key(other), "DigiTest");
}

TEST(ControlList, TheSpacingWithMostValuesWinsAndTheStartIsBounded) {
    const Bytes list = ByteWriter()
                           .raw(real_control("Gain", 0.5, 12))
                           .raw(whole_control("Mode", -3, 12))
                           .raw(real_control("Pan", 1e30, 12))
                           .bytes();
    for (const std::size_t in_front : {std::size_t{8}, std::size_t{9}}) {
        SCOPED_TRACE(in_front);
        const Bytes gap(in_front, 0x81);
        const auto insert = read_state(bare_state(ByteWriter().raw(gap).raw(list).bytes()));
        const bool is_near = in_front == 8;
        EXPECT_EQ(insert.containerKind == ContainerKind::control_values, is_near);
        const std::vector<float> values = {0.5F, -3, 1e30F};
        EXPECT_EQ(insert.controlValues, is_near ? values : std::vector<float>());
        EXPECT_EQ(insert.chunkOffset, is_near ? payload_at + in_front : 0);
    }
    const Bytes beyond = real_control("Gain", 1.1e30, 8);
    EXPECT_EQ(read_state(bare_state(beyond)).containerKind, ContainerKind::none);
}

const std::string code = "DigiTest";

/// A parameter map that has two values, and one of a name that the map's end cuts.
Bytes value_map() {
    return plugin_chunk(code, "elck", "",
                        ByteWriter()
                            .zeros(4)
                            .raw(real_control("EQ Gain", -6.5, 12))
                            .raw(whole_control("Type", 2, 8))
                            .raw("d_Cut")
                            .zeros(4)
                            .bytes());
}

TEST(ElckChain, MapAndStatesBehindIt) {
    const Bytes chain = ByteWriter()
                            .raw(value_map())
                            .raw(plugin_chunk(code, "text", "", Bytes(40, 'a')))
                            .raw(plugin_chunk(code, "shrt", "", Bytes(31, 0x81)))
                            .raw(plugin_chunk(code, "one.", "", Bytes(32, 0x81)))
                            .raw(plugin_chunk(code, "two.", "", Bytes(50, 0x81)))
                            .zeros(8)
                            .bytes();
    const auto insert = read_state(chain);
    EXPECT_EQ(insert.containerKind, ContainerKind::control_values);
    EXPECT_EQ(insert.elckChunkCount, 2U);
    EXPECT_EQ(insert.elckSize, 32U);
    EXPECT_EQ(insert.elckOffset, block_at + 17 + value_map().size() + 96 + 87 + 56);
    EXPECT_EQ(insert.elckHow, elck_how);

    const Bytes image = plugin_settings_block({.state = chain});
    const auto values = read_elck_map(ByteView(image), 0, image.size());
    EXPECT_EQ(values, (std::map<std::string, double>{{"EQ Gain", -6.5}, {"Type", 2}}));
}

TEST(ElckChain, GivesTheControlsOfPlugInsThatStoreNothingElse) {
    // Names of all lengths: read in one spacing, the list would end early.
    const auto read_controls = [](int count, double last) {
        ByteWriter records;
        records.zeros(4);
        for (int i = 0; i < count; ++i) {
            const std::string name(static_cast<std::size_t>(1 + i % 5), 'a');
            records.raw(real_control(name, i + 1 < count ? i : last, (name.size() + 6) / 4 * 4));
        }
        return read_state(plugin_chunk(code, "elck", "", records.bytes())).controlValues;
    };
    const auto values = read_controls(14, 13);
    ASSERT_EQ(values.size(), 14U);
    EXPECT_EQ(values[13], 13);
    EXPECT_LT(read_controls(13, 12).size(), 13U);
    EXPECT_LT(read_controls(14, 2e30).size(), 14U);
}

TEST(ElckChain, EndsAsAFailureWhereItDoesNotHold) {
    const Bytes good = ByteWriter()
                           .raw(plugin_chunk(code, "elck", "", Bytes(4)))
                           .raw(plugin_chunk(code, "one.", "", Bytes(40, 0x81)))
                           .bytes();
    const auto insert = read_state(good);
    EXPECT_EQ(insert.containerKind, ContainerKind::scored);
    EXPECT_EQ(insert.how, elck_how);
    EXPECT_EQ(insert.chunkSize, 40U);

    const struct {
        const char* what;
        std::size_t at;  // in the state
        std::uint8_t byte;
    } cases[] = {{"another code", 60 + 8, 'X'},
                 {"too short", 60 + 3, 55},
                 {"too long", 60 + 2, 1},
                 {"no map", 20, 'x'}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bytes bad = good;
        bad[c.at] = c.byte;
        EXPECT_NE(read_state(bad).how, elck_how);
    }
    EXPECT_NE(read_state(ByteWriter().raw(good).raw(Bytes(9, 0x81)).bytes()).how, elck_how);
}

TEST(Scoring, FindsStatesInWholeBlocks) {
    const Bytes riff = ByteWriter().raw("RIFF").raw(Bytes(36, 0x82)).bytes();
    const auto insert = read_state(
        bare_state(ByteWriter().u32(40).raw(riff).zeros(4).raw(riff).raw(noise).bytes()));
    EXPECT_EQ(insert.how, "RIFF");
    EXPECT_EQ(insert.containerKind, ContainerKind::scored);
    EXPECT_EQ(insert.chunkOffset, payload_at + 4);
    EXPECT_EQ(insert.chunkSize, 40U);
    EXPECT_EQ(insert.copies, 2U);
    EXPECT_EQ(read_state(bare_state(noise)).containerKind, ContainerKind::none);
    const auto chunk = read_state(plugin_chunk(code, "dflt", "Name", noise));
    EXPECT_EQ(chunk.how, "AAX chunk data");
    EXPECT_EQ(chunk.chunkOffset, payload_at);
    // Nearly all text, with no length word where one could stand in front of it.
    std::string lines;
    for (int i = 0; i < 60; ++i) lines += "line\n";
    const Bytes unsized =
        block(0x1038, ByteWriter().zeros(16).raw(code).u8(0x81).raw(lines).bytes());
    const auto plain = read_plugin_inserts(BlockIndex(ByteView(unsized))).at(0);
    EXPECT_EQ(plain.how, "text (no tag)");
    EXPECT_EQ(plain.chunkOffset, 33U);
    EXPECT_EQ(plain.chunkSize, lines.size() + 1);
}

}  // namespace
}  // namespace tanrove
