// Channel records, the strips they belong to, and the lanes in the strips.
#include "session/strip_lanes.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/channel_records.hpp"
#include "session/strips.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;

/// The strips of an image whose table is the rows' names, with their lanes.
std::vector<Strip> strips_of(const Bytes& image, const std::vector<std::string>& buses = {}) {
    const BlockIndex index{ByteView(image)};
    const auto rows = readStripRows(index).rows;
    std::vector<std::string> names;
    for (const StripRow& row : rows) names.push_back(row.current_name);
    auto strips = readStrips(index, rows, names, buses);
    readStripLanes(index, strips);
    return strips;
}

Strip strip_of(const TrackSpec& track) {
    return strips_of(SessionBuilder().track(track).image()).at(0);
}

/// The strip of a row whose send channel holds these lanes as they stand.
Strip strip_with_lanes(const Bytes& lanes, std::uint8_t shape = 1) {
    const Bytes channel = send_channel(channel_record({.fader_tenths = -10}),
                                       output_name_record("Out"), lanes, shape);
    return strip_of({.name = "Vox", .mixer = channel});
}

Bytes lane(int initial) {
    return lane_record({.initial = initial});
}

TEST(ChannelRecords, LimitsAreInclusive) {
    const struct {
        int fader_tenths;
        std::uint8_t link;
        std::size_t payload_bytes;
        std::string text;
    } cases[] = {{125, 0, 155, "12.5 0 1 -30 40"},
                 {-1450, 1, 279, "-145 1 1 -30 40"},
                 {126, 0, 279, ""},
                 {-1451, 0, 279, ""},
                 {0, 2, 279, ""},
                 {0, 1, 154, ""}};
    for (const auto& c : cases) {
        const Bytes image = channel_record({.fader_tenths = c.fader_tenths,
                                            .muted = true,
                                            .pan = -30,
                                            .pan_right = 40,
                                            .link = c.link,
                                            .payload_bytes = c.payload_bytes});
        std::string text;
        for (const auto& r : over(image, read_channel_records)) {
            text += fields(r.fader_db, r.link, r.muted, r.pan, r.pan_right);
        }
        EXPECT_EQ(text, c.text) << c.fader_tenths << ' ' << c.payload_bytes;
    }
}

std::vector<Strip> strips_by_name(const Bytes& image, const std::vector<std::string>& names,
                                  const std::vector<std::string>& buses = {}) {
    return readStrips(BlockIndex(ByteView(image)), {}, names, buses);
}

TEST(ReadStrips, WithoutRowsARunTakesTheNextFreeStripBehindItsName) {
    const struct {
        std::vector<std::size_t> gaps;   ///< from one record to the next
        std::vector<std::size_t> sends;  ///< of each strip that is present
    } cases[] = {{{}, {0}},
                 {{2700}, {1}},
                 {{2701}, {0, 0}},
                 {{300, 300, 2701, 300}, {2, 1}},
                 {{2701, 2701, 2701, 2701}, {0, 0}}};  // "B" stands last, "C" follows, no more
    for (const auto& c : cases) {
        ByteWriter image;
        image.raw(channel_record({}));  // in front of every name: no strip's
        image.counted("A").counted("C").counted("B");
        std::size_t at = image.size();
        for (std::size_t i = 0; i <= c.gaps.size(); ++i) {
            image.raw(channel_record({})).raw("Cue");
            at += i < c.gaps.size() ? c.gaps[i] : 0;
            image.pad_to(at);
        }
        std::vector<std::size_t> sends;
        const auto strips = strips_by_name(image.bytes(), {"A", "B", "C"}, {"Cue"});
        for (const Strip& strip : strips) {
            if (strip.present) sends.push_back(strip.sends.size());
        }
        EXPECT_FALSE(strips[0].present);
        EXPECT_EQ(sends, c.sends);
    }
}

TEST(ReadStrips, ASendLeadsToTheNearestBus) {
    const struct {
        std::string in_front;
        std::size_t distance_in_front;
        std::string behind;
        std::size_t distance_behind;
        std::string target;
    } cases[] = {
        {"Cue", 400, "Verb", 401, "Cue -6"},       {"Cue", 401, "Verb", 400, "Verb -6"},
        {"Cue", 400, "Verb", 400, "Verb -6"},      {"Verb", 400, "Cue", 400, "Verb -6"},
        {"Verb 2", 1500, "x", 400, "Verb 2 -6"},   {"Cue", 1501, "x", 400, ""},
        {"x", 400, "Cue", 1500, "Cue -6"},         {"x", 400, "Cue", 1501, ""},
        {"Verb 2", 700, "Verb", 800, "Verb 2 -6"}, {"Verb 3", 400, "x", 400, "Verb -6"},
    };
    constexpr std::size_t fader_at = 2000;
    for (const auto& c : cases) {
        ByteWriter image;
        image.counted("A").raw(channel_record({}));
        image.pad_to(fader_at - c.distance_in_front).raw(c.in_front);
        image.pad_to(fader_at - 10).raw(channel_record({.fader_tenths = -60}));
        image.pad_to(fader_at + c.distance_behind).raw(c.behind).zeros(20);
        std::string target;
        const auto strips = strips_by_name(image.bytes(), {"A"}, {"Cue", "Verb", "Verb 2"});
        for (const auto& send : strips.at(0).sends) target += fields(send.target, send.level_db);
        EXPECT_EQ(target, c.target) << c.in_front << ' ' << c.behind;
    }
}

TEST(ReadStrips, ALongLaneDoesNotMakeASendTheStripAndAnEmptySlotIsNoSend) {
    LaneSpec volume;
    for (int i = 0; i < 1000; ++i) volume.points.push_back({i, -50});
    TrackSpec track{.name = "Vox", .fader_db = -3, .muted = true};
    track.sends = {{.target = "Verb", .level_db = -6}};
    track.volume_lane = volume;
    const Strip strip = strips_of(SessionBuilder().track(track).image(), {"Verb"}).at(0);
    ASSERT_EQ(strip.sends.size(), 1U);
    EXPECT_EQ(fields(strip.fader_db, strip.muted, strip.sends[0].target), "-3 1 Verb");

    const Bytes record = channel_record({});
    const Bytes own = send_channel(record, output_name_record("Out"), {});
    const Bytes empty = send_channel(record, {}, {});
    const Bytes mixer = ByteWriter().raw(own).raw(empty).raw("Verb").bytes();
    const Strip without_send =
        strips_of(SessionBuilder().track({.name = "Vox", .mixer = mixer}).image(), {"Verb"}).at(0);
    EXPECT_TRUE(without_send.present && without_send.sends.empty());
}

/// What a lane reads as: initial value, points with their values, whether in ticks.
std::string lane_of(const Bytes& bytes) {
    Lane read;
    if (!readLane(ByteView(bytes), 0, read)) return "none";
    std::string text = shown(read.initial);
    for (const auto& point : read.points) text += ", " + fields(point.position, point.value);
    return text + (read.in_ticks ? " ticks" : "");
}

TEST(ReadLane, PointsFitTheBlockAndTicksCountFromTheOriginWithOrWithoutItsLowBits) {
    const auto resized = [](Bytes bytes, int by) {
        bytes[3] = static_cast<std::uint8_t>(bytes[3] + by);
        return bytes;
    };
    // Three points need 50 bytes behind offset 6.
    const Bytes three = lane_record({.initial = -7, .points = {{5, 1}, {6, 2}, {7, 3}}});
    EXPECT_EQ(lane_of(three), "-7, 5 1, 6 2, 7 3");
    EXPECT_EQ(lane_of(resized(three, -1)), "-7, 5 1, 6 2, 7 3") << "the record closes";
    EXPECT_EQ(lane_of(resized(three, -3)), "-7");
    Bytes small = lane(1);
    small[3] = 31;
    EXPECT_EQ(lane_of(small), "none");
    const std::pair<std::vector<std::int64_t>, const char*> cases[] = {
        {{960000}, "0, 960000 4 ticks"},
        {{3567587328}, "0, 0 4 ticks"},
        {{3567587328 - 128}, "0, -128 4 ticks"},
        {{3567587328 - 129}, "0, 3567587199 4 ticks"},
        {{3567587328 + 960}, "0, 3567588288 4 ticks"},
        {{3567587328 + 960, 1000}, "0, 960 4, 1000 4 ticks"},
        {{1000, 3567587328 + 960}, "0, 1000 4, 3567588288 4 ticks"}};
    for (const auto& [stored, text] : cases) {
        LaneSpec spec;
        for (const std::int64_t position : stored) spec.points.push_back({position, 4});
        EXPECT_EQ(lane_of(lane_record(spec, true)), text);
    }
    // A record that does not close is read by its first run.
    Bytes bytes = lane_record({.points = {{3567587328, 4}}}, false);
    bytes[27] = 1;  // no other number is the mark of a tick lane
    bytes[19] = 1;
    EXPECT_EQ(lane_of(bytes), "0, 3567587328 4");
    Bytes ticks = lane_record({.points = {{3567587328 + 960, 4}}}, true);
    ticks[19] = 1;
    EXPECT_EQ(lane_of(ticks), "0, 960 4 ticks");
}

TEST(ReadStripLanes, PlacesFollowTheGroups) {
    const auto in_group = [](int initial) { return lane_group({lane(initial)}); };
    const Bytes empty = lane_group({});
    const struct {
        const char* what;
        std::vector<Bytes> behind_mute;
        std::uint8_t shape;
        const char* text;  ///< count, stereo; initial pans and trim, 0 where there is no lane
    } cases[] = {
        {"mono with trim", {in_group(3), empty, lane(5)}, 1, "4 0 3 0 5"},
        {"mono without trim", {in_group(3), empty}, 1, "3 0 3 0 0"},
        {"stereo", {in_group(3), in_group(4), lane(5)}, 1, "5 1 3 4 5"},
        {"no pan", {empty, empty, lane(5)}, 1, "3 0 0 0 5"},
        {"one knob", {in_group(0), in_group(4)}, 0, "3 0 0 0 0"},
        {"off centre", {in_group(3), in_group(4)}, 0, "4 1 3 4 0"},
        {"no knob", {in_group(3), lane(5)}, 2, "3 0 0 0 5"},
        {"three in a row", {lane(3)}, 1, "3 0 3 0 0"},
        {"four in a row", {lane(3), lane(5)}, 1, "4 0 3 0 5"},
        {"five in a row", {lane(3), lane(4), lane(5)}, 1, "5 1 3 4 5"},
    };
    for (const auto& c : cases) {
        ByteWriter lanes;
        lanes.raw(lane(11)).raw(lane(1));
        for (const Bytes& block : c.behind_mute) lanes.raw(block);
        const Strip s = strip_with_lanes(lanes.bytes(), c.shape);
        EXPECT_EQ(fields(s.lane_count, s.stereo, s.pan_lane.initial, s.pan_right_lane.initial,
                         s.trim_lane.initial),
                  c.text)
            << c.what;
        EXPECT_EQ(fields(s.volume_lane.initial, s.mute_lane.initial, s.surround), "11 1 0");
        EXPECT_DOUBLE_EQ(s.fader_db, 1.1) << "the lane has the later word on the fader";
    }
}

TEST(ReadStripLanes, AFaderWithMovesKeepsItsRecord) {
    const Strip strip = strip_of({.name = "Vox",
                                  .fader_db = -3,
                                  .volume_lane = {.initial = 20, .points = {{0, -40}}},
                                  .tick_based = true});
    EXPECT_EQ(fields(strip.volume_lane.in_ticks, strip.trim_lane.in_ticks, strip.fader_db),
              "1 1 -3");
    EXPECT_EQ(strip_lanes_text({strip}),
              "LANES Vox | fader -3.0 dB | vol 1 pt init 20 | mute 0 pt | pan 0 pt\n"
              "LANES   vol              0      -40\n");
    EXPECT_EQ(strip_lanes_text({strip_of({.name = "Still"})}), "");
}

TEST(ReadStripLanes, ASurroundStripHasPanners) {
    PannerSpec panner;
    for (int i = 0; i < 8; ++i) panner.push_back({.initial = 10 + i, .points = {{0, 5}}});
    const Strip strip =
        strip_of({.name = "Vox", .trim_lane = LaneSpec{.initial = 9}, .panners = {panner, panner}});
    EXPECT_EQ(fields(strip.surround, strip.lane_count), "1 5");
    ASSERT_EQ(strip.surround_lanes.size(), 2U);
    std::vector<double> initial;
    for (const Lane& l : strip.surround_lanes[1]) initial.push_back(l.initial);
    EXPECT_EQ(shown(initial), "10,11,12,13,14,15,16");
    EXPECT_FALSE(strip.surround_master_lane) << "of three flat lanes the third is the trim";
    EXPECT_EQ(fields(strip.short_panner_moves, strip.unknown_panner_moves), "0 2");
    const Strip with_lfe = strip_of({.name = "Vox",
                                     .trim_lane = LaneSpec{.initial = 9},
                                     .panners = {panner},
                                     .lfe_lane = LaneSpec{.initial = -60}});
    EXPECT_EQ(
        fields(with_lfe.surround_master_lane.value_or(Lane{}).initial, with_lfe.trim_lane.initial),
        "-60 9");
    const Bytes moving = lane_record({.initial = 7, .points = {{0, 5}}});
    ByteWriter six_flat;
    for (int i = 0; i < 6; ++i) six_flat.raw(moving);
    six_flat.raw(lane_group({lane(1), lane(2)}));
    EXPECT_EQ(strip_with_lanes(six_flat.bytes()).unknown_panner_moves, 2);
    panner.resize(6);
    const Strip older = strip_of({.name = "Vox", .panners = {panner}});
    EXPECT_TRUE(older.surround_lanes.empty());
    EXPECT_EQ(older.short_panner_moves, 6);
}

TEST(ReadStrips, PannersStandWhereThePansDoAndAreNoPlainPans) {
    const struct {
        StoredPannerSpec numbers;
        bool is_panner;
    } cases[] = {
        {{-100, 100, 100, 100, 100, 100, -100}, true},
        {{0, 0, 0, 0, 0, 0, 1}, true},
        {{40, 0, 0, 0, 0, 0, 0}, false},
        {{0, 0, 101, 0, 0, 0, 0}, false},
        {{0, 0, 0, 0, 0, 0, -101}, false},
    };
    const StoredPannerSpec other = {1, 2, 3, 4, 5, 6, 7};
    for (const auto& c : cases) {
        const Strip strip = strip_of({.name = "Vox", .stored_panners = {c.numbers, other}});
        EXPECT_EQ(strip.stored_panners[0], c.is_panner ? std::optional(c.numbers) : std::nullopt);
        EXPECT_EQ(strip.stored_panners[1], other);
    }
}

TEST(ReadStripLanes, StereoPansThatStayHardLeftAndRightCarryNoMove) {
    const struct {
        int pan, initial, left;
        const char* total_dual_right;
    } cases[] = {{-100, -100, -100, "0 0 0"},
                 {-100, -100, -99, "2 1 1"},
                 {-50, -100, -100, "2 1 1"},
                 {-100, -50, -100, "2 1 1"}};
    for (const auto& c : cases) {
        const Strip strip = strip_of({.name = "Vox",
                                      .channels = 2,
                                      .pan = c.pan,
                                      .pan_lane = {.initial = c.initial, .points = {{10, c.left}}},
                                      .pan_right_lane = {.points = {{10, 100}}}});
        EXPECT_TRUE(strip.pan_lane.points.empty());
        EXPECT_EQ(strip.pan_lane.initial, c.initial);
        EXPECT_EQ(strip_lanes_text({strip}).ends_with("| pan 1 pt\n"), strip.pan_point_total > 0);
        EXPECT_EQ(fields(strip.pan_point_total, strip.dual_pan_lane.points.size(),
                         strip.pan_right_lane.points.size()),
                  c.total_dual_right);
    }
}

TEST(ReadStripLanes, AMasterTakesNoPanAndNoTrim) {
    const Strip s = strip_of({.name = "Main",
                              .kind = TrackKind::master,
                              .pan = -30,
                              .trim_lane = LaneSpec{.initial = 9}});
    EXPECT_EQ(fields(s.present, s.lane_count, s.pan_lane.initial, s.trim_lane.initial), "1 2 0 0");
}

TEST(ReadStripLanes, TheSecondStripOfOneRowHasNoLanes) {
    const Bytes image = SessionBuilder().track({.name = "Vox", .channels = 2}).image();
    std::vector<Strip> strips(2, strips_of(image).at(0));
    for (Strip& strip : strips) strip.stereo = false, strip.lane_count = 0;
    readStripLanes(BlockIndex{ByteView(image)}, strips);
    EXPECT_TRUE(strips[0].stereo && strips[0].lane_count == 5);
    EXPECT_TRUE(!strips[1].stereo && strips[1].lane_count == 0);
}

}  // namespace
}  // namespace tanrove
