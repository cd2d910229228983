// What clips carry by their names: gain, warp, pitch, loops, effects.
#include <gtest/gtest.h>

#include <bit>
#include <limits>

#include "reading.hpp"
#include "session/clip_effects.hpp"
#include "session/clip_gains.hpp"
#include "session/loop_records.hpp"
#include "session/pitch_shifts.hpp"
#include "session/warp_maps.hpp"
#include "support/records/clip_table_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr float not_a_number = std::numeric_limits<float>::quiet_NaN();

RegionSpec named(const std::string& name) {
    RegionSpec region;
    region.name = name;
    region.length = 1000;
    return region;
}

TEST(ReadClipGains, ClipsFindTheirEntryInEveryForm) {
    std::vector<RegionSpec> regions;
    const auto add = [&](const char* name, std::uint32_t entry, GainPlace place) {
        regions.push_back(named(name));
        regions.back().gain_entry = entry;
        regions.back().gain_place = place;
    };
    add("last", 0, GainPlace::last);
    add("marker", 1, GainPlace::behind_marker);
    add("old", 1, GainPlace::old_marker);
    add("flat", 2, GainPlace::last);
    add("none", 3, GainPlace::last);
    add("", 0, GainPlace::last);
    add("warped", 1, GainPlace::last);
    regions.back().warp = WarpSpec{.points = {{0, 0}, {9, 9}}};
    add("warped, more behind", 1, GainPlace::behind_marker);
    regions.back().warp = WarpSpec{.points = {{0, 0}, {9, 9}}};
    RegionSpec midi = named("last");
    midi.gain_entry = 1;
    const Bytes image =
        ByteWriter()
            .raw(clip_gain_block({{{{0, -3.5F}}}, {{{480, 1}, {960, -6}, {990, 0}}}, {}}))
            .raw(region_list_block(regions))
            .raw(group_definitions_block({{.name = "last", .gain_entry = 1}}))
            .raw(block(0x2634, block(0x2633, clip_name_block(midi, 0x2628))))
            .bytes();
    const ClipGains gains = over(image, readClipGains);
    EXPECT_EQ(gains.audio.fixed_db,
              (std::map<std::string, double, std::less<>>{{"last", -3.5},
                                                          {"marker", 1},
                                                          {"old", 1},
                                                          {"flat", 0},
                                                          {"warped", 1},
                                                          {"warped, more behind", 1}}));
    EXPECT_EQ(gains.audio.line_of_clip.size(), 4U) << "one point draws no line";
    EXPECT_EQ(gains.line(gains.audio, "last"), nullptr);
    const auto* line = gains.line(gains.audio, "old");
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(fields(line->at(0).position, line->at(1).position, line->at(1).gain_db),
              "480 960 -6");
    EXPECT_EQ(gains.groups.fixed_db, (std::map<std::string, double, std::less<>>{{"last", 1}}));
    EXPECT_EQ(gains.line(gains.groups, "last"), line);
    EXPECT_EQ(gains.entries.at(2).size(), 1U) << "an entry without points reads as one at 0 dB";
    EXPECT_EQ(gains.count_disagreements, 0);
}

TEST(ReadClipGains, GainsBeyondTheFaderReadAsZeroAndTheLengthOverridesTheCount) {
    GainEntrySpec odd{
        .points = {{1, -145.0F}, {2, -144.9F}, {3, 36.9F}, {4, 37.0F}, {5, not_a_number}}};
    odd.counted = 2;
    const ClipGains lines = over(clip_gain_block({odd, {}}), readClipGains);
    ASSERT_EQ(lines.entries.size(), 2U);
    std::vector<float> gains;
    for (const auto& point : lines.entries[0]) gains.push_back(static_cast<float>(point.gain_db));
    EXPECT_EQ(gains, (std::vector<float>{0, -144.9F, 36.9F, 0, 0}));
    EXPECT_EQ(lines.count_disagreements, 1);
}

TEST(ReadClipGains, TheTableEndsAtALengthThatIsNone) {
    constexpr std::size_t second_entry_at = 13 + 8 + 22;
    for (const unsigned length : {13U, 14U, 15U, 21U, 22U, 23U, 200U}) {
        Bytes image = clip_gain_block({{{{1, 1}}}, {{{2, 2}}}});
        image[second_entry_at + 4] = static_cast<std::uint8_t>(length);
        EXPECT_EQ(over(image, readClipGains).entries.size(), length == 14 || length == 22 ? 2U : 1U)
            << length;
    }
}

TEST(ReadWarpMaps, KeepsTickMapsAndSampleMapsApartAndOnlyAnchorsInFrontOfTheStart) {
    constexpr std::uint64_t quarter_early = 0 - std::uint64_t{960000};
    const WarpSpec warps[] = {
        {.points = {{0, 0}, {48000, 40000}, {96000, 96000.5}}, .anchor = 4800},
        {.points = {{0, 0}, {7752720000, 300}}, .in_ticks = true, .anchor = 960000},
        {.points = {{quarter_early, 0}, {9, 3}}, .in_ticks = true, .anchor = quarter_early},
        {.points = {{0, 0}}}};
    std::vector<RegionSpec> regions = {named("plain")};
    for (const char name : {'s', 't', 'e', '1'}) {
        regions.push_back(named(std::string(1, name)));
        regions.back().warp = warps[regions.size() - 2];
    }
    const WarpMaps maps = over(region_list_block(regions), readWarpMaps);
    std::string text;
    for (const auto* kind : {&maps.in_samples, &maps.in_ticks}) {
        for (const auto& [name, map] : *kind) {
            text += name + fields("", maps.anchors.at(name).samples(120, 48000)) + ":";
            for (const auto& point : map) text += fields("", point.position, point.source_sample);
            text += "; ";
        }
    }
    EXPECT_EQ(text,
              "s 4800: 0 0 48000 40000 96000 96000.5; e -24000: 0 0 9 3; "
              "t 24000: 0 0 7752720000 300; ")
        << "a quarter note at 120 is half a second";
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
        const Bytes clip = ByteWriter().counted("n").block(0x2636, map.bytes()).bytes();
        return over(block(0x2629, block(0x2628, clip)), readWarpMaps).in_samples;
    };
    EXPECT_TRUE(narrow(0, false).empty());
    for (const std::size_t behind : {0U, 40U}) {
        ASSERT_EQ(narrow(behind).size(), 1U);
        const WarpMap map = narrow(behind).at("n");
        EXPECT_EQ(map[1].position, 0x40F86A00);
        EXPECT_EQ(fields(map[0].source_sample, map[1].source_sample, map[2].source_sample),
                  "100000 200000 300000");
    }
}

TEST(ReadPitchShifts, BothFormsHaveTheirLimits) {
    const struct {
        bool short_form;
        std::int32_t semitones;
        float cents;
        double shift;  // 0: not there
    } cases[] = {
        {false, 0, 0, 0},
        {false, -7, 25, -6.75},
        {false, 48, 0, 48},
        {false, -48, 0, -48},
        {false, 49, 0, 0},
        {false, 3, 100, 0},
        {false, 3, not_a_number, 0},
        {true, 5, -50, 4.5},
        {true, 3, 100, 3},
        {true, 48, 0, 48},
        {true, 48, 1, 0},
        {true, 0, 12.5, 0.125},
        {true, -2, -100, -2},
    };
    for (const auto& c : cases) {
        RegionSpec region = named("p");
        region.pitch = {c.semitones, c.cents, c.short_form};
        auto shifts = over(region_list_block({region}), readPitchShifts);
        EXPECT_EQ(shifts.count("p"), c.shift == 0 ? 0U : 1U);
        EXPECT_EQ(shifts["p"], c.shift) << c.short_form << ' ' << c.semitones << ' ' << c.cents;
    }
}

TEST(ReadLoopRecords, AnotherSizeIsAnUnknownShape) {
    for (const std::uint32_t size : {58U, 59U, 60U}) {
        PlaylistSpec playlist{.name = "p", .placements = {{}, {}}};
        playlist.placements[1].id = 4;
        playlist.placements[1].position = 0x123456789a;
        playlist.placements[1].inside =
            loop_block({.mode = 2, .count = 5, .length = 96000, .extra = 9, .size = size});
        const auto loops = over(playlist_block(playlist), readLoopRecords);
        ASSERT_EQ(loops.size(), 1U);
        const auto& l = loops[0];
        EXPECT_EQ(l.key, 0x3456789a00000004U);
        EXPECT_EQ(l.key, loop_key(0x123456789a, 4));
        EXPECT_EQ(l.parent_type, 0x1050);
        EXPECT_EQ(fields(l.known_shape, l.mode, l.count, l.length, l.loop_extra),
                  size == 59 ? "1 2 5 96000 9" : "0 0 0 0 0");
    }
}

TEST(ReadClipEffects, ClipsReferToRecordsThatHaveParameters) {
    std::vector<RegionSpec> regions;
    for (const std::uint64_t identity : {0ULL, 0x1122334455667788ULL, 2ULL, 3ULL}) {
        regions.push_back(named("clip " + std::to_string(regions.size())));
        regions.back().effects_identity = identity;
    }
    const std::string longest(63, 'n');
    const Bytes records = effects_block({{0, {{"none", 1}}},
                                         {0x1122334455667788, {{"Gain", 5}, {longest, 0xfffffffe}}},
                                         {2, {{longest + "n", 1}, {"", 1}}}});
    const ClipEffects effects =
        over(ByteWriter().raw(records).raw(region_list_block(regions)).bytes(), readClipEffects);
    EXPECT_EQ(effects.record_of_clip,
              (std::map<std::string, std::size_t, std::less<>>{{"clip 1", 1}}));
    const auto* record = effects.record("clip 1");
    ASSERT_TRUE(record != nullptr && record->parameters.size() == 2);
    EXPECT_EQ(fields(record->parameters[0].name, record->parameters[0].value), "Gain 5");
    EXPECT_EQ(record->parameters[1].value, 0xfffffffeU);
}

}  // namespace
}  // namespace tanrove
