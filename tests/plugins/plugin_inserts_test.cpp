// Inserts in whole sessions: who they are, on which strip, in which state of their switches.
#include "plugins/plugin_inserts.hpp"

#include <gtest/gtest.h>

#include "session/routing.hpp"
#include "session/strip_rows.hpp"
#include "support/damaged_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;

std::vector<PluginInsert> inserts_of(const Bytes& image) {
    return read_plugin_inserts(BlockIndex(ByteView(image)));
}

Bytes session_with_inserts() {
    SessionBuilder session;
    session.track({.name = "Vox",
                   .inserts = {{.code = "Digi47e3", .channels = 1},
                               {.code = "Wav\x01Shel",
                                .bypassed = true,
                                .key_input = 5,
                                .lanes = {{.name = "Ratio", .points = {{.position = 9}}}}}}});
    session.track({.name = "Keys", .kind = TrackKind::instrument, .inserts = {{.active = false}}});
    session.track({.name = "Main", .kind = TrackKind::master, .inserts = {{}}});
    return session.image();
}

TEST(ReadPluginInserts, CarryStripSwitchesAndLanes) {
    const Bytes image = session_with_inserts();
    const BlockIndex index{ByteView(image)};
    const auto rows = readStripRows(index).rows;
    const auto inserts = inserts_of(image);
    ASSERT_EQ(inserts.size(), 4U);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(inserts[0].code, "Digi47e3");
    EXPECT_EQ(inserts[0].channels, 1);
    EXPECT_EQ(inserts[0].keyInput, -1) << "the next slot's key is not its own";
    EXPECT_EQ(inserts[1].code, "Wav.Shel");
    EXPECT_EQ(inserts[1].keyInput, 5);
    EXPECT_EQ(inserts[1].productText,
              "Polydflt"
              "Default");
    for (std::size_t i = 0; i < inserts.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(inserts[i].bypassed, i == 1);
        EXPECT_EQ(inserts[i].inactive, i == 2);
        EXPECT_EQ(inserts[i].lanes.size(), i == 1 ? 1U : 0U);
        EXPECT_EQ(inserts[i].slotWord, inserts[i].lanes.size());
        const std::size_t row = i < 2 ? 0 : i - 1;
        EXPECT_EQ(strip_rows_of(inserts, rows)[i], row);
        EXPECT_EQ(inserts[i].hostStart == rows[row].start, i < 3)
            << "a master's inner row is the host";
    }
    const auto routing = readRouting(index, rows, {});
    ASSERT_FALSE(routing.empty());
    EXPECT_EQ(routing[0].output_name, "Out 1-2") << "the key input is no output";
}

TEST(ReadPluginInserts, TheChunkLimitIsBelievedOnlyInFrontOfZeros) {
    const struct {
        const char* what;
        std::uint32_t state_bytes;
        std::size_t payload_bytes;
        std::uint8_t last_byte;
        std::size_t limit;
    } cases[] = {
        {"zeros behind", 20, 40, 0, 37},         {"more behind", 20, 40, 1, 49},
        {"in front of the text", 15, 40, 0, 49}, {"just behind the code", 16, 40, 0, 33},
        {"at the end", 32, 40, 0, 49},           {"a short block", 16, 16, 0, 25},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ByteWriter payload;
        payload.u32(1).u32(c.state_bytes).pad_to(c.payload_bytes - 1).u8(c.last_byte);
        Bytes image = block(0x1038, payload.bytes());
        image.resize(image.size() + 16);
        const auto inserts = inserts_of(image);
        ASSERT_EQ(inserts.size(), 1U);
        EXPECT_EQ(inserts[0].chunkLimit, c.limit);
    }
    Bytes cut = block(0x1038, Bytes(23));
    EXPECT_EQ(cut.size(), 32U);
    EXPECT_TRUE(inserts_of(cut).empty()) << "the image ends in front of the text";
}

TEST(ReadPluginInserts, WithoutASlotTheActiveByteStillCounts) {
    const Bytes block = plugin_settings_block({});
    const auto off = inserts_of(ByteWriter().raw(block).u8(0).bytes());
    ASSERT_EQ(off.size(), 1U);
    EXPECT_TRUE(off[0].inactive);
    EXPECT_FALSE(off[0].bypassed);
    EXPECT_FALSE(inserts_of(block).at(0).inactive) << "no byte behind the block";
}

TEST(ReadPluginInserts, PresetNamesStandBehindTheirTag) {
    const struct {
        const char* what;
        Bytes payload;
        const char* name;
    } cases[] = {
        {"behind zeros", ByteWriter().raw("FFPrab").zeros(5).raw("Hall").zeros(30).bytes(), "Hall"},
        {"right behind", ByteWriter().raw("ikdtRoom\x01").raw(Bytes(30, 0x81)).bytes(), "Room"},
        {"one character", ByteWriter().raw("FFPr").zeros(2).raw("H").zeros(30).bytes(), ""},
        {"too near the end", ByteWriter().raw("FFPrHall").zeros(8).bytes(), ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Bytes chunk = plugin_chunk("DigiTest", "dflt", "", c.payload);
        const auto inserts = inserts_of(plugin_settings_block({.state = chunk}));
        ASSERT_EQ(inserts.size(), 1U);
        EXPECT_EQ(inserts[0].presetName, c.name);
    }
}

TEST(ReadPluginInserts, ADeepNestOfBlocksIsNotSearchedOverAndOver) {
    ByteWriter image;
    constexpr std::size_t blocks = 5000;
    for (std::size_t i = 0; i < blocks; ++i) {
        image.u8('Z').u16(1).u32(9 * (blocks - i) + 100).u16(0x1038);
    }
    const Bytes nest = image.zeros(200).bytes();
    EXPECT_EQ(inserts_of(nest).size(), max_nested_settings + 1);
}

TEST(ReadPluginInserts, DamageLeavesPlacesInsideTheBlocks) {
    for_each_damage(session_with_inserts(), 29, [](const Bytes& image) {
        for (const auto& insert : inserts_of(image)) {
            ASSERT_LE(insert.chunkLimit, image.size());
            ASSERT_LE(insert.chunkOffset + insert.chunkSize, insert.chunkLimit);
            ASSERT_LE(insert.elckOffset + insert.elckSize, insert.chunkLimit);
        }
    });
}

TEST(ReadPluginInserts, TheHostIsTheSmallestAudioRowAndTheSlotStandsBehindTheState) {
    const auto host_of = [](std::uint16_t outer, std::uint16_t inner) {
        const Bytes settings = plugin_settings_block({});
        const Bytes image = block(outer, block(inner, settings));
        return inserts_of(image).at(0).hostStart;
    };
    EXPECT_EQ(host_of(0x261b, 0x2621), 0U);
    EXPECT_EQ(host_of(0x2621, 0x261b), 9U);
    EXPECT_EQ(host_of(0x261b, 0x261b), 9U);
    // 65535 means that there is none.
    for (const std::uint16_t key : {std::uint16_t{65534}, std::uint16_t{65535}}) {
        const Bytes image =
            ByteWriter().raw(insert_slot({.padding = 9, .key_input = key})).zeros(9).bytes();
        EXPECT_EQ(inserts_of(image).at(0).keyInput, key == 65534 ? key : -1);
    }
    EXPECT_FALSE(strip_rows_of(std::vector<PluginInsert>(1), std::vector<StripRow>(1))[0])
        << "an insert of no strip";
}

}  // namespace
}  // namespace tanrove
