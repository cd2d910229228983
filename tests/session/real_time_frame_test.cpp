// What the readers of the time frame and of the settings find in real sessions.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "session/grid_and_nudge.hpp"
#include "session/memory_locations.hpp"
#include "session/meter_map.hpp"
#include "session/session_settings.hpp"
#include "session/tempo_map.hpp"
#include "session/timecode.hpp"
#include "support/real_sessions.hpp"

namespace tanrove {
namespace {

struct RealSession {
    const char* file;
    double default_bpm;
    std::size_t tempo_points, meters, locations;
    std::uint32_t frame_rate_code, start_frames;
    bool has_extended;
    GridSetting grid;
    AudioFormat format;
    BitDepth depth;
};

class RealTimeFrame : public testing::TestWithParam<RealSession> {};

TEST_P(RealTimeFrame, IsReadWhole) {
    const RealSession& expected = GetParam();
    TANROVE_REAL_SESSION(image, expected.file);
    const BlockIndex index{ByteView(image)};
    EXPECT_EQ(readDefaultTempo(index), expected.default_bpm);
    const auto tempo = readTempoMap(index);
    EXPECT_EQ(tempo.points.size(), expected.tempo_points);
    EXPECT_EQ(tempo.points.at(0).bpm, expected.default_bpm);
    EXPECT_EQ(readMeterMap(index).size(), expected.meters);
    EXPECT_EQ(readMemoryLocations(index).size(), expected.locations);

    const auto rate = readFrameRate(index).value_or(FrameRate{});
    const auto extended = readExtendedTimecode(index);
    EXPECT_EQ(rate.base_code, expected.frame_rate_code);
    EXPECT_EQ(rate.start_frames, expected.start_frames);
    EXPECT_EQ(extended.has_value(), expected.has_extended);
    const TimecodeInfo* row = find_timecode(rate, extended);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->extended_code, expected.frame_rate_code);

    const auto values = readGridAndNudge(index).value_or(GridAndNudge{});
    EXPECT_EQ(values.nudge.beats, 1U);
    EXPECT_EQ(values.grid.bars, expected.grid.bars);
    EXPECT_EQ(values.grid.beats, expected.grid.beats);
    EXPECT_EQ(values.grid.ticks, expected.grid.ticks);

    const auto depth = readBitDepth(index).value_or(BitDepth{});
    EXPECT_EQ(readAudioFormat(index), expected.format);
    EXPECT_EQ(depth.bits, expected.depth.bits);
    EXPECT_EQ(depth.is_float, expected.depth.is_float);
    EXPECT_EQ(readPanDepth(index), 2);
    EXPECT_EQ(readClickSetting(index), 1);
}

constexpr auto wav = AudioFormat::wav;
constexpr RealSession real_sessions[] = {
    {"TempoTimeKeySig.ptx", 50, 23, 9, 4, 7, 108000, true, {0, 0, 240}, wav, {24, false}},
    {"RegionTest.ptx", 120, 1, 0, 0, 7, 0, true, {0, 1, 0}, wav, {24, false}},
    {"TestPTX.ptx", 120, 1, 0, 0, 9, 0, false, {1, 0, 0}, AudioFormat::aiff, {24, false}},
    {"Untitled32.ptx", 120, 1, 0, 0, 7, 108000, true, {0, 0, 240}, wav, {32, true}},
};

INSTANTIATE_TEST_SUITE_P(All, RealTimeFrame, testing::ValuesIn(real_sessions),
                         [](const auto& test) {
                             const std::string_view file = test.param.file;
                             return std::string(file.substr(0, file.find('.')));
                         });

TEST(RealTempo, CountsTheBeatOfTheFirstPoint) {
    TANROVE_REAL_SESSION(image, "TempoTimeKeySig.ptx");
    const auto map = readTempoMap(BlockIndex(ByteView(image))).points;
    ASSERT_EQ(map.size(), 23U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(map[i].bpm, 50.0 + static_cast<double>(i));
        EXPECT_EQ(map[i].tick, 240000.0 * static_cast<double>(i));
    }
    EXPECT_EQ(map.back().tick, 7701600000.0);
    EXPECT_NEAR(ticksToSeconds(map, 14400000, 120), 11.007892, 5e-7);
}

TEST(RealMeter, ReachesBeyondFiveBytesOfTicks) {
    TANROVE_REAL_SESSION(image, "TempoTimeKeySig.ptx");
    using Meter = std::array<std::int64_t, 4>;
    std::vector<Meter> found;
    for (const MeterPoint& m : readMeterMap(BlockIndex(ByteView(image)))) {
        found.push_back({m.tick, m.bar, m.numerator, m.denominator});
    }
    EXPECT_EQ(found, (std::vector<Meter>{{0, 1, 4, 4},
                                         {3840000, 2, 2, 4},
                                         {5760000, 3, 3, 4},
                                         {7474080000, 2597, 3, 4},
                                         {50311200000, 17471, 2, 4},
                                         {191832480000, 91180, 3, 8},
                                         {191833920000, 91181, 5, 2},
                                         {191843520000, 91182, 6, 16},
                                         {191844960000, 91183, 2, 4}}));
}

TEST(RealLocations, AreTwoMarkersAndTwoSelections) {
    TANROVE_REAL_SESSION(image, "TempoTimeKeySig.ptx");
    const MemoryLocation chorus = {.name = "    3| 1| 000",
                                   .kind = LocationKind::selection,
                                   .start = 5760000,
                                   .end = 11520000};
    const MemoryLocation expected[] = {
        {.name = "Location 1", .kind = LocationKind::marker},
        {.name = "Location 2", .kind = LocationKind::marker, .start = 3839994, .end = 3839994},
        chorus,
        chorus};
    const auto locations = readMemoryLocations(BlockIndex(ByteView(image)));
    ASSERT_EQ(locations.size(), std::size(expected));
    for (std::size_t i = 0; i < locations.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(locations[i].number, i + 1);
        EXPECT_EQ(locations[i].name, expected[i].name);
        EXPECT_EQ(locations[i].kind, expected[i].kind);
        EXPECT_EQ(locations[i].start, expected[i].start);
        EXPECT_EQ(locations[i].end, expected[i].end);
        EXPECT_EQ(locations[i].colour_slot, -2);
    }
}

}  // namespace
}  // namespace tanrove
