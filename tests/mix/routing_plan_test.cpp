// Routing: buses to the strips that take them, outputs, sends, key inputs and channel counts.
#include <gtest/gtest.h>

#include <random>

#include "mix/channel_counts.hpp"
#include "mix/key_inputs.hpp"
#include "mix/plan_routes.hpp"

namespace tanrove {
namespace {

constexpr int stereo = 2;

/// A mixer written down by hand: a strip, its routing and its plan at a time.
struct Mixer {
    std::vector<StripRow> strips;
    RoutingRecords records;
    std::vector<TrackPlan> plans;
    RoutingTallies tallies;

    void path(const std::string& name, std::vector<std::uint16_t> channels) {
        IoPath path;
        path.identity_low = static_cast<std::uint32_t>(records.paths.size()) + 1;
        path.type = bus_path_type;
        path.name = name;
        path.channels = std::move(channels);
        records.paths.push_back(path);
    }

    /// A track that plays to `output` ("" for nothing) and takes the bus `input`.
    RoutingRow& track(const std::string& name, const std::string& output,
                      const std::string& input = "", int channels = 1) {
        StripRow strip;
        strip.original_name = strip.current_name = name;
        strip.is_aux = !input.empty();
        strips.push_back(strip);
        TrackPlan plan;
        plan.name = plan.session_name = name;
        plan.channels = channels;
        plans.push_back(plan);
        RoutingRow row;
        row.strip_row = strips.size() - 1;
        row.has_slot = true;
        row.has_output = !output.empty();
        row.output_name = output;
        for (const IoPath& path : records.paths) {
            if (input.empty() || path.name != input) continue;
            row.input_name = input;
            row.input_type = bus_path_type;
            row.input_identity_low = path.identity_low;
        }
        records.rows.push_back(row);
        return records.rows.back();
    }

    void route() {
        const auto routes = resolve_routes(strips, records);
        const StripPlans strip_plans(plans, strips);
        const RoutingView view{strip_plans, routes, records};
        const SendEnvelope envelope = [](const char* block, EnvelopeKind kind, const Lane&) {
            return EnvelopePlan{.block = block, .kind = kind, .points = {}};
        };
        plan_outputs(plans, view, tallies);
        plan_key_inputs(plans, view, tallies);
        plan_sends(plans, view, envelope, tallies);
        settle_channel_counts(plans, view, tallies);
    }
};

RoutingSend send_to(const std::string& bus) {
    RoutingSend send;
    send.target = bus;
    return send;
}

TEST(BusTable, ABusLeadsToItsTakerThenToItsLegsThenToItsPair) {
    const struct {
        const char* what;
        std::vector<std::string> inputs;
        const char* bus;
        std::optional<std::size_t> strip;
        BusWay way;
        bool legs_part;
        int side;
    } cases[] = {
        {"its own taker", {"Verb.L", "Verb"}, "Verb", 1, BusWay::input, false, 0},
        {"one leg", {"Verb.R"}, "Verb", 0, BusWay::leg, false, 0},
        {"both legs", {"Verb.R", "Verb.L"}, "Verb", 1, BusWay::leg, true, 0},
        {"left of its pair", {"Verb"}, "Verb.L", 0, BusWay::stereo_pair, false, -1},
        {"right of its pair", {"Verb"}, "Verb.R", 0, BusWay::stereo_pair, false, 1},
        {"the other leg", {"Verb.L"}, "Verb.R", std::nullopt, BusWay::input, false, 0},
        {"nobody", {"Other"}, "Verb", std::nullopt, BusWay::input, false, 0},
        {"no bus", {"Verb"}, "Out 1-2", std::nullopt, BusWay::input, false, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Mixer mixer;
        mixer.path("Verb", {3, 4});
        mixer.path("Verb.L", {3});
        mixer.path("Verb.R", {4});
        mixer.path("Other", {5});
        for (const auto& input : c.inputs) mixer.track("Takes " + input, "Out 1-2", input);
        const BusTable buses(mixer.strips, mixer.records.rows, mixer.records.paths);
        const auto route = buses.route_of(c.bus);
        ASSERT_EQ(route.has_value(), c.strip.has_value());
        if (!route) continue;
        EXPECT_EQ(route->strip_row, *c.strip);
        EXPECT_EQ(route->way, c.way);
        EXPECT_EQ(route->legs_part, c.legs_part);
        EXPECT_EQ(route->side, c.side);
    }
}

TEST(BusTable, AnAudioTrackTakesNoBusAndARenamedBusKeepsItsTakerUnderBothNames) {
    Mixer mixer;
    mixer.path("Print", {1, 2});
    mixer.path("Verb", {3, 4});
    mixer.track("Recorder", "Out 1-2", "Print");
    mixer.strips[0].is_aux = false;
    mixer.track("Room", "Out 1-2", "Verb").input_name = "Old name";
    const BusTable buses(mixer.strips, mixer.records.rows, mixer.records.paths);
    EXPECT_FALSE(buses.route_of("Print"));
    EXPECT_TRUE(buses.route_of("Verb"));
    EXPECT_TRUE(buses.route_of("Old name"));
    EXPECT_EQ(buses.width_of("Old name"), 2U);
}

TEST(PlanOutputs, GoToTheTrackBehindTheirBusToTheMasterOrNowhere) {
    Mixer mixer;
    mixer.path("Drums", {1, 2});
    mixer.path("Surround", {3, 4, 5, 6, 7});
    mixer.track("Kick", "Drums");
    mixer.track("Drum bus", "Drums", "Drums", stereo);
    mixer.track("Off", "");
    mixer.track("Dry", "Out 1-2");
    mixer.track("Bed", "Surround", "", 5);
    mixer.track("Surround bus", "Out 1-2", "Surround", 1);
    mixer.track("Too wide", "Out 1-2", "", 301);
    mixer.route();
    EXPECT_EQ(mixer.plans[6].written_channels, 128);
    const bool plays_to_parent[] = {false, false, false, true, false, true, true};
    for (std::size_t i = 0; i < mixer.plans.size(); ++i) {
        SCOPED_TRACE(mixer.plans[i].name);
        EXPECT_EQ(mixer.plans[i].mixer.plays_to_parent, plays_to_parent[i]);
    }
    ASSERT_EQ(mixer.plans[1].channel_receives.size(), 1U) << "a track receives itself";
    EXPECT_EQ(mixer.plans[1].channel_receives[0].source, 0U);
    EXPECT_EQ(mixer.plans[1].channel_receives[0].width_code, 0);
    ASSERT_EQ(mixer.plans[5].channel_receives.size(), 1U);
    EXPECT_EQ(mixer.plans[5].channel_receives[0].width_code, 3 << 10);
    EXPECT_EQ(mixer.plans[5].written_channels, 6);
    EXPECT_EQ(mixer.tallies.wide_auxes, 1);
    EXPECT_EQ(mixer.tallies.outputs_by_input, 2);
    EXPECT_EQ(mixer.tallies.without_output, std::vector<std::string>{"Off"});
}

TEST(PlanSends, PanFollowsTheWidthOfSourceAndBus) {
    const struct {
        int channels;  // 0: unknown
        const char* bus;
        int pan, pan_right;
        double written;
        int panned;
        std::size_t listed;
    } cases[] = {
        {1, "Verb", -100, 0, -1, 1, 0},       {1, "Verb", -150, 0, -1, 1, 0},
        {1, "Verb", 0, 0, 0, 0, 0},           {1, "Mono", 40, 0, 0, 0, 0},
        {stereo, "Verb", -100, 100, 0, 0, 0}, {stereo, "Verb", -100, 99, 0, 0, 1},
        {stereo, "Mono", 0, 0, 0, 0, 0},      {6, "Verb", 0, 0, 0, 0, 0},
        {0, "Verb", -100, 100, 0, 0, 0},      {0, "Verb", -40, 0, -0.4, 1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.channels << c.bus << c.pan);
        Mixer mixer;
        mixer.path("Verb", {1, 2});
        mixer.path("Mono", {3});
        RoutingSend send = send_to(c.bus);
        send.pan = c.pan;
        send.pan_right = c.pan_right;
        mixer.track("Vox", "Out 1-2", "", std::max(c.channels, 1)).sends = {send};
        mixer.plans[0].width_unknown = c.channels == 0;
        mixer.track("Room", "Out 1-2", c.bus);
        mixer.route();
        EXPECT_EQ(mixer.plans[1].receives.at(0).pan, c.written);
        EXPECT_EQ(mixer.tallies.panned_sends, c.panned);
        EXPECT_EQ(mixer.tallies.two_knob_tracks.size(), c.listed);
    }
}

TEST(KeepPreFaderSends, UnmutesASourceOnlyWherePlayingOnIsWhatProToolsDoes) {
    const struct {
        const char* what;
        void (*change)(TrackPlan&, RoutingSend&);
        bool muted;
        double gain;
    } cases[] = {
        {"pre fader", [](TrackPlan&, RoutingSend&) {}, false, 0},
        {"post fader", [](TrackPlan&, RoutingSend& s) { s.pre_fader = false; }, true, 1},
        {"switched off", [](TrackPlan&, RoutingSend& s) { s.mute_lane.initial = 1; }, true, 1},
        {"inactive", [](TrackPlan& p, RoutingSend&) { p.inactive = true; }, true, 1},
        {"volume automation",
         [](TrackPlan& p, RoutingSend&) { p.envelopes = {{.block = "VOLENV2", .points = {{}}}}; },
         true, 1},
        {"trim automation",
         [](TrackPlan& p, RoutingSend&) { p.envelopes = {{.block = "VOLENV3", .points = {{}}}}; },
         false, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Mixer mixer;
        mixer.path("Cue", {1, 2});
        RoutingSend send = send_to("Cue");
        send.pre_fader = true;
        RoutingRow& row = mixer.track("Vox", "Out 1-2");
        mixer.plans[0].muted = true;
        c.change(mixer.plans[0], send);
        row.sends = {send};
        mixer.track("Headphones", "Out 3-4", "Cue");
        mixer.route();
        keep_pre_fader_sends(mixer.plans, mixer.tallies);
        EXPECT_EQ(mixer.plans[0].muted, c.muted);
        EXPECT_EQ(mixer.plans[0].mixer.gain, c.gain);
    }
}

TEST(PlanKeyInputs, SourcesTakePairsInTheOrderOfThePlugins) {
    Mixer mixer;
    mixer.path("Key", {1, 2});
    mixer.path("Other", {3});
    mixer.path("Own", {4});
    mixer.track("Bass", "Out 1-2", "Own");
    mixer.track("Kick", "Out 1-2", "Key");
    mixer.track("Snare", "Out 1-2", "Other");
    for (const char* bus : {"Nobody", "Key", "Other", "Key.L", "Own", ""}) {
        mixer.records.keys.push_back({0, bus});
    }
    Mixer unwired = mixer;
    mixer.route();
    const TrackPlan& bass = mixer.plans[0];
    ASSERT_EQ(bass.key_receives.size(), 2U);
    EXPECT_EQ(bass.key_receives[0].source, 1U);
    EXPECT_EQ(bass.key_receives[0].destination_channel, 2);
    EXPECT_EQ(bass.key_receives[1].source, 2U);
    EXPECT_EQ(bass.key_receives[1].destination_channel, 4);
    EXPECT_EQ(bass.written_channels, 6);
    EXPECT_TRUE(bass.parent_gets_first_pair);
    EXPECT_EQ(mixer.tallies.keys_on_first_pair, 2);
    EXPECT_EQ(mixer.tallies.unresolved_keys, 3);
    EXPECT_EQ(mixer.tallies.misled_keys, 3);
    unwired.records.carries_keys = false;
    unwired.route();
    EXPECT_TRUE(unwired.plans[0].key_receives.empty());
    EXPECT_EQ(unwired.plans[0].written_channels, 2);
}

/// Takes and targets drawn at random; plans stand in another order than strips, some are left out.
TEST(Routing, EverySourceIsTheTrackItMeansAndNoTrackReceivesItself) {
    std::mt19937 random(7);
    const auto draw = [&](std::size_t below) { return static_cast<std::size_t>(random()) % below; };
    const auto bus = [&] { return "Bus " + std::to_string(draw(12)); };
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        Mixer mixer;
        for (std::uint16_t i = 0; i < 10; ++i) mixer.path("Bus " + std::to_string(i), {i});
        for (std::size_t i = 0; i < 12; ++i) {
            auto& row = mixer.track(std::to_string(i), bus(), draw(2) == 0 ? bus() : "");
            for (auto sends = draw(4); sends > 0; --sends) row.sends.push_back(send_to(bus()));
            mixer.records.keys.push_back({i, bus()});
        }
        std::shuffle(mixer.plans.begin(), mixer.plans.end(), random);
        mixer.plans.resize(6 + draw(6));
        mixer.route();

        const auto needed = needed_strips(resolve_routes(mixer.strips, mixer.records));
        int receives = 0;
        const auto check = [&](std::size_t source, std::size_t target, bool target_needs) {
            const auto& names = mixer.plans;
            ASSERT_LT(source, names.size());
            EXPECT_NE(source, target);
            const std::size_t needer = target_needs ? target : source;
            const auto& needs = needed[std::stoul(names[needer].name)];
            EXPECT_NE(
                std::find(needs.begin(), needs.end(), names[target_needs ? source : target].name),
                needs.end());
            receives += target_needs ? 0 : 1;
        };
        for (std::size_t i = 0; i < mixer.plans.size(); ++i) {
            for (const auto& r : mixer.plans[i].receives) check(r.source, i, false);
            for (const auto& r : mixer.plans[i].channel_receives) check(r.source, i, false);
            for (const auto& r : mixer.plans[i].key_receives) check(r.source, i, true);
        }
        EXPECT_EQ(receives, mixer.tallies.sends + mixer.tallies.outputs_into_buses);
    }
}

}  // namespace
}  // namespace tanrove
