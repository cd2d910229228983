// Channel records, the strips they belong to, and the lanes in the strips.
#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/channel_records.hpp"
#include "session/strip_lanes.hpp"
#include "session/strips.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::LaneSpec;
using builder::SessionBuilder;
using builder::TrackKind;
using builder::TrackSpec;

std::vector<std::string> names_of(const std::vector<StripRow>& rows) {
    std::vector<std::string> names;
    for (const StripRow& row : rows) names.push_back(row.current_name);
    return names;
}

/// The strips of an image whose table is the rows' names, with their lanes.
std::vector<Strip> strips_of(const Bytes& image, const std::vector<std::string>& buses = {}) {
    const BlockIndex index{ByteView(image)};
    const auto rows = readStripRows(index).rows;
    auto strips = readStrips(index, rows, names_of(rows), buses);
    readStripLanes(index, strips);
    return strips;
}

Strip strip_of(const TrackSpec& track) {
    return strips_of(SessionBuilder().track(track).image()).at(0);
}

/// The strip of a row whose send channel holds these lanes as they stand.
Strip strip_with_lanes(const Bytes& lanes, std::uint8_t shape = 1) {
    const Bytes channel = builder::send_channel(builder::channel_record({.fader_tenths = -10}),
                                                builder::output_name_record("Out"), lanes, shape);
    return strip_of({.name = "Vox", .mixer = channel});
}

Bytes lane(int initial) {
    return builder::lane_record({.initial = initial});
}

TEST(ChannelRecords, LimitsAreInclusive) {
    const struct {
        int fader_tenths;
        std::uint8_t link;
        std::size_t payload_bytes;
        bool accepted;
    } cases[] = {{125, 0, 155, true},    {-1450, 1, 279, true}, {126, 0, 279, false},
                 {-1451, 0, 279, false}, {0, 2, 279, false},    {0, 1, 154, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.fader_tenths << ' ' << c.payload_bytes);
        const Bytes image = builder::channel_record({.fader_tenths = c.fader_tenths,
                                                     .muted = true,
                                                     .pan = -30,
                                                     .pan_right = 40,
                                                     .link = c.link,
                                                     .payload_bytes = c.payload_bytes});
        const auto records = readChannelRecords(BlockIndex(ByteView(image)));
        ASSERT_EQ(records.size(), c.accepted ? 1U : 0U);
        if (!c.accepted) continue;
        EXPECT_DOUBLE_EQ(records[0].fader_db, c.fader_tenths / 10.0);
        EXPECT_EQ(records[0].link, c.link == 1);
        EXPECT_TRUE(records[0].muted);
        EXPECT_EQ(records[0].pan, -30);
        EXPECT_EQ(records[0].pan_right, 40);
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
        image.raw(builder::channel_record({}));  // in front of every name: no strip's
        image.counted("A").counted("C").counted("B");
        std::size_t at = image.size();
        for (std::size_t i = 0; i <= c.gaps.size(); ++i) {
            image.raw(builder::channel_record({})).raw("Cue");
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
        {"Cue", 400, "Verb", 401, "Cue"},       {"Cue", 401, "Verb", 400, "Verb"},
        {"Cue", 400, "Verb", 400, "Verb"},      {"Verb", 400, "Cue", 400, "Verb"},
        {"Verb 2", 1500, "x", 400, "Verb 2"},   {"Cue", 1501, "x", 400, ""},
        {"x", 400, "Cue", 1500, "Cue"},         {"x", 400, "Cue", 1501, ""},
        {"Verb 2", 700, "Verb", 800, "Verb 2"}, {"Verb 3", 400, "x", 400, "Verb"},
    };
    const std::vector<std::string> buses = {"Cue", "Verb", "Verb 2"};
    constexpr std::size_t fader_at = 2000;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.in_front + " " + c.behind);
        const Bytes record = builder::channel_record({.fader_tenths = -60});
        ByteWriter image;
        image.counted("A").raw(builder::channel_record({}));
        image.pad_to(fader_at - c.distance_in_front).raw(c.in_front);
        image.pad_to(fader_at - 10).raw(record);
        image.pad_to(fader_at + c.distance_behind).raw(c.behind).zeros(20);
        const auto sends = strips_by_name(image.bytes(), {"A"}, buses).at(0).sends;
        ASSERT_EQ(sends.size(), c.target.empty() ? 0U : 1U);
        if (sends.empty()) continue;
        EXPECT_EQ(sends[0].target, c.target);
        EXPECT_DOUBLE_EQ(sends[0].level_db, -6);
    }
}

TEST(ReadStrips, ALongLaneDoesNotMakeASendTheStripAndAnEmptySlotIsNoSend) {
    LaneSpec volume;
    for (int i = 0; i < 1000; ++i) volume.points.push_back({i, -50});
    const auto strips = strips_of(SessionBuilder()
                                      .track({.name = "Vox",
                                              .fader_db = -3,
                                              .muted = true,
                                              .sends = {{.target = "Verb", .level_db = -6}},
                                              .volume_lane = volume})
                                      .image(),
                                  {"Verb"});
    EXPECT_DOUBLE_EQ(strips.at(0).fader_db, -3);
    EXPECT_TRUE(strips[0].muted);
    ASSERT_EQ(strips[0].sends.size(), 1U);
    EXPECT_EQ(strips[0].sends[0].target, "Verb");

    const Bytes record = builder::channel_record({});
    const Bytes own = builder::send_channel(record, builder::output_name_record("Out"), {});
    const Bytes empty = builder::send_channel(record, {}, {});
    const Bytes mixer = ByteWriter().raw(own).raw(empty).raw("Verb").bytes();
    const Strip without_send =
        strips_of(SessionBuilder().track({.name = "Vox", .mixer = mixer}).image(), {"Verb"}).at(0);
    EXPECT_TRUE(without_send.present && without_send.sends.empty());
}

TEST(ReadLane, PointsMustFitTheBlock) {
    // Three points need 50 bytes behind offset 6.
    const Bytes good = builder::lane_record({.initial = -7, .points = {{5, 1}, {6, 2}, {7, 3}}});
    for (const int cut : {0, 1}) {
        SCOPED_TRACE(cut);
        Bytes bytes = good;
        bytes[3] = static_cast<std::uint8_t>(bytes[3] - cut);
        Lane read;
        ASSERT_TRUE(readLane(ByteView(bytes), 0, read));
        EXPECT_EQ(read.initial, -7);
        EXPECT_EQ(read.points.size(), cut == 0 ? 3U : 0U);
        EXPECT_FALSE(read.in_ticks);
    }
    Bytes small = builder::lane_record({.initial = 1});
    small[3] = 31;
    Lane read;
    EXPECT_FALSE(readLane(ByteView(small), 0, read));
    EXPECT_EQ(read.initial, 0);
}

TEST(ReadLane, TicksCountFromTheOriginWithOrWithoutItsLowBits) {
    const struct {
        std::int64_t stored;
        bool in_ticks;
        double position;
    } cases[] = {{960000, true, 960000},         {3567587328, true, 0},
                 {3567587328 - 128, true, -128}, {3567587328 - 129, true, 3567587199.0},
                 {3567587328 + 960, true, 960},  {3567587328, false, 3567587328.0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.stored);
        Bytes bytes = builder::lane_record({.points = {{c.stored, 4}}}, c.in_ticks);
        if (!c.in_ticks) bytes[27] = 1;  // no other number is the mark of a tick lane
        Lane read;
        ASSERT_TRUE(readLane(ByteView(bytes), 0, read));
        ASSERT_EQ(read.points.size(), 1U);
        EXPECT_EQ(read.points[0].position, c.position);
        EXPECT_EQ(read.points[0].value, 4);
        EXPECT_EQ(read.in_ticks, c.in_ticks);
    }
}

TEST(ReadStripLanes, PlacesFollowTheGroups) {
    const auto lanes = [](const std::vector<Bytes>& blocks) {
        ByteWriter image;
        image.raw(lane(11)).raw(lane(1));
        for (const Bytes& block : blocks) image.raw(block);
        return image.bytes();
    };
    const auto in_group = [](int initial) { return builder::lane_group({lane(initial)}); };
    const Bytes empty = builder::lane_group({});
    const struct {
        const char* what;
        std::vector<Bytes> behind_mute;
        std::uint8_t shape;
        int count;
        bool stereo;
        int pan, pan_right, trim;  ///< initial values; 0 where there is no lane
    } cases[] = {
        {"mono with trim", {in_group(3), empty, lane(5)}, 1, 4, false, 3, 0, 5},
        {"mono without trim", {in_group(3), empty}, 1, 3, false, 3, 0, 0},
        {"stereo", {in_group(3), in_group(4), lane(5)}, 1, 5, true, 3, 4, 5},
        {"no pan", {empty, empty, lane(5)}, 1, 3, false, 0, 0, 5},
        {"one knob", {in_group(0), in_group(4)}, 0, 3, false, 0, 0, 0},
        {"off centre", {in_group(3), in_group(4)}, 0, 4, true, 3, 4, 0},
        {"no knob", {in_group(3), lane(5)}, 2, 3, false, 0, 0, 5},
        {"three in a row", {lane(3)}, 1, 3, false, 3, 0, 0},
        {"four in a row", {lane(3), lane(5)}, 1, 4, false, 3, 0, 5},
        {"five in a row", {lane(3), lane(4), lane(5)}, 1, 5, true, 3, 4, 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Strip strip = strip_with_lanes(lanes(c.behind_mute), c.shape);
        EXPECT_EQ(strip.lane_count, c.count);
        EXPECT_EQ(strip.stereo, c.stereo);
        EXPECT_EQ(strip.volume_lane.initial, 11);
        EXPECT_EQ(strip.mute_lane.initial, 1);
        EXPECT_EQ(strip.pan_lane.initial, c.pan);
        EXPECT_EQ(strip.pan_right_lane.initial, c.pan_right);
        EXPECT_EQ(strip.fifth_lane.initial, c.trim);
        EXPECT_DOUBLE_EQ(strip.fader_db, 1.1) << "the lane has the later word on the fader";
        EXPECT_FALSE(strip.surround);
    }
}

TEST(ReadStripLanes, AFaderWithMovesKeepsItsRecord) {
    const Strip strip = strip_of({.name = "Vox",
                                  .fader_db = -3,
                                  .volume_lane = {.initial = 20, .points = {{0, -40}}},
                                  .tick_based = true});
    EXPECT_TRUE(strip.volume_lane.in_ticks && strip.fifth_lane.in_ticks);
    EXPECT_DOUBLE_EQ(strip.fader_db, -3);
    EXPECT_EQ(strip_lanes_text({strip}),
              "LANES Vox | fader -3.0 dB | vol 1 pt init 20 | mute 0 pt | pan 0 pt\n"
              "LANES   vol              0      -40\n");
    EXPECT_EQ(strip_lanes_text({strip_of({.name = "Still"})}), "");
}

TEST(ReadStripLanes, ASurroundStripHasPanners) {
    builder::PannerSpec panner;
    for (int i = 0; i < 8; ++i) panner.push_back({.initial = 10 + i});
    const Strip strip =
        strip_of({.name = "Vox", .trim_lane = LaneSpec{.initial = 9}, .panners = {panner, panner}});
    EXPECT_TRUE(strip.surround);
    EXPECT_EQ(strip.surround_master_lane.initial, 9);
    ASSERT_EQ(strip.surround_lanes.size(), 2U);
    for (std::size_t i = 0; i < panner_lane_count; ++i) {
        EXPECT_EQ(strip.surround_lanes[1][i].initial, 10 + static_cast<double>(i));
    }
    EXPECT_EQ(strip.lane_count, 5);
    panner.resize(6);
    EXPECT_TRUE(strip_of({.name = "Vox", .panners = {panner}}).surround_lanes.empty());
}

TEST(ReadStripLanes, StereoPansThatStayHardLeftAndRightCarryNoMove) {
    const struct {
        int pan, initial, left, right;
        int total;
        std::size_t dual, right_points;
    } cases[] = {{-100, -100, -100, 100, 0, 0, 0},
                 {-100, -100, -99, 100, 2, 1, 1},
                 {-50, -100, -100, 100, 2, 1, 1},
                 {-100, -50, -100, 100, 2, 1, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.pan << ' ' << c.left);
        const Strip strip = strip_of({.name = "Vox",
                                      .channels = 2,
                                      .pan = c.pan,
                                      .pan_lane = {.initial = c.initial, .points = {{10, c.left}}},
                                      .pan_right_lane = {.points = {{10, c.right}}}});
        EXPECT_TRUE(strip.pan_lane.points.empty());
        EXPECT_EQ(strip.pan_lane.initial, c.initial);
        EXPECT_EQ(strip_lanes_text({strip}).ends_with("| pan 1 pt\n"), c.dual == 1);
        EXPECT_EQ(strip.pan_point_total, c.total);
        EXPECT_EQ(strip.dual_pan_lane.points.size(), c.dual);
        EXPECT_EQ(strip.pan_right_lane.points.size(), c.right_points);
    }
}

TEST(ReadStripLanes, AMasterTakesNoPanAndNoTrim) {
    const Strip strip = strip_of({.name = "Main",
                                  .kind = TrackKind::master,
                                  .pan = -30,
                                  .trim_lane = LaneSpec{.initial = 9}});
    EXPECT_TRUE(strip.present);
    EXPECT_EQ(strip.lane_count, 2);
    EXPECT_EQ(strip.pan_lane.initial, 0);
    EXPECT_EQ(strip.fifth_lane.initial, 0);
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
