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

using namespace builder;

/// "tick bpm" of each point; behind them where the map breaks off, and 1 if at its first tempo.
std::string map_of(Bytes image) {
    constexpr std::size_t reader_wants_bytes = 88;
    if (image.size() < reader_wants_bytes) image.resize(reader_wants_bytes);
    const auto map = over(image, readTempoMap);
    std::string text;
    for (const auto& point : map.points) text += fields(point.tick, point.bpm) + ", ";
    return text + fields(map.breaks_off.event, map.first_point_refused);
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
        EXPECT_EQ(map_of(tempo_block({{0, c.bpm, c.beat_ticks}})) == "0 1", !c.taken);
        const auto map = map_of(tempo_block({{0, 100}, {9, c.bpm, c.beat_ticks}, {10, 90}}));
        EXPECT_TRUE(c.taken ? map.ends_with(", 10 90, 0 0") : map == "0 100, 2 0") << map;
    }
}

TEST(TempoMap, TheLastMapCountsInEitherFormAndEndsAtAPointThatGoesBack) {
    const Bytes first = tempo_block({{0, 90}, {500, 91}});
    const Bytes last = tempo_block({{0, 60}});
    Bytes renamed = last;
    renamed[9] = 't';
    const Bytes plain = tempo_block_plain({{0, 90}});
    const Reads cases[] = {
        {"beats and wide ticks", tempo_block({{0, 200, 240000}, {1LL << 43, 99.5}}),
         "0 50, 8796093022208 99.5, 0 0"},
        {"same tick, then back", tempo_block({{0, 90}, {500, 91}, {500, 92}, {499, 93}, {600, 94}}),
         "0 90, 500 91, 500 92, 4 0"},
        {"plain", tempo_block_plain({{0, 90}, {500, 91}, {499, 92}}), "0 90, 500 91, 3 0"},
        {"in front of the origin", tempo_block({{-1, 90}, {500, 91}}), "1 0"},
        {"two maps", ByteWriter().raw(first).raw(last).bytes(), "0 60, 0 0"},
        {"a refused one behind", ByteWriter().raw(first).raw(tempo_block({{0, 600}})).bytes(),
         "0 1"},
        {"one of another name behind", ByteWriter().raw(first).raw(renamed).bytes(),
         "0 90, 500 91, 0 0"},
        {"cut", block(0x2028, Bytes(plain.begin() + 9, plain.end() - 1)), "0 0"},
    };
    for (const auto& c : cases) EXPECT_EQ(map_of(c.image), c.text) << c.what;
    EXPECT_EQ(over(cases[1].image, readTempoMap).breaks_off.stored, 5);
    EXPECT_TRUE(over(plain, readTempoMap).points.empty()) << "image too small";
}

TEST(DefaultTempo, IsTheFirstMarkedTempoInItsRangeThenTheShortMark) {
    const auto mark = [](double bpm, std::uint32_t beat = 960000, bool whole = true) {
        return default_tempo_bytes(bpm, beat, whole);
    };
    const Bytes short_mark = mark(70, 960000, false);
    const std::pair<Bytes, double> cases[] = {
        {mark(20), 120},
        {mark(20.01), 20.01},
        {mark(399.9), 399.9},
        {mark(400), 120},
        {mark(200, 240000), 50},
        {mark(100, 0), 100},
        {{}, 120},
        {cut_to(mark(100), 31), 120},
        {ByteWriter().raw(mark(500)).raw(mark(80)).raw(mark(90)).bytes(), 80},
        {ByteWriter().raw(short_mark).raw(mark(90)).bytes(), 90},
        {ByteWriter().raw(mark(401)).raw(short_mark).bytes(), 70},
        {SessionBuilder().default_tempo(77).tempo(0, 90).image(), 77},
    };
    for (const auto& [image, bpm] : cases) EXPECT_EQ(over(image, readDefaultTempo), bpm);
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
        return meter_block({{0, 1, 4, 4}, {960000, 2, numerator, denominator}});
    };
    const Bytes whole = meter_block({{}, {}});
    const auto cut = [&](long bytes) {  // two entries just fit in 96
        return block(0x2029, Bytes(whole.begin() + 9, whole.begin() + bytes));
    };
    const std::pair<Bytes, std::size_t> cases[] = {
        {with(1, 1), 2},
        {with(99, 64), 2},
        {ByteWriter().raw(with(0, 4)).raw(with(1, 1)).bytes(), 0},
        {with(100, 4), 0},
        {with(4, 0), 0},
        {with(4, 65), 0},
        {ByteWriter().raw(meter_block({})).raw(meter_block({{}})).bytes(), 1},
        {meter_block(std::vector<MeterSpec>(4096)), 4096},
        {meter_block(std::vector<MeterSpec>(4097)), 0},
        {cut(96), 2},
        {cut(95), 0}};
    for (const auto& [image, points] : cases) EXPECT_EQ(over(image, readMeterMap).size(), points);
}

TEST(Timecode, AFormCountsOnlyWhereItLiesInItsBlock) {
    const Bytes whole = timecode_block({9, 24, true, 15, 48});
    for (const long end : {28, 29, 56, 57}) {
        SCOPED_TRACE(end);
        Bytes cut = block(0x204d, Bytes(whole.begin() + 9, whole.begin() + end));
        cut.resize(cut.size() + 40, 1);  // other bytes behind the block
        const auto base = over(cut, readFrameRate);
        const auto extended = over(cut, readExtendedTimecode);
        EXPECT_EQ(base ? fields(base->base_code, base->start_frames) : "", end > 28 ? "9 24" : "");
        EXPECT_EQ(extended ? fields(extended->code, extended->start_frames) : "",
                  end > 56 ? "15 48" : "");
    }
    // A text of 64 bytes may stand in front of the second form, no longer one.
    const Bytes roomy(whole.begin() + 9, whole.end());
    Bytes padded = block(0x204d, ByteWriter().raw(roomy).zeros(99).bytes());
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
        {{4, 0}, {}, ""},
        {{7, 108000}, {{7, 108000}}, "30"},
        {{7, 108000}, {{13, 216001}}, "60"},  // half a base frame is cut
        {{7, 108000}, {{13, 216002}}, ""},
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

/// Bars, beats and ticks of the nudge, then of the grid.
std::string grid_of(const Bytes& image) {
    const auto found = over(image, readGridAndNudge);
    if (!found) return "none";
    const auto& [grid, nudge] = std::pair(found->grid, found->nudge);
    const bool in_bars = nudge.unit == CountUnit::bars && grid.unit == CountUnit::bars;
    const std::string units =
        in_bars ? "" : fields("", nudge.unit, nudge.text, "by", grid.unit, grid.text);
    return fields(nudge.bars, nudge.beats, nudge.ticks, grid.bars, grid.beats, grid.ticks) + units;
}

TEST(GridAndNudge, AreTheFirstRecordWithTwoTextsByTheLetter) {
    EXPECT_EQ(grid_of(SessionBuilder().grid_and_nudge({0, 0, 240}, {12, 1, 7}).image()),
              "12 1 7 0 0 240")
        << "the record at the top level, not the one in front of it";
    EXPECT_EQ(grid_of(SessionBuilder().grid_and_nudge({0, 0, 240, 4}, {0, 1, 0, 2}).image()),
              "0 1 0 0 0 240 2 00:00:01:00.00 by 4 10000");
    EXPECT_EQ(grid_of(values_block({{1, 0, 0, 5}, {0, 1, 0, 255}})), "1 0 0 0 1 0");
    const Bytes one = values_block({{9, 9, 9}});
    const Bytes three = values_block({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_EQ(grid_of(ByteWriter().raw(one).raw(three).bytes()), "1 2 3 4 5 6");
    const std::pair<const char*, bool> cases[] = {
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
    for (const auto& [text, taken] : cases) {
        const Bytes payload = ByteWriter().raw(text).raw("\n").zeros(20).bytes();
        EXPECT_EQ(grid_of(block(0x2066, payload)), taken ? "1 2 345 6 7 890" : "none") << text;
    }
    const std::string text = "\n1|2|345\n6|7|890";
    for (const std::size_t size : {23U, 24U, 4000U, 4001U}) {
        const Bytes payload = ByteWriter().raw(text).zeros(size - 2 - text.size()).bytes();
        EXPECT_EQ(grid_of(block(0x2066, payload)) == "none", size == 23 || size == 4001);
    }
    const Bytes cut = ByteWriter().zeros(10).raw(text.substr(0, text.size() - 1)).bytes();
    EXPECT_EQ(grid_of(ByteWriter().block(0x2066, cut).raw("0\n").bytes()), "none");
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
    const auto kind_of = [](const Bytes& image) {
        const auto locations = over(image, readMemoryLocations);
        return locations.empty() ? -1 : static_cast<int>(locations[0].kind);
    };
    for (int kind = 0; kind < 256; ++kind) {
        const bool is_kind = kind <= 2 || (kind >= 8 && kind <= 10);
        EXPECT_EQ(kind_of(location_block({.name = "A", .kind = static_cast<std::uint8_t>(kind)})),
                  is_kind ? kind % 8 : -1);
    }
    for (const std::size_t length : {0U, 255U, 256U}) {
        EXPECT_EQ(kind_of(location_block({.name = std::string(length, 'n')})) < 0, length == 256);
    }
    const Bytes whole = location_block({.name = "A"});
    for (const long bytes : {36L, 35L}) {  // start and end just fit, and do not
        const Bytes cut(whole.begin() + 9, whole.begin() + bytes);
        EXPECT_EQ(kind_of(block(0x2077, cut)) < 0, bytes == 35);
    }
}

TEST(MemoryLocations, APositionInFrontOfTheTicksIsInSamplesOrNothing) {
    const std::int64_t tick = 1000000000000;  // as samples are stored, so that it reads as tick 0
    const struct {
        std::uint8_t flags;
        std::int64_t start, end;
        std::string in_samples;
    } cases[] = {{2, 0, 0, "1"},       {3, 500, 400, ""}, {2, 500, tick, "1"}, {2, tick, 5, ""},
                 {2, tick, tick, "0"}, {1, -1, 0, ""},    {253, 0, -1, ""},    {255, 7, 9, "1"}};
    for (const auto& c : cases) {
        const Bytes image =
            location_block({.name = "A", .flags = c.flags, .start = c.start, .end = c.end});
        std::string in_samples;
        for (const auto& l : over(image, readMemoryLocations)) in_samples += shown(l.in_samples);
        EXPECT_EQ(in_samples, c.in_samples) << int{c.flags} << ' ' << c.start << ' ' << c.end;
    }
}

TEST(MemoryLocations, TheColourDependsOnWhatFollowsTheColourBlocks) {
    const auto palette = LocationForm::palette;
    const struct {
        LocationForm form;
        std::uint16_t colour;
        std::optional<std::uint32_t> rgb;
        int blocks;
        const char* slot_index_rgb;
    } cases[] = {
        {LocationForm::slot, 17, {}, 1, "17 -1 -1"},
        {LocationForm::slot_2021, 17, {}, 2, "17 -1 -1"},
        {LocationForm::slot, 0xfffe, {}, 2, "-2 -1 -1"},
        {LocationForm::other, 17, {}, 1, "-2 -1 -1"},
        {palette, 12, 66051, 3, "-2 12 66051"},
        {palette, 12, {}, 1, "-2 12 -1"},
        {palette, 12, {}, 2, "-2 -1 -1"},
        {palette, 0xfffe, {}, 1, "-2 -1 -1"},
        {palette, 12, {}, 0, "-2 -1 -1"},
    };
    for (std::size_t i = 0; i < 2 * std::size(cases); ++i) {
        const auto& c = cases[i / 2];
        const std::string comment = i % 2 == 0 ? "" : "which moves what stands behind it";
        LocationSpec spec = {.name = "A", .form = c.form, .colour = c.colour, .rgb = c.rgb};
        spec.colour_blocks = c.blocks;
        spec.comment = c.blocks > 0 ? comment : "";
        // Colour blocks of others around it must not be taken for its own.
        const Bytes stray = block(0x2506, Bytes(8), 3);
        const Bytes image = ByteWriter().raw(stray).raw(location_block(spec)).raw(stray).bytes();
        const auto location = over(image, readMemoryLocations).at(0);
        EXPECT_EQ(fields(location.colour_slot, location.colour_index, location.colour_rgb),
                  c.slot_index_rgb);
        EXPECT_EQ(location.comment, spec.comment);
    }
}

TEST(TimeFrame, OfRealSessionsIsReadWhole) {
    // Default tempo; tempo points, meters, locations; rate and its start; grid; format and depth.
    const std::pair<const char*, const char*> sessions[] = {
        {"TempoTimeKeySig.ptx",
         "50, 23 9 4, 7 108000 1, 0 1 0 0 0 240 4 100 by 0 0| 0| 240, 1 24 0"},
        {"RegionTest.ptx", "120, 1 0 0, 7 0 1, 0 1 0 0 1 0 4 10000 by 4 10000, 1 24 0"},
        {"TestPTX.ptx",
         "120, 1 0 0, 9 0 0, 0 1 0 1 0 0 2 00:00:00:00.25 by 2 00:00:00:01.00, 2 24 0"},
        {"Untitled32.ptx", "120, 1 0 0, 7 108000 1, 0 1 0 0 0 240 4 100 by 0 0| 0| 240, 1 32 1"},
    };
    for (const auto& [file, text] : sessions) {
        SCOPED_TRACE(file);
        TANROVE_REAL_SESSION(image, file);
        const auto points = over(image, readTempoMap).points;
        const auto meters = over(image, readMeterMap);
        const auto locations = over(image, readMemoryLocations);
        const auto rate = over(image, readFrameRate).value_or(FrameRate{});
        const auto extended = over(image, readExtendedTimecode);
        const auto depth = over(image, readBitDepth).value_or(BitDepth{});
        const TimecodeInfo* row = find_timecode(rate, extended);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(fields(points.at(0).bpm) + ", " +
                      fields(points.size(), meters.size(), locations.size()) + ", " +
                      fields(row->extended_code, rate.start_frames, extended.has_value()) + ", " +
                      grid_of(image) + ", " +
                      fields(over(image, readAudioFormat), depth.bits, depth.is_float),
                  text);
        EXPECT_EQ(over(image, readDefaultTempo), points[0].bpm);
        EXPECT_EQ(fields(over(image, readPanDepth), over(image, readClickSetting)), "2 1");
        if (locations.empty()) continue;
        EXPECT_EQ(fields(points[3].bpm, points[3].tick), "53 720000")
            << "the beat of the first point counts";
        EXPECT_NEAR(ticksToSeconds(points, 14400000, 120), 11.007892, 5e-7);
        const MeterPoint m = meters.at(7);
        EXPECT_EQ(fields(m.tick, m.bar, m.numerator, m.denominator), "191843520000 91182 6 16");
        EXPECT_EQ(fields(locations[1].name, locations[1].start), "Location 2 3839994");
        EXPECT_EQ(locations[3].kind, LocationKind::selection);
        EXPECT_EQ(locations[3].end, 11520000);
    }
}

}  // namespace
}  // namespace tanrove
