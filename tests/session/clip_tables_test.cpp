// What clips carry by their names: gain, warp, pitch, loops, effects.
#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "session/clip_effects.hpp"
#include "session/clip_gains.hpp"
#include "session/loop_records.hpp"
#include "session/pitch_shifts.hpp"
#include "session/warp_maps.hpp"
#include "support/records/clip_table_records.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::GainEntrySpec;
using builder::GainPlace;
using builder::RegionSpec;

RegionSpec named(const std::string& name) {
    RegionSpec region;
    region.name = name;
    region.length = 1000;
    return region;
}

Bytes joined(const std::vector<Bytes>& blocks) {
    ByteWriter image;
    for (const auto& b : blocks) image.raw(b);
    return image.bytes();
}

TEST(ReadClipGains, ClipsFindTheirEntryInEveryForm) {
    std::vector<RegionSpec> regions;
    for (const auto& [name, entry, place] :
         {std::tuple("last", 0U, GainPlace::last),
          std::tuple("marker", 1U, GainPlace::behind_marker),
          std::tuple("old", 1U, GainPlace::old_marker), std::tuple("flat", 2U, GainPlace::last),
          std::tuple("none", 3U, GainPlace::last), std::tuple("", 0U, GainPlace::last)}) {
        RegionSpec region = named(name);
        region.gain_entry = entry;
        region.gain_place = place;
        regions.push_back(region);
    }
    for (const auto place : {GainPlace::last, GainPlace::behind_marker}) {
        RegionSpec warped = named(place == GainPlace::last ? "warped" : "warped, more behind");
        warped.warp = builder::WarpSpec{.points = {{0, 0}, {9, 9}}};
        warped.gain_entry = 1;
        warped.gain_place = place;
        regions.push_back(warped);
    }
    const Bytes image = joined({
        builder::clip_gain_block({{{{0, -3.5F}}}, {{{480, 1}, {960, -6}, {990, 0}}}, {}}),
        builder::region_list_block(regions),
    });
    const BlockIndex index{ByteView(image)};
    EXPECT_EQ(readFirstClipGains(index),
              (std::map<std::string, double>{{"last", -3.5},
                                             {"marker", 1},
                                             {"old", 1},
                                             {"flat", 0},
                                             {"warped", 1},
                                             {"warped, more behind", 1}}));
    const ClipGainLines lines = readClipGains(index);
    EXPECT_EQ(lines.entry_of_clip.size(), 4U) << "one point draws no line";
    EXPECT_EQ(lines.line("last"), nullptr);
    ASSERT_NE(lines.line("old"), nullptr);
    EXPECT_EQ(lines.line("old")->at(1).position, 960);
    EXPECT_EQ(lines.line("old")->at(1).gain_db, -6);
    EXPECT_EQ(lines.entries.at(2).size(), 1U) << "an entry without points reads as one at 0 dB";
    EXPECT_EQ(lines.count_disagreements, 0);
}

TEST(ReadClipGains, GainsBeyondTheFaderReadAsZeroAndTheLengthOverridesTheCount) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    GainEntrySpec odd{.points = {{1, -145.0F}, {2, -144.9F}, {3, 36.9F}, {4, 37.0F}, {5, nan}}};
    odd.counted = 2;
    const Bytes image = builder::clip_gain_block({odd, {}});
    const ClipGainLines lines = readClipGains(BlockIndex{ByteView(image)});
    ASSERT_EQ(lines.entries.size(), 2U);
    std::vector<float> gains;
    for (const auto& point : lines.entries[0]) gains.push_back(static_cast<float>(point.gain_db));
    EXPECT_EQ(gains, (std::vector<float>{0, -144.9F, 36.9F, 0, 0}));
    EXPECT_EQ(lines.count_disagreements, 1);
}

TEST(ReadClipGains, TheTableEndsAtALengthThatIsNone) {
    constexpr std::size_t second_entry_at = 13 + 8 + 22;
    for (const unsigned length : {13U, 14U, 15U, 21U, 22U, 23U, 200U}) {
        SCOPED_TRACE(length);
        Bytes image = builder::clip_gain_block({{{{1, 1}}}, {{{2, 2}}}});
        image[second_entry_at + 4] = static_cast<std::uint8_t>(length);
        const auto lines = readClipGains(BlockIndex{ByteView(image)});
        EXPECT_EQ(lines.entries.size(), length == 14 || length == 22 ? 2U : 1U);
    }
}

TEST(ReadWarpMaps, KeepsTickMapsAndSampleMapsApart) {
    RegionSpec in_samples = named("samples");
    in_samples.warp =
        builder::WarpSpec{.points = {{0, 0}, {48000, 40000}, {96000, 96000.5}}, .anchor = 4800};
    RegionSpec in_ticks = named("ticks");
    in_ticks.warp = builder::WarpSpec{
        .points = {{0, 0}, {7752720000, 300}}, .in_ticks = true, .anchor = 960000};
    RegionSpec single = named("one point");
    single.warp = builder::WarpSpec{.points = {{0, 0}}};
    const Bytes image = builder::region_list_block({in_samples, named("plain"), in_ticks, single});
    const WarpMaps maps = readWarpMaps(BlockIndex{ByteView(image)});
    ASSERT_EQ(maps.in_samples.size(), 1U);
    const WarpMap& samples = maps.in_samples.at("samples");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples[2].position, 96000);
    EXPECT_EQ(samples[2].source_sample, 96000.5);
    EXPECT_EQ(maps.anchors.at("samples").samples(120, 48000), 4800);
    ASSERT_EQ(maps.in_ticks.size(), 1U);
    EXPECT_EQ(maps.in_ticks.at("ticks")[1].position, 7752720000);
    EXPECT_EQ(maps.anchors.at("ticks").samples(120, 48000), 24000) << "a quarter note at 120";
}

TEST(ReadWarpMaps, AnAnchorMayLieInFrontOfTheSessionsStartButNoPoint) {
    constexpr std::uint64_t quarter_early = 0 - std::uint64_t{960000};
    RegionSpec early = named("early");
    early.warp = builder::WarpSpec{
        .points = {{quarter_early, 0}, {960000, 300}}, .in_ticks = true, .anchor = quarter_early};
    const Bytes image = builder::region_list_block({early});
    const WarpMaps maps = readWarpMaps(BlockIndex{ByteView(image)});
    ASSERT_EQ(maps.in_ticks.size(), 1U);
    EXPECT_EQ(maps.in_ticks.at("early")[0].position, 0);
    EXPECT_EQ(maps.anchors.at("early").samples(120, 48000), -24000);
}

TEST(ReadWarpMaps, ReadsTheNarrowFormWhereTheWideOneHasNoRoomOrRunsBack) {
    // 12 bytes a point: the upper half of each number is the lower half of the next position.
    const auto narrow = [](std::size_t behind, bool is_whole = true) {
        ByteWriter map;
        map.zeros(26).u16(3).zeros(6).u64(7);
        map.number(1000, 5).zeros(7);
        map.number(0x40F86A00, 5).zeros(7);  // the upper half of 100000.0
        map.number(0x41086A00, 5).zeros(7);  // and of 200000.0
        if (is_whole) map.u32(0x41124F80);
        map.zeros(behind);
        return joined(
            {builder::block(0x2628, ByteWriter().counted("n").block(0x2636, map.bytes()).bytes())});
    };
    const Bytes cut = narrow(0, false);
    EXPECT_TRUE(readWarpMaps(BlockIndex{ByteView(cut)}).in_samples.empty());
    for (const std::size_t behind : {0U, 40U}) {
        SCOPED_TRACE(behind);
        const Bytes image = narrow(behind);
        const WarpMaps maps = readWarpMaps(BlockIndex{ByteView(image)});
        ASSERT_EQ(maps.in_samples.count("n"), 1U);
        const WarpMap& map = maps.in_samples.at("n");
        EXPECT_EQ(map[1].position, 0x40F86A00);
        EXPECT_EQ(map[0].source_sample, 100000);
        EXPECT_EQ(map[1].source_sample, 200000);
        EXPECT_EQ(map[2].source_sample, 300000);
    }
}

TEST(ReadPitchShifts, BothFormsHaveTheirLimits) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        bool short_form;
        std::int32_t semitones;
        float cents;
        double shift;  // 0: not there
    } cases[] = {
        {false, 0, 0, 0},     {false, -7, 25, -6.75}, {false, 48, 0, 48}, {false, -48, 0, -48},
        {false, 49, 0, 0},    {false, 3, 100, 0},     {false, 3, nan, 0}, {true, 5, -50, 4.5},
        {true, 3, 100, 3},    {true, 48, 0, 48},      {true, 48, 1, 0},   {true, 0, 12.5, 0.125},
        {true, -2, -100, -2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.short_form << ' ' << c.semitones << ' ' << c.cents);
        RegionSpec region = named("p");
        region.pitch = {c.semitones, c.cents, c.short_form};
        const Bytes image = builder::region_list_block({region});
        const auto shifts = readPitchShifts(BlockIndex{ByteView(image)});
        EXPECT_EQ(shifts, c.shift == 0 ? (std::map<std::string, double>{})
                                       : (std::map<std::string, double>{{"p", c.shift}}));
    }
}

TEST(ReadLoopRecords, AnotherSizeIsAnUnknownShape) {
    for (const std::uint32_t size : {58U, 59U, 60U}) {
        SCOPED_TRACE(size);
        builder::PlaylistSpec playlist{.name = "p", .placements = {{}, {}}};
        playlist.placements[1].id = 4;
        playlist.placements[1].position = 0x123456789a;
        playlist.placements[1].inside =
            builder::loop_block({.mode = 2, .count = 5, .length = 96000, .extra = 9, .size = size});
        const Bytes image = builder::playlist_block(playlist);
        const auto loops = readLoopRecords(BlockIndex{ByteView(image)});
        ASSERT_EQ(loops.size(), 1U);
        EXPECT_EQ(loops[0].key, 0x3456789a00000004U);
        EXPECT_EQ(loops[0].key, loop_key(0x123456789a, 4));
        EXPECT_EQ(loops[0].parent_type, 0x1050);
        EXPECT_EQ(loops[0].known_shape, size == 59);
        EXPECT_EQ(loops[0].mode, size == 59 ? 2U : 0U);
        EXPECT_EQ(loops[0].count, size == 59 ? 5U : 0U);
        EXPECT_EQ(loops[0].length, size == 59 ? 96000U : 0U);
        EXPECT_EQ(loops[0].loop_extra, size == 59 ? 9U : 0U);
    }
}

TEST(ReadClipEffects, ClipsReferToRecordsThatHaveParameters) {
    std::vector<RegionSpec> regions;
    for (const std::uint64_t identity : {0ULL, 0x1122334455667788ULL, 2ULL, 3ULL}) {
        regions.push_back(named("clip " + std::to_string(regions.size())));
        regions.back().effects_identity = identity;
    }
    const std::string longest(63, 'n');
    const Bytes image = joined({
        builder::effects_block({{0, {{"none", 1}}},
                                {0x1122334455667788, {{"Gain", 5}, {longest, 0xfffffffe}}},
                                {2, {{longest + "n", 1}, {"", 1}}}}),
        builder::region_list_block(regions),
    });
    const ClipEffects effects = readClipEffects(BlockIndex{ByteView(image)});
    EXPECT_EQ(effects.record_of_clip, (std::map<std::string, std::size_t>{{"clip 1", 1}}));
    const auto* record = effects.record("clip 1");
    ASSERT_NE(record, nullptr);
    ASSERT_EQ(record->parameters.size(), 2U);
    EXPECT_EQ(record->parameters[0].name, "Gain");
    EXPECT_EQ(record->parameters[0].value, 5U);
    EXPECT_EQ(record->parameters[1].value, 0xfffffffeU);
}

}  // namespace
}  // namespace tanrove
