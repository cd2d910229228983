// Tempo, meter, timecode, grid and nudge, memory locations: on built records and real sessions.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "reading.hpp"
#include "session/grid_and_nudge.hpp"
#include "session/memory_locations.hpp"
#include "session/meter_map.hpp"
#include "session/session_settings.hpp"
#include "session/tempo_map.hpp"
#include "session/timecode.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::location_block;
using builder::LocationForm;
using builder::meter_block;
using builder::SessionBuilder;
using builder::tempo_block;
using builder::tempo_block_plain;

TempoRecords read_map(Bytes image) {
    constexpr std::size_t reader_wants_bytes = 88;
    if (image.size() < reader_wants_bytes) image.resize(reader_wants_bytes);
    return over(image, readTempoMap);
}

TEST(TempoMap, ReadsPointsWithAndWithoutTheLengthOfTheBeat) {
    const auto whole = read_map(
        SessionBuilder().tempo(0, 200, 240000).tempo(960000, 99.5).tempo(1LL << 43, 80).image());
    ASSERT_EQ(whole.points.size(), 3U);
    EXPECT_EQ(whole.points[0].bpm, 50);
    EXPECT_EQ(whole.points[1].bpm, 99.5);
    EXPECT_EQ(whole.points[2].tick, 8796093022208.0) << "beyond five bytes";
    const auto plain = read_map(tempo_block_plain({{0, 90}, {480000, 91}}));
    ASSERT_EQ(plain.points.size(), 2U);
    EXPECT_EQ(plain.points[1].tick, 480000);
    EXPECT_EQ(plain.points[1].bpm, 91);
}

TEST(TempoMap, ATempoLiesStrictlyBetween5And500QuarterNotesAMinute) {
    const struct {
        double bpm;
        std::uint32_t beat_ticks;
        bool taken;
    } cases[] = {{5, 960000, false},    {5.01, 960000, true}, {499.99, 960000, true},
                 {500, 960000, false},  {10, 480000, false},  {999.9, 480000, true},
                 {1000, 480000, false}, {120, 0, true},       {NAN, 960000, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.bpm << ' ' << c.beat_ticks);
        const auto first = read_map(tempo_block({{0, c.bpm, c.beat_ticks}, {960000, 100}}));
        EXPECT_EQ(first.points.size(), c.taken ? 2U : 0U);
        EXPECT_EQ(first.first_point_refused, !c.taken);
        const auto second = read_map(tempo_block({{0, 100}, {9, c.bpm, c.beat_ticks}, {10, 90}}));
        EXPECT_EQ(second.points.size(), c.taken ? 3U : 1U);
        EXPECT_FALSE(second.first_point_refused);
        EXPECT_EQ(first.breaks_off.event, 0) << "said otherwise, or not so";
        EXPECT_EQ(second.breaks_off.event, c.taken ? 0 : 2);
    }
}

TEST(TempoMap, TheLastMapCountsAndEndsAtAPointThatGoesBack) {
    const Bytes first = tempo_block({{0, 90}, {500, 91}});
    const Bytes last = tempo_block({{0, 60}});
    Bytes renamed = last;
    renamed[9] = 't';
    const Bytes plain = tempo_block_plain({{0, 90}});
    const struct {
        const char* what;
        Bytes image;
        std::size_t points;
        int break_event;
        bool refused;
    } cases[] = {
        {"same tick, then back", tempo_block({{0, 90}, {500, 91}, {500, 92}, {499, 93}, {600, 94}}),
         3, 4, false},
        {"plain", tempo_block_plain({{0, 90}, {500, 91}, {499, 92}}), 2, 3, false},
        {"in front of the origin", tempo_block({{-1, 90}, {500, 91}}), 0, 1, false},
        {"two maps", ByteWriter().raw(first).raw(last).bytes(), 1, 0, false},
        {"a refused one behind", ByteWriter().raw(first).raw(tempo_block({{0, 600}})).bytes(), 0, 0,
         true},
        {"one of another name behind", ByteWriter().raw(first).raw(renamed).bytes(), 2, 0, false},
        {"cut", builder::block(0x2028, Bytes(plain.begin() + 9, plain.end() - 1)), 0, 0, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto map = read_map(c.image);
        EXPECT_EQ(map.points.size(), c.points);
        EXPECT_EQ(map.breaks_off.event, c.break_event);
        EXPECT_EQ(map.first_point_refused, c.refused);
    }
    EXPECT_EQ(read_map(cases[0].image).breaks_off.stored, 5);
    EXPECT_TRUE(over(plain, readTempoMap).points.empty()) << "image too small";
}

TEST(DefaultTempo, IsTheFirstMarkedTempoInItsRangeThenTheShortMark) {
    const auto mark = [](double bpm, std::uint32_t beat = 960000, bool whole = true) {
        return builder::default_tempo_bytes(bpm, beat, whole);
    };
    const struct {
        Bytes image;
        double bpm;
    } cases[] = {
        {{}, 120},
        {mark(20), 120},
        {mark(20.01), 20.01},
        {mark(399.9), 399.9},
        {mark(400), 120},
        {mark(200, 240000), 50},
        {mark(100, 0), 100},
        {cut_to(mark(100), 31), 120},
        {ByteWriter().raw(mark(500)).raw(mark(80)).raw(mark(90)).bytes(), 80},
        {ByteWriter().raw(mark(70, 960000, false)).raw(mark(90)).bytes(), 90},
        {ByteWriter().raw(mark(401)).raw(mark(70, 960000, false)).bytes(), 70},
        {SessionBuilder().tempo(0, 200, 240000).tempo(960000, 90).image(), 50},
        {SessionBuilder().default_tempo(77).tempo(0, 90).image(), 77},
    };
    for (const auto& c : cases) EXPECT_EQ(over(c.image, readDefaultTempo), c.bpm);
}

// The plain sum: every stretch at its own tempo, as far as it lies in front.
double sum_of_stretches(const TempoMap& map, double ticks) {
    double seconds = 0;
    for (std::size_t i = 0; i < map.size(); ++i) {
        const double from = i == 0 ? 0 : map[i].tick;
        const double end = std::min(ticks, i + 1 < map.size() ? map[i + 1].tick : 1e18);
        if (end > from) seconds += (end - from) / 960000 * 60 / map[i].bpm;
    }
    return seconds;
}

TEST(TempoClock, AddsUpTheStretchesInFrontOfATick) {
    std::mt19937 random(1);
    const auto below = [&](unsigned limit) { return static_cast<double>(random() % limit); };
    TempoMap map;
    double tick = 480000;  // the stretch in front of the first point counts at its tempo
    for (int i = 0; i < 500; ++i) {
        map.push_back({tick, 5.01 + below(494)});
        if (i % 7 != 0) tick += below(4000000);
    }
    const TempoClock clock(map, 120);
    for (int i = 0; i < 2000; ++i) {
        const double at = i % 4 == 0 ? map[random() % 500].tick : below(1200000000);
        const double seconds = clock.seconds(at);
        ASSERT_NEAR(seconds, sum_of_stretches(map, at), 1e-9 * (1 + seconds)) << at;
        ASSERT_EQ(ticksToSeconds(map, at, 120), seconds);
    }
    EXPECT_EQ(ticksToSeconds({}, 960000 * 120, 60), 120);
    EXPECT_EQ(ticksToSeconds({{960000, 60}}, 480000, 120), 0.5);
    EXPECT_EQ(ticksToSeconds({{960000, 60}}, 1920000, 120), 2);
}

TEST(MeterMap, OneBrokenEntryOrACountThatLiesMakesItNoMap) {
    const auto with = [](std::uint32_t numerator, std::uint32_t denominator) {
        const Bytes map = meter_block({{0, 1, 4, 4}, {960000, 2, numerator, denominator}});
        return ByteWriter().raw(map).raw(meter_block({{0, 1, 5, 4}})).bytes();
    };
    const Bytes whole = meter_block({{}, {}});
    const auto cut = [&](long bytes) {  // two entries just fit in 96
        return builder::block(0x2029, Bytes(whole.begin() + 9, whole.begin() + bytes));
    };
    const struct {
        Bytes image;
        std::size_t points;
    } cases[] = {{with(1, 1), 2},
                 {with(99, 64), 2},
                 {with(0, 4), 0},
                 {with(100, 4), 0},
                 {with(4, 0), 0},
                 {with(4, 65), 0},
                 {meter_block({}), 0},
                 {ByteWriter().raw(meter_block({})).raw(meter_block({{}})).bytes(), 1},
                 {meter_block(std::vector<builder::MeterSpec>(4096)), 4096},
                 {meter_block(std::vector<builder::MeterSpec>(4097)), 0},
                 {cut(96), 2},
                 {cut(95), 0}};
    for (const auto& c : cases) EXPECT_EQ(over(c.image, readMeterMap).size(), c.points);
}

TEST(Timecode, AFormCountsOnlyWhereItLiesInItsBlock) {
    const Bytes whole = builder::timecode_block({9, 24, true, 15, 48});
    const struct {
        long end;
        bool base, extended;
    } cases[] = {{28, false, false}, {29, true, false}, {56, true, false}, {57, true, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.end);
        Bytes cut = builder::block(0x204d, Bytes(whole.begin() + 9, whole.begin() + c.end));
        cut.resize(cut.size() + 40, 1);  // other bytes behind the block
        const auto base = over(cut, readFrameRate);
        const auto extended = over(cut, readExtendedTimecode);
        ASSERT_EQ(base.has_value(), c.base);
        ASSERT_EQ(extended.has_value(), c.extended);
        EXPECT_TRUE(!base || (base->base_code == 9 && base->start_frames == 24));
        EXPECT_TRUE(!extended || (extended->code == 15 && extended->start_frames == 48));
    }
    // A text of 64 bytes may stand in front of the second form, no longer one.
    const Bytes roomy(whole.begin() + 9, whole.end());
    Bytes padded = builder::block(0x204d, ByteWriter().raw(roomy).zeros(99).bytes());
    for (const int length : {64, 65}) {
        padded[34] = static_cast<std::uint8_t>(length);
        EXPECT_EQ(over(padded, readExtendedTimecode).has_value(), length == 64);
    }
}

TEST(Timecode, TheRowFollowsFromCodesAndStarts) {
    const struct {
        FrameRate base;
        std::optional<ExtendedTimecode> extended;
        std::string_view short_name;  // empty: no row
    } cases[] = {
        {{5, 0}, {}, "29.97 drop"},
        {{9, 0}, {}, "23.976"},
        {{4, 0}, {}, ""},
        {{7, 108000}, {{7, 108000}}, "30"},
        {{7, 108000}, {{13, 216000}}, "60"},
        {{7, 108000}, {{13, 216001}}, "60"},  // half a base frame is cut
        {{7, 108000}, {{13, 216002}}, ""},
        {{7, 108000}, {{20, 432000}}, "120"},
        {{7, 108000}, {{14, 216000}}, ""},  // a rate of another base
        {{5, 30}, {{19, 120}}, "119.88 drop"},
        {{7, 0}, {{0, 0}}, ""},
    };
    for (const auto& c : cases) {
        const TimecodeInfo* row = find_timecode(c.base, c.extended);
        EXPECT_EQ(row == nullptr ? "" : row->short_name, c.short_name);
    }
    EXPECT_EQ(find_timecode({5, 0}, {{12, 0}})->falls_back_to, "59.94");
    EXPECT_EQ(find_timecode({5, 0}, {{12, 0}})->name, "59.94 fps drop frame");
}

using Six = std::vector<std::uint32_t>;

Six grid_of(const Bytes& image) {
    const auto found = over(image, readGridAndNudge);
    if (!found) return {};
    return {found->nudge.bars, found->nudge.beats, found->nudge.ticks,
            found->grid.bars,  found->grid.beats,  found->grid.ticks};
}

TEST(GridAndNudge, AreTheFirstRecordWithTwoTextsByTheLetter) {
    EXPECT_EQ(grid_of(SessionBuilder().grid_and_nudge({0, 0, 240}, {12, 1, 7}).image()),
              (Six{12, 1, 7, 0, 0, 240}));
    const Bytes one = builder::values_block({{9, 9, 9}});
    const Bytes three = builder::values_block({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_EQ(grid_of(ByteWriter().raw(one).raw(three).bytes()), (Six{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(grid_of(one), Six{});
    const struct {
        const char* text;
        bool taken;
    } cases[] = {
        {"\n   1|  2| 345\n6|7|890", true},
        {"\n1|2|345;0000006|0000007|890", true},
        {"\n1|2|345\n00000006|7|890", false},  // eight digits
        {"\n1|2|345\n6|00000007|890", false},
        {"\n1|2|345\n6|7|89", false},
        {"\n1|2|345\n6|7|8901", false},
        {"\n1|2|345\n6 |7|890", false},  // a blank behind a number
        {"\n1|2|345\n6||890", false},
        {"1|2|345\n6|7|890", false},  // the byte in front is the type's own blank
        {"\n1|2|345|6|7|890", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const Bytes payload = ByteWriter().raw(c.text).raw("\n").zeros(20).bytes();
        EXPECT_EQ(grid_of(builder::block(0x2066, payload)),
                  c.taken ? (Six{1, 2, 345, 6, 7, 890}) : Six{});
    }
    const std::string text = "\n1|2|345\n6|7|890";
    for (const std::size_t size : {23U, 24U, 4000U, 4001U}) {
        const Bytes payload = ByteWriter().raw(text).zeros(size - 2 - text.size()).bytes();
        EXPECT_EQ(grid_of(builder::block(0x2066, payload)).empty(), size == 23 || size == 4001);
    }
    const Bytes cut = ByteWriter().zeros(10).raw(text.substr(0, text.size() - 1)).bytes();
    EXPECT_EQ(grid_of(ByteWriter().block(0x2066, cut).raw("0\n").bytes()), Six{});
}

TEST(GridQuarterNotes, CountBarsAndBeatsUnderTheMeter) {
    const struct {
        GridSetting grid;
        std::uint32_t numerator, denominator;
        double quarters;  // 0: no grid
    } cases[] = {{{1, 0, 0}, 4, 4, 4},        {{1, 0, 0}, 6, 8, 3},
                 {{0, 1, 0}, 6, 8, 0.5},      {{0, 0, 240}, 4, 4, 0.25},
                 {{1, 1, 480}, 3, 4, 4.5},    {{0, 0, 0}, 4, 4, 0},
                 {{250, 0, 0}, 4, 4, 0},      {{249, 3, 959}, 4, 4, 999 + 959 / 960.0},
                 {{9999999, 0, 0}, 99, 1, 0}, {{1, 0, 0}, 4, 0, 0}};
    for (const auto& c : cases) {
        const auto quarters = grid_quarter_notes(c.grid, c.numerator, c.denominator);
        EXPECT_DOUBLE_EQ(quarters.value_or(0), c.quarters);
    }
}

TEST(MemoryLocations, KindsNamesAndBodiesHaveLimits) {
    for (int kind = 0; kind < 256; ++kind) {
        const auto locations =
            over(location_block({.name = "A", .kind = static_cast<std::uint8_t>(kind)}),
                 readMemoryLocations);
        const bool is_kind = kind <= 2 || (kind >= 8 && kind <= 10);
        ASSERT_EQ(locations.size(), is_kind ? 1U : 0U) << kind;
        EXPECT_TRUE(!is_kind || static_cast<int>(locations[0].kind) == kind % 8);
    }
    for (const std::size_t length : {0U, 128U, 129U}) {
        const Bytes image = location_block({.name = std::string(length, 'n')});
        EXPECT_EQ(over(image, readMemoryLocations).empty(), length == 129);
    }
    const Bytes whole = location_block({.name = "A"});
    for (const long bytes : {36L, 35L}) {  // start and end just fit, and do not
        const Bytes cut(whole.begin() + 9, whole.begin() + bytes);
        EXPECT_EQ(over(builder::block(0x2077, cut), readMemoryLocations).empty(), bytes == 35);
    }
}

TEST(MemoryLocations, APositionInFrontOfTheTicksIsInSamplesOrNothing) {
    const std::int64_t tick = 1000000000000;  // as samples are stored, so that it reads as tick 0
    const struct {
        std::uint8_t flags;
        std::int64_t start, end;
        bool taken, in_samples;
    } cases[] = {
        {2, 0, 0, true, true},      {3, 500, 400, false, false},  {2, 500, tick, true, true},
        {2, tick, 5, false, false}, {2, tick, tick, true, false}, {1, -1, 0, false, false},
        {253, 0, -1, false, false}, {255, 7, 9, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << int{c.flags} << ' ' << c.start << ' ' << c.end);
        const auto locations =
            over(location_block({.name = "A", .flags = c.flags, .start = c.start, .end = c.end}),
                 readMemoryLocations);
        ASSERT_EQ(locations.size(), c.taken ? 1U : 0U);
        EXPECT_TRUE(!c.taken || locations[0].in_samples == c.in_samples);
    }
}

TEST(MemoryLocations, TheColourDependsOnWhatFollowsTheColourBlocks) {
    const auto palette = LocationForm::palette;
    const struct {
        LocationForm form;
        std::uint16_t colour;
        std::optional<std::uint32_t> rgb;
        int blocks;
        std::int32_t slot, index, expected_rgb;
    } cases[] = {
        {LocationForm::slot, 17, {}, 1, 17, -1, -1},
        {LocationForm::slot_2021, 17, {}, 2, 17, -1, -1},
        {LocationForm::slot, 0xfffe, {}, 2, -2, -1, -1},
        {LocationForm::other, 17, {}, 1, -2, -1, -1},
        {palette, 12, 0xffb300, 1, -2, 12, 0xffb300},
        {palette, 12, 0x010203, 3, -2, 12, 0x010203},
        {palette, 12, {}, 1, -2, 12, -1},
        {palette, 12, {}, 2, -2, -1, -1},
        {palette, 0xfffe, {}, 1, -2, -1, -1},
        {palette, 12, {}, 0, -2, -1, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << static_cast<int>(c.form) << ' ' << c.colour << ' ' << c.blocks);
        builder::LocationSpec spec = {
            .name = "A", .form = c.form, .colour = c.colour, .rgb = c.rgb};
        spec.colour_blocks = c.blocks;
        // Colour blocks of others around it must not be taken for its own.
        const Bytes stray = builder::block(0x2506, Bytes(8), 3);
        const auto locations =
            over(ByteWriter().raw(stray).raw(location_block(spec)).raw(stray).bytes(),
                 readMemoryLocations);
        ASSERT_EQ(locations.size(), 1U);
        EXPECT_EQ(locations[0].colour_slot, c.slot);
        EXPECT_EQ(locations[0].colour_index, c.index);
        EXPECT_EQ(locations[0].colour_rgb, c.expected_rgb);
    }
}

TEST(TimeFrame, OfRealSessionsIsReadWhole) {
    constexpr auto wav = AudioFormat::wav;
    const struct {
        const char* file;
        double bpm;
        std::size_t tempo_points, meters, locations;
        std::uint32_t frame_rate_code, start_frames;
        bool has_extended;
        Six values;
        AudioFormat format;
        BitDepth depth;
    } sessions[] = {
        {"TempoTimeKeySig.ptx", 50, 23, 9, 4, 7, 108000, true, {0, 1, 0, 0, 0, 240}, wav, {24}},
        {"RegionTest.ptx", 120, 1, 0, 0, 7, 0, true, {0, 1, 0, 0, 1, 0}, wav, {24}},
        {"TestPTX.ptx", 120, 1, 0, 0, 9, 0, false, {0, 1, 0, 1, 0, 0}, AudioFormat::aiff, {24}},
        {"Untitled32.ptx", 120, 1, 0, 0, 7, 108000, true, {0, 1, 0, 0, 0, 240}, wav, {32, true}},
    };
    for (const auto& expected : sessions) {
        SCOPED_TRACE(expected.file);
        TANROVE_REAL_SESSION(image, expected.file);
        const auto tempo = over(image, readTempoMap);
        EXPECT_EQ(over(image, readDefaultTempo), expected.bpm);
        EXPECT_EQ(tempo.points.size(), expected.tempo_points);
        EXPECT_EQ(tempo.points.at(0).bpm, expected.bpm);
        EXPECT_EQ(over(image, readMeterMap).size(), expected.meters);
        EXPECT_EQ(over(image, readMemoryLocations).size(), expected.locations);
        const auto rate = over(image, readFrameRate).value_or(FrameRate{});
        const auto extended = over(image, readExtendedTimecode);
        EXPECT_EQ(rate.start_frames, expected.start_frames);
        EXPECT_EQ(extended.has_value(), expected.has_extended);
        const TimecodeInfo* row = find_timecode(rate, extended);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->extended_code, expected.frame_rate_code);
        EXPECT_EQ(grid_of(image), expected.values);
        const auto depth = over(image, readBitDepth).value_or(BitDepth{});
        EXPECT_EQ(over(image, readAudioFormat), expected.format);
        EXPECT_EQ(depth.bits, expected.depth.bits);
        EXPECT_EQ(depth.is_float, expected.depth.is_float);
        EXPECT_EQ(over(image, readPanDepth), 2);
        EXPECT_EQ(over(image, readClickSetting), 1);
        if (expected.locations == 0) continue;
        EXPECT_EQ(tempo.points[3].bpm, 53) << "the beat of the first point counts";
        EXPECT_EQ(tempo.points[3].tick, 720000);
        EXPECT_NEAR(ticksToSeconds(tempo.points, 14400000, 120), 11.007892, 5e-7);
        const MeterPoint meter = over(image, readMeterMap).at(7);
        EXPECT_EQ(meter.tick, 191843520000);
        EXPECT_EQ(meter.bar * 100 + meter.numerator, 91182U * 100 + 6);
        EXPECT_EQ(meter.denominator, 16U);
        const auto locations = over(image, readMemoryLocations);
        EXPECT_EQ(locations[1].name, "Location 2");
        EXPECT_EQ(locations[1].start, 3839994);
        EXPECT_EQ(locations[3].kind, LocationKind::selection);
        EXPECT_EQ(locations[3].end, 11520000);
    }
}

}  // namespace
}  // namespace tanrove
