// Automation of plug-in controls, and the names that a session has for plug-ins.
#include <gtest/gtest.h>

#include "plugins/plugin_inserts.hpp"
#include "plugins/plugin_names.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;

/// The lanes of a plug-in with this one behind it.
std::vector<PluginLane> lanes_of(const Bytes& lane) {
    const Bytes image = ByteWriter().raw(plugin_settings_block({})).raw(lane).zeros(40).bytes();
    return read_plugin_inserts(BlockIndex(ByteView(image))).at(0).lanes;
}

TEST(PluginLanes, ValuesRunFromZeroToOneAndTicksFromTheOrigin) {
    constexpr std::int32_t half = 1 << 30;  // of the control's range
    PluginLaneSpec spec{.name = "Thresh",
                        .index = 7,
                        .id = "thr",
                        .default_value = 0,
                        .points = {{0, -half}, {4800, half}, {9600, -2 * half}},
                        .is_bypass = true,
                        .steps = 5};
    for (const bool in_ticks : {false, true}) {
        SCOPED_TRACE(in_ticks);
        spec.in_ticks = in_ticks;
        if (in_ticks) spec.points[0].position = 3567587328 + 10;  // the origin's low bits
        const auto lanes = lanes_of(control_lane(spec));
        ASSERT_EQ(lanes.size(), 1U);
        EXPECT_EQ(lanes[0].name, "Thresh");
        EXPECT_EQ(lanes[0].index, 7U);
        EXPECT_EQ(lanes[0].id, "thr");
        EXPECT_TRUE(lanes[0].is_bypass);
        EXPECT_EQ(lanes[0].steps, 5);
        EXPECT_EQ(lanes[0].in_ticks, in_ticks);
        EXPECT_EQ(lanes[0].default_value, 0.5);
        ASSERT_EQ(lanes[0].points.size(), 3U);
        EXPECT_EQ(lanes[0].points[0].position, in_ticks ? 10 : 0);
        EXPECT_EQ(lanes[0].points[0].value, 0);
        EXPECT_EQ(lanes[0].points[1].position, 4800);
        EXPECT_EQ(lanes[0].points[1].value, 1);
        EXPECT_EQ(lanes[0].points[2].value, -0.5) << "not cut here";
    }
    PluginLaneSpec ride;
    for (int i = 0; i < 70000; ++i) ride.points.push_back({i * 10LL, i});
    const auto rides = lanes_of(control_lane(ride));
    ASSERT_EQ(rides.size(), 1U);
    ASSERT_EQ(rides[0].points.size(), 70000U);
    EXPECT_EQ(rides[0].points.back().position, 699990);
}

TEST(PluginLanes, LimitsAreInclusive) {
    const struct {
        std::size_t name_bytes, id_bytes;
        bool is_lane, has_id;
    } cases[] = {{1, 1, true, true},   {128, 127, true, true}, {129, 1, false, false},
                 {0, 1, false, false}, {5, 128, true, false},  {5, 0, true, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name_bytes << ' ' << c.id_bytes);
        const auto lanes = lanes_of(control_lane(
            {.name = std::string(c.name_bytes, 'n'), .id = std::string(c.id_bytes, '1')}));
        ASSERT_EQ(lanes.size(), c.is_lane ? 1U : 0U);
        if (!c.is_lane) continue;
        EXPECT_EQ(lanes[0].id.empty(), !c.has_id);
    }
    Bytes short_of_points = control_lane({.points = {{0, 0}, {1, 0}}});
    constexpr std::size_t lane_in_part = 10;
    constexpr std::size_t count_in_part = lane_in_part + 25;
    ASSERT_EQ(short_of_points[count_in_part], 2);
    short_of_points[count_in_part] = 3;
    EXPECT_TRUE(lanes_of(short_of_points).empty());
}

TEST(PluginLanes, BelongToTheLastInsertInFrontOfThem) {
    ByteWriter image;
    image.raw(control_lane({.name = "nobody's"})).raw(plugin_settings_block({}));
    image.raw(plugin_settings_block({}))
        .raw(control_lane({.name = "the second's"}))
        .raw(insert_slot({}))
        .raw(control_lane({.name = "behind the third's slot"}));
    const auto inserts = read_plugin_inserts(BlockIndex(ByteView(image.bytes())));
    ASSERT_EQ(inserts.size(), 3U);
    EXPECT_TRUE(inserts[2].lanes.empty());
    EXPECT_TRUE(inserts[0].lanes.empty());
    ASSERT_EQ(inserts[1].lanes.size(), 1U);
    EXPECT_EQ(inserts[1].lanes[0].name, "the second's");
}

using Names = NamesByCode;

TEST(PluginNames, BothFormsOfTheCodeAreReadAndTheFirstNameCounts) {
    SessionBuilder session;
    session.plugin_name({.name = "EQ Seven", .code = "Digi47e3", .build = "eq7m"});
    session.plugin_name({.name = "Other", .code = "Digi47e3", .build = "eq7s"});
    session.top_level(plugin_name_record_later_code({.name = "L\xc3\xa4ng", .code = "AbcdEfgh"}));
    const auto names = [](const Bytes& image) {
        return read_plugin_names(BlockIndex(ByteView(image)));
    };
    EXPECT_EQ(names(session.image()), (Names{{"47e3eq7m", "EQ Seven"},
                                             {"47e3eq7s", "Other"},
                                             {"AbcdEfgh", "L\xc3\xa4ng"},
                                             {"Digi47e3", "EQ Seven"}}));
    const auto named = [&](std::size_t count) {
        return names(plugin_name_record({.name = std::string(count, 'n'), .code = "AbcdEfgh"}));
    };
    EXPECT_EQ(named(60)[0].first, "AbcdEfgh");
    EXPECT_TRUE(named(61).empty());
    EXPECT_TRUE(named(0).empty());
    // A record may hold a further text in front of its name; its size is limited from both sides.
    const auto record = [&](std::size_t payload_bytes) {
        ByteWriter payload;
        payload.u8(4).counted("\x01\x02").counted("EQ").raw("dcbAhgfE").pad_to(payload_bytes);
        return names(ByteWriter().raw(block(0x1017, payload.bytes())).zeros(9).bytes());
    };
    EXPECT_EQ(record(3998), (Names{{"AbcdEfgh", "EQ"}}));
    EXPECT_TRUE(record(3999).empty());
    // A true code stands above another record's product and build, whichever comes first.
    SessionBuilder shadowed;
    shadowed.plugin_name({.name = "First", .code = "DigiAbcd", .build = "Efgh"});
    shadowed.plugin_name({.name = "True", .code = "AbcdEfgh"});
    EXPECT_EQ(names(shadowed.image())[0].second, "True");
}

TEST(PluginNames, RealSessionsHoldASynth) {
    const Names synth = {{"DigiFelP", "Polyphonic"}, {"FelPPoly", "Polyphonic"}};
    const std::pair<const char*, Names> cases[] = {{"RegionTest.ptx", synth},
                                                   {"TempoTimeKeySig.ptx", synth},
                                                   {"TestPTX.ptx", {}},
                                                   {"Untitled32.ptx", synth}};
    for (const auto& [file, names] : cases) {
        TANROVE_REAL_SESSION(image, file);
        EXPECT_EQ(read_plugin_names(BlockIndex(ByteView(image))), names) << file;
    }
}

}  // namespace
}  // namespace tanrove
