// Tempo map, default tempo and the clock on built records.
#include "session/tempo_map.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::SessionBuilder;
using builder::tempo_block;
using builder::tempo_block_plain;

constexpr std::size_t reader_wants_bytes = 88;

TempoRecords read_map(Bytes image) {
    if (image.size() < reader_wants_bytes) image.resize(reader_wants_bytes);
    return readTempoMap(BlockIndex(ByteView(image)));
}

double read_default(const Bytes& image) {
    return readDefaultTempo(BlockIndex(ByteView(image)));
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

TEST(TempoMap, APointThatGoesBackEndsTheMapAndOneAtTheSameTickDoesNot) {
    const auto back = read_map(tempo_block({{0, 90}, {500, 91}, {500, 92}, {499, 93}, {600, 94}}));
    EXPECT_EQ(back.points.size(), 3U);
    EXPECT_EQ(back.breaks_off.event, 4);
    EXPECT_EQ(back.breaks_off.stored, 5);
    EXPECT_EQ(read_map(tempo_block_plain({{0, 90}, {500, 91}, {499, 92}})).breaks_off.event, 3);
    const auto before_the_origin = read_map(tempo_block({{-1, 90}, {500, 91}}));
    EXPECT_TRUE(before_the_origin.points.empty());
    EXPECT_FALSE(before_the_origin.first_point_refused);
    EXPECT_EQ(before_the_origin.breaks_off.event, 1);
}

TEST(TempoMap, TheLastMapOfTheSessionCounts) {
    const Bytes first = tempo_block({{0, 90}, {500, 91}});
    const Bytes last = tempo_block({{0, 60}});
    EXPECT_EQ(read_map(ByteWriter().raw(first).raw(last).bytes()).points.size(), 1U);
    const Bytes refused = tempo_block({{0, 600}});
    const auto records = read_map(ByteWriter().raw(first).raw(refused).bytes());
    EXPECT_TRUE(records.points.empty());
    EXPECT_TRUE(records.first_point_refused);
    // Neither a block of the type with another name nor one that is cut counts as a map.
    Bytes renamed = last;
    renamed[9] = 't';
    EXPECT_EQ(read_map(ByteWriter().raw(first).raw(renamed).bytes()).points.size(), 2U);
    const Bytes body(tempo_block_plain({{0, 90}}));
    const Bytes cut = builder::block(0x2028, Bytes(body.begin() + 9, body.end() - 1));
    EXPECT_TRUE(read_map(cut).points.empty());
    EXPECT_TRUE(readTempoMap(BlockIndex(ByteView(body))).points.empty()) << "image too small";
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
        {ByteWriter().raw(mark(500)).raw(mark(80)).raw(mark(90)).bytes(), 80},
        {ByteWriter().raw(mark(70, 960000, false)).raw(mark(90)).bytes(), 90},
        {ByteWriter().raw(mark(401)).raw(mark(70, 960000, false)).bytes(), 70},
        {SessionBuilder().tempo(0, 200, 240000).tempo(960000, 90).image(), 50},
        {SessionBuilder().default_tempo(77).tempo(0, 90).image(), 77},
    };
    for (const auto& c : cases) EXPECT_EQ(read_default(c.image), c.bpm);
    Bytes cut = mark(100);
    cut.resize(31);
    EXPECT_EQ(read_default(cut), 120) << "the tempo passes the image's end";
}

// The plain sum: every stretch at its own tempo, as far as it lies in front.
double sum_of_stretches(const TempoMap& map, double ticks) {
    double seconds = 0;
    for (std::size_t i = 0; i < map.size(); ++i) {
        const double from = i == 0 ? 0 : map[i].tick;
        const double to = i + 1 < map.size() ? map[i + 1].tick : 1e18;
        const double end = std::min(ticks, to);
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

}  // namespace
}  // namespace tanrove
