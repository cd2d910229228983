// Where the state lies in a settings block: tagged containers, control lists, chains of chunks, and
// the scoring of everything else.
#include <gtest/gtest.h>

#include "plugins/elck_chunks.hpp"
#include "plugins/plugin_inserts.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::plugin_chunk;

constexpr std::size_t block_at = 16;  // of the one settings block in these images
constexpr std::size_t payload_at = block_at + 73;
const Bytes noise(100, 0x81);

/// Bytes that are no text, up to the place of a chunk's payload, and the payload.
Bytes bare_state(const Bytes& payload) {
    return ByteWriter().zeros(8).raw("DigiTest").raw(Bytes(40, 0x81)).raw(payload).bytes();
}

PluginInsert read_state(const Bytes& state, std::size_t padding = 0) {
    const Bytes image =
        ByteWriter()
            .zeros(block_at)
            .raw(builder::plugin_settings_block({.state = state, .padding = padding}))
            .u8(1)
            .bytes();
    const auto inserts = read_plugin_inserts(BlockIndex(ByteView(image)));
    EXPECT_EQ(inserts.size(), 1U);
    return inserts.empty() ? PluginInsert() : inserts.front();
}

TEST(TaggedContainers, EachTagTellsPlaceAndSize) {
    const std::string archive = "22 serialization::archive";
    const Bytes archived = ByteWriter().raw(archive).pad_to(70).bytes();
    const struct {
        const char* what;
        ContainerKind kind;
        Bytes payload;
        std::size_t offset, size;
    } cases[] = {
        {"FFBS to FFEx", ContainerKind::ffbs, ByteWriter().raw("abFFBSxFFEx1234tail").bytes(), 2,
         13},
        {"FFBS alone", ContainerKind::ffbs, ByteWriter().raw("FFBSxFFEx12").bytes(), 0, 11},
        {"VC2!", ContainerKind::vc2, ByteWriter().raw("VC2!").u32(3).zeros(20).bytes(), 0, 12},
        {"VC2! cut", ContainerKind::vc2, ByteWriter().raw("VC2!").u32(~0U).u32(7).bytes(), 0, 12},
        {"VC2! short", ContainerKind::vc2, ByteWriter().raw("VC2!ab").bytes(), 0, 6},
        {"XML", ContainerKind::xml, ByteWriter().raw("<?xml?>").zeros(3).bytes(), 0, 8},
        {"XML, no zeros", ContainerKind::xml, ByteWriter().raw("<?xml?>").bytes(), 0, 7},
        {"HXMC", ContainerKind::hxmc, ByteWriter().raw("HXMCabcdef").bytes(), 4, 6},
        {"Meta", ContainerKind::meta_comment, ByteWriter().raw("/*@Meta {}").bytes(), 0, 10},
        {"sized", ContainerKind::sized_magic,
         ByteWriter().u32(0x0085988d).u32(0).u32(5).zeros(9).bytes(), 0, 17},
        {"zlib", ContainerKind::zlib,
         ByteWriter().u32(1).u32(2).u32(14).u32(64).u16(0x9c78).zeros(30).bytes(), 16, 10},
        {"index", ContainerKind::index_text,
         ByteWriter().raw("{\n\tindex = {\n\tindex = { a = \"}\\\"\" } }").bytes(), 11, 26},
        {"archive", ContainerKind::archive,
         ByteWriter().u32(70).raw(archived).zeros(4).raw(archived).bytes(), 4, 70},
        {"hsin", ContainerKind::hsin,
         ByteWriter().u32(76).u32(0).u32(1).raw("hsin").zeros(70).bytes(), 12, 64},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto insert = read_state(bare_state(c.payload), 5);
        EXPECT_EQ(insert.containerKind, c.kind);
        EXPECT_EQ(insert.chunkOffset, payload_at + c.offset);
        EXPECT_EQ(insert.chunkSize, c.size);
    }
    const auto zlib = read_state(bare_state(cases[10].payload));
    EXPECT_EQ(zlib.zlibWords, (std::array<std::uint32_t, 4>{1, 2, 14, 64}));
}

TEST(TaggedContainers, OnesThatBreakTheirLimitsAreNone) {
    const Bytes payloads[] = {
        ByteWriter().u32(0x0085988d).u32(0).u32(54).zeros(49).raw("VC2!").bytes(),
        ByteWriter().u32(1).u32(2).u32(11).u32(64).u16(0x9c78).zeros(30).raw("VC2!").bytes(),
        ByteWriter().u32(1).u32(2).u32(14).u32(63).u16(0x9c78).zeros(30).bytes(),
        ByteWriter().raw("{\n\tindex = {\n").bytes(),
        ByteWriter().u32(75).u32(0).u32(1).raw("hsin").zeros(5).bytes(),
    };
    for (const auto& payload : payloads) {
        SCOPED_TRACE(payload.size());
        const auto kind = read_state(bare_state(payload)).containerKind;
        EXPECT_TRUE(kind == ContainerKind::none || kind == ContainerKind::scored);
    }
}

Bytes preset_chunk(const std::string& tree) {
    return ByteWriter()
        .raw(ByteWriter(true).u32(28 + tree.size()).bytes())
        .zeros(16)
        .raw("XPst")
        .zeros(4)
        .raw(tree)
        .zeros(9)
        .bytes();
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
                           .raw(builder::real_control("Gain", 0.5, 12))
                           .raw(builder::whole_control("Mode", -3, 12))
                           .raw(builder::real_control("Pan", 1e30, 12))
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
    const Bytes beyond = builder::real_control("Gain", 1.1e30, 8);
    EXPECT_EQ(read_state(bare_state(beyond)).containerKind, ContainerKind::none);
}

const std::string code = "DigiTest";

/// A parameter map that has two values, and one of a name that the map's end cuts.
Bytes value_map() {
    return plugin_chunk(code, "elck", "",
                        ByteWriter()
                            .zeros(4)
                            .raw(builder::real_control("EQ Gain", -6.5, 12))
                            .raw(builder::whole_control("Type", 2, 8))
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

    const Bytes image = builder::plugin_settings_block({.state = chain});
    const auto values = read_elck_map(ByteView(image), 0, image.size());
    EXPECT_EQ(values, (std::map<std::string, double>{{"EQ Gain", -6.5}, {"Type", 2}}));
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

TEST(Scoring, TheHeaviestSignTellsPlaceSizeAndCopies) {
    const Bytes riff = ByteWriter().raw("RIFF").raw(Bytes(36, 0x82)).bytes();
    const Bytes braces = ByteWriter().raw("{").raw(std::string(70, 'a')).raw("}").bytes();
    std::string lines;
    for (int i = 0; i < 60; ++i) lines += "line\n";
    const std::string text(130, 'a');
    const struct {
        const char* how;  ///< nothing: no state
        Bytes payload;
        std::size_t offset, size;
        std::uint32_t copies = 1;
    } cases[] = {
        {"", noise, 0, 0},
        {"", ByteWriter().raw("RIFF").raw(Bytes(20, 0x81)).bytes(), 0, 0},
        {"braces balance", ByteWriter().raw(noise).raw(braces).raw(noise).bytes(), 100, 72},
        {"length closes", ByteWriter().u32(80 + 24).raw(Bytes(80, 0x81)).bytes(), 4, 80},
        {"RIFF", ByteWriter().raw(riff).raw(noise).bytes(), 0, 140},
        {"zlib", ByteWriter().u16(0x9c78).raw(noise).bytes(), 0, 102},
        {"RIFF", ByteWriter().u32(40).raw(riff).raw(noise).bytes(), 4, 40},
        {"RIFF", ByteWriter().u32(40).raw(riff).raw(riff).raw(noise).bytes(), 4, 40, 2},
        {"RIFF", ByteWriter().u32(40).raw(riff).zeros(4).raw(riff).raw(noise).bytes(), 4, 40, 2},
        {"RIFF", ByteWriter().u32(44).u32(9).raw(riff).raw(riff).bytes(), 8, 40, 2},
        {"text", ByteWriter().u32(130).raw(text).bytes(), 4, 130},
        {"", ByteWriter().u32(130).raw(text).raw(noise).bytes(), 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << &c - cases << ' ' << c.how);
        const auto insert = read_state(bare_state(c.payload));
        EXPECT_EQ(insert.how, c.how);
        const bool is_scored = *c.how != '\0';
        EXPECT_EQ(insert.containerKind, is_scored ? ContainerKind::scored : ContainerKind::none);
        EXPECT_EQ(insert.chunkOffset, is_scored ? payload_at + c.offset : 0);
        EXPECT_EQ(insert.chunkSize, c.size);
        EXPECT_EQ(insert.copies, c.copies);
    }
    // Nearly all text, with no length word where one could stand in front of it.
    const Bytes unsized =
        builder::block(0x1038, ByteWriter().zeros(16).raw(code).u8(0x81).raw(lines).bytes());
    const auto plain = read_plugin_inserts(BlockIndex(ByteView(unsized))).at(0);
    EXPECT_EQ(plain.how, "text (no tag)");
    EXPECT_EQ(plain.chunkOffset, 33U);
    EXPECT_EQ(plain.chunkSize, lines.size() + 1);
    const auto chunk = read_state(plugin_chunk(code, "dflt", "Name", noise));
    EXPECT_EQ(chunk.how, "AAX chunk data");
    EXPECT_EQ(chunk.chunkOffset, payload_at);
}

}  // namespace
}  // namespace tanrove
