// Surround panners: the speakers of buses, who gets a panner, and its envelopes, held against a
// second way to look at a lane.
#include "mix/plan_panners.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <set>

#include "mix/channel_counts.hpp"

namespace tanrove {
namespace {

using Names = std::vector<std::string>;

std::string joined(const Names& names) {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : " ") + name;
    return text;
}

IoPath path(const std::string& name, std::vector<std::uint16_t> channels, std::uint8_t code,
            std::uint32_t identity, std::uint64_t whole = 0) {
    IoPath made;
    made.own = true;
    made.type = bus_path_type;
    made.name = name;
    made.channels = std::move(channels);
    made.width_code = code;
    made.identity_low = identity;
    made.parent_identity = whole;
    return made;
}

/// A bus and the legs of its channels from 1 on; "-" for one that is not listed.
std::vector<IoPath> bus_with_legs(const std::string& name, const Names& legs, std::uint8_t code) {
    std::vector<IoPath> paths = {path(name, {}, code, 1)};
    for (std::size_t i = 0; i < legs.size(); ++i) {
        const auto channel = static_cast<std::uint16_t>(i + 1);
        paths[0].channels.push_back(channel);
        if (legs[i] != "-") paths.push_back(path(legs[i], {channel}, 0, 10U + channel, 1));
    }
    return paths;
}

TEST(LayoutOf, LegsAreCalledAfterTheBusAndTheirSpeakers) {
    const struct {
        const char* bus;
        Names legs;
        std::uint8_t code;
        const char* speakers;  ///< "" for none
    } cases[] = {
        {"B", {"B.L", "B.C", "B.R", "B.Ls", "B.Rs", "B.LFE"}, 6, "L C R Ls Rs LFE"},
        {"B", {"B.R", "C", "B.L"}, 2, "R C L"},
        {"B.C", {"B.C.Lc", "B.C.Rc", "B.C.Cs", "S"}, 9, "Lc Rc Cs S"},
        {"B", {"B.Lss", "B.Rss", "B.Lsr", "B.Rsr"}, 9, "Lss Rss Lsr Rsr"},
        {"B", {"B.L", "B.C", "B.R", "B.Ls", "B.Rs", "B.Lfe"}, 6, ""},
        {"B", {"A.L", "B.C", "B.R"}, 2, ""},
        {"B", {"-", "B.C", "-", "-", "-"}, 5, "L C R Ls Rs"},
        {"B", {"-", "-", "-", "-", "-", "-"}, 6, "L C R Ls Rs LFE"},
        {"B", {"-", "B.R", "-", "-", "-"}, 5, ""},
        {"B", {"-", "B.C", "-", "-"}, 5, ""},
        {"B", {"-", "B.C", "B.R"}, 2, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(joined(c.legs));
        const PathLookup paths(bus_with_legs(c.bus, c.legs, c.code));
        const BusLayout layout = layout_of(paths, 0);
        EXPECT_EQ(joined(layout.speakers), c.speakers);
        EXPECT_EQ(std::ssize(c.legs) - std::ranges::count(c.legs, "-"),
                  static_cast<int>(layout.leg_count));
    }
    auto paths = bus_with_legs("B", {"Mine", "B.C", "B.R"}, 2);
    paths.push_back(path("B.L", {1}, 0, 50, 1));
    paths.push_back(path("B.Pair", {1, 3}, 1, 51, 1));
    EXPECT_EQ(joined(layout_of(PathLookup(paths), 0).speakers), "L C R") << "users' own parts";
    EXPECT_EQ(joined(layout_of(PathLookup(paths), 5).speakers), "L R") << "the whole's legs";
}

PannerLanes lanes_at(const std::array<int, 7>& numbers) {
    PannerLanes lanes;
    for (std::size_t i = 0; i < lanes.size(); ++i) {
        lanes[i].initial = numbers[i];
        if (i < 3) lanes[i].points = {{100, 10}, {200, 20}};
    }
    return lanes;
}

/// A strip "Vox" that plays into the bus "B", which "Bed" takes.
struct PannedMixer {
    std::vector<Strip> strips{2};
    std::vector<TrackPlan> plans{2};
    PannerTallies tallies;

    bool has_send = false;     ///< of Vox to a key
    bool to_hardware = false;  ///< the bus plays there, and Bed takes another

    std::vector<PannerTry> plan() {
        std::vector<StripRow> rows(2);
        RoutingRecords records;
        records.paths = bus_with_legs("B", {"B.L", "B.C", "B.R", "B.Ls", "B.Rs"}, 5);
        records.rows.resize(2);
        for (std::size_t i = 0; i < 2; ++i) {
            rows[i].current_name = strips[i].name = i == 0 ? "Vox" : "Bed";
            plans[i].name = plans[i].session_name = strips[i].name;
            strips[i].present = true;
            records.rows[i].strip_row = i;
        }
        records.rows[0].has_output = records.rows[0].has_slot = rows[1].is_aux = true;
        records.rows[0].output_name = records.rows[1].input_name = "B";
        records.rows[1].input_type = bus_path_type;
        if (has_send) {
            records.rows[0].sends.resize(1);
            records.rows[0].sends[0].target = "Key";
            records.keys = {{1, "Key"}};
        }
        records.paths[0].mapped = to_hardware;
        if (to_hardware) records.rows[1].input_type = 0;
        const Routes routes = resolve_routes(rows, records);
        const TrackStrips track_strips(plans, {rows, strips, {}});
        const RoutingView view{track_strips, routes, records};
        RoutingTallies routing;
        PannerEnvelopePlanner envelopes(TempoClock({}, 120), 48000);
        plan_outputs(plans, view, routing);
        auto tries = plan_panners(plans, view, envelopes, tallies);
        count_panner_lanes_left_out(plans, track_strips, tallies);
        settle_channel_counts(plans, view, routing);
        return tries;
    }
};

TEST(PlanPanners, EachSourceHasItsOwnNumbersOrNone) {
    const struct {
        const char* what;
        int channels;
        double leg_pan;
        bool width_unknown;
        std::size_t groups;  ///< of lanes
        bool stored;
        /// Two numbers of each channel, or "-" for no panner; envelopes, lanes left out: all
        /// that a panner does not play, with one of a short group and twenty unknown ones.
        const char* numbers;
    } cases[] = {
        {"mono", 1, 0, false, 1, true, "-30 60 0 0, 4 21"},
        {"mono of two", 1, 0, false, 2, true, "-30 60 0 0, 4 24"},
        {"stereo", 2, 0, false, 2, false, "-30 60 100 71, 0 28"},
        {"left leg", 2, -1, false, 2, false, "-30 60 0 0, 4 24"},
        {"right leg", 2, 1, false, 2, false, "100 100 0 0, 4 24"},
        {"as stored", 1, 0, false, 0, true, "1 7 0 0, 0 23"},
        {"both ways", 2, 0, false, 1, true, "-30 60 8 13, 0 25"},
        {"no right one", 2, 0, false, 1, false, "-, 0 25"},
        {"none", 1, 0, false, 0, false, "-, 0 22"},
        {"wide", 6, 0, false, 2, true, ", 0 1"},
        {"of unknown width", 1, 0, true, 1, false, "-30 60 0 0, 4 21"},
        {"of two channels", 1, 0, true, 2, false, "-30 60 100 71, 0 28"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        PannedMixer mixer;
        Strip& strip = mixer.strips[0];
        if (c.groups > 0) strip.surround_lanes.push_back(lanes_at({-30, 20, 40, 90, 80, 70, 60}));
        if (c.groups > 1) {
            strip.surround_lanes.push_back(lanes_at({130, -120, 45, 91, -1, 71, 300}));
        }
        strip.short_panner_moves = 1;
        strip.unknown_panner_moves = 20;
        strip.surround_master_lane.emplace().points = {{0, 5}};
        strip.surround = c.groups > 0;
        strip.pan_lane.points = {{0, 5}};
        if (c.stored) {
            strip.stored_panners[0] = {1, 2, 3, 4, 5, 6, 7};
            strip.stored_panners[1] = {8, 9, 10, 11, 12, 13, 14};
        }
        TrackPlan& plan = mixer.plans[0];
        plan.channels = c.channels;
        plan.leg_pan = c.leg_pan;
        plan.width_unknown = c.width_unknown;
        const auto tries = mixer.plan();

        std::string text = tries.empty() ? "" : "-";
        if (const auto& panner = plan.panner) {
            text = std::to_string(panner->front_x) + ' ' + std::to_string(panner->center_percent) +
                   ' ' + std::to_string(panner->right_front_x) + ' ' +
                   std::to_string(panner->right_front_rear_divergence);
            EXPECT_EQ(plan.written_channels, 6);
            EXPECT_EQ(mixer.plans[1].channel_receives.at(0).width_code, 3 * 1024);
        }
        EXPECT_EQ(mixer.tallies.without_settings, text == "-" ? 1 : 0);
        text += ", " + std::to_string(mixer.tallies.envelopes) + ' ' +
                std::to_string(mixer.tallies.lanes_left_out);
        EXPECT_EQ(text, c.numbers);
    }
    PannedMixer legs;  // of which one has a panner: the other's pan is written
    legs.strips[0].stored_panners[0] = {1, 2, 3, 4, 5, 6, 7};
    legs.strips[0].dual_pan_lane.points = legs.strips[0].pan_right_lane.points = {{0, 5}};
    legs.plans[0].leg_pan = -1;
    legs.plans.emplace_back().session_name = "Vox";
    legs.plans[2].leg_pan = 1;
    legs.plan();
    EXPECT_EQ(legs.tallies.without_settings, 1);
    EXPECT_EQ(legs.tallies.lanes_left_out, 1);
}

TEST(PlanPanners, APannerStandsAsideForSendsAndNoneStandsInFrontOfTheHardware) {
    PannedMixer sending;
    sending.has_send = true;
    sending.strips[0].stored_panners[0] = {-1, 2, 3, 4, 5, 6, 7};
    PannedMixer direct = sending;
    sending.plan();
    EXPECT_EQ(sending.plans[0].panner->first_channel, 2);
    EXPECT_EQ(sending.plans[0].written_channels, 8);
    EXPECT_EQ(sending.plans[1].channel_receives.at(0).width_code, 3 * 1024 + 2);
    EXPECT_EQ(sending.tallies.with_sends, 1);
    direct.to_hardware = true;
    EXPECT_TRUE(direct.plan().empty());
    EXPECT_EQ(direct.tallies.straight_to_hardware, std::vector<std::string>{"Vox"});
}

TEST(PlanPanners, TellsEveryTry) {
    PannedMixer mixer;
    mixer.strips[0].stored_panners[0] = {-1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(panner_tries_text(mixer.plan()),
              "SURR route Vox -> B W 5 legs 5 ok 1 have 1 stereo 0 v -1 2 3\n");
}

/// A lane as Pro Tools plays it; `late` where it jumps: the side that it goes on from.
double heard(const Lane& lane, double time, bool late) {
    const auto& points = lane.points;
    if (points.empty()) return lane.initial;
    const LanePoint* from = nullptr;
    const LanePoint* to = nullptr;
    for (const LanePoint& point : points) {
        if (point.position == time && (late || from == nullptr || from->position != time)) {
            from = &point;
        }
        if (point.position < time) from = &point;
        if (point.position > time && to == nullptr) to = &point;
    }
    if (from == nullptr) return to->position > 0 ? lane.initial : to->value;
    if (from->position == time || to == nullptr) return from->value;
    const double way = (time - from->position) / (to->position - from->position);
    return from->value * (1 - way) + to->value * way;
}

/// The five parameters, from how far the source stands in front.
double expected_parameter(std::uint32_t id, const PannerPlan& plan, double time, bool late) {
    const auto lane = [&](std::size_t i) { return heard(plan.lanes[i], time, late); };
    const double front = (lane(2) + 100) / 200;
    const auto across = [&](std::size_t i) { return lane(i) * front + lane(i + 1) * (1 - front); };
    double value = 0;
    if (id == 0) value = lane(6) / 100;
    if (id == 7) value = 0.5 + across(0) / 200;
    if (id == 8) value = front;
    if (id == 10) {
        const double tenths = heard(plan.lfe_lane, time, late);
        value = tenths > -1439 ? std::exp(tenths / 200 * std::log(10)) / 4 : 0;
    }
    if (id == 11) value = 1 - std::min(across(3), lane(5)) / 100;
    return std::clamp(value, 0.0, 1.0);
}

const std::map<std::uint32_t, std::vector<std::size_t>> lanes_of_parameters = {
    {0, {6}}, {7, {0, 1, 2}}, {8, {2}}, {10, {7}}, {11, {2, 3, 4, 5}}};

constexpr double slow_from = 200'000;  // ticks: from there on at 30 quarter notes a minute
const TempoClock slowing({{0, 120}, {slow_from, 30}}, 120);

double expected_seconds(double time, bool in_ticks) {
    const double slow = std::max(time - slow_from, 0.0);
    return std::max(in_ticks ? (time + 3 * slow) / 1'920'000 : time / 48000, 0.0);
}

/// Holds the envelopes of a plan against the expected ones.
void expect_envelopes(const PannerPlan& plan, const std::vector<PannerEnvelope>& envelopes) {
    std::vector<Lane> lanes = plan.lanes;
    lanes.push_back(plan.lfe_lane);
    auto envelope = envelopes.begin();
    for (const auto& parameter : lanes_of_parameters) {
        const std::uint32_t id = parameter.first;
        const std::vector<std::size_t>& places = parameter.second;
        std::map<double, bool> times;  // whether a lane jumps there
        std::size_t moving = 0;
        bool in_ticks = false;
        for (const std::size_t place : places) {
            std::set<double> own;
            for (const LanePoint& point : lanes[place].points) {
                times[point.position] |= !own.insert(point.position).second;
            }
            moving += own.empty() ? 0U : 1U;
            in_ticks |= !own.empty() && lanes[place].in_ticks;
        }
        if (times.empty()) continue;
        if (moving > 1) {
            const auto gathered = times;
            for (auto next = std::next(gathered.begin()); next != gathered.end(); ++next) {
                const double from = std::prev(next)->first;
                for (int k = 1; k < 8; ++k) times[from + (next->first - from) * k / 8];
            }
        }
        ASSERT_TRUE(envelope != envelopes.end() && envelope->id == id);
        auto point = envelope->points.begin();
        const auto expect_point = [&](double time, bool late) {
            ASSERT_TRUE(point != envelope->points.end());
            EXPECT_NEAR(point->seconds, expected_seconds(time, in_ticks), 1e-9);
            EXPECT_NEAR(point->value, expected_parameter(id, plan, time, late), 1e-9);
            ++point;
        };
        if (times.begin()->first > 0) expect_point(0, false);
        for (const auto& [time, jumps] : times) {
            if (jumps) expect_point(time, false);
            expect_point(time, true);
        }
        EXPECT_TRUE(point == envelope->points.end()) << id;
        ++envelope;
    }
    EXPECT_TRUE(envelope == envelopes.end());
}

TEST(PlanPannerEnvelopes, MeetTheLanesAtEveryTimeAndJumpWhereTheyDo) {
    std::mt19937 random(7);
    const auto between = [&](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    for (int round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
        PannerPlan plan;
        plan.lanes.resize(panner_control_count);
        const bool in_ticks = round % 2 == 0;
        const auto fill = [&](Lane& lane, int least, int most) {
            lane.in_ticks = in_ticks;
            lane.initial = between(least, most);
            int time = between(-2, 3) * 96000;
            for (int left = random() % 2 == 0 ? between(0, 6) : 0; left > 0; --left) {
                lane.points.push_back({double(time), double(between(least, most))});
                time += between(0, 2) * 50000;
            }
        };
        for (std::size_t i = 0; i < plan.lanes.size(); ++i) {
            fill(plan.lanes[i], i < 3 ? -100 : 0, 100);
        }
        fill(plan.lfe_lane, -1450, 200);
        if (!plan.lanes[2].moves()) plan.lanes[0].in_ticks = plan.lanes[1].in_ticks = !in_ticks;
        plan.lanes[6].in_ticks = !in_ticks;
        PannerEnvelopePlanner planner(slowing, 48000);
        expect_envelopes(plan, planner.plan(plan));
    }
}

TEST(PlanPannerEnvelopes, HoldWhateverIsStored) {
    PannerPlan plan;
    plan.lanes.resize(panner_control_count);
    constexpr std::size_t points = 40'000;
    for (std::size_t i = 0; i < plan.lanes.size(); ++i) {
        plan.lanes[i].in_ticks = i % 2 == 0;
        for (std::size_t p = 0; p < points; ++p) {
            plan.lanes[i].points.push_back(
                {double(p * 7919 % points), p % 2 == 0 ? 32767. : -32768.});
        }
    }
    plan.lfe_lane.points = {{0, 32767}, {1, -32768}};
    plan.lanes[2].points.push_back({-1, 7});
    PannerEnvelopePlanner planner(TempoClock({}, 120), 48000, 70);
    std::size_t written = 0;
    for (const PannerEnvelope& envelope : planner.plan(plan)) {
        written += envelope.points.size();
        double last = 0;
        for (const auto& point : envelope.points) {
            EXPECT_TRUE(point.seconds >= last && point.value >= 0 && point.value <= 1);
            last = point.seconds;
        }
    }
    EXPECT_LE(written, 9 * points + 100);
    EXPECT_GT(planner.straight_moves(), 0);
}

}  // namespace
}  // namespace tanrove
