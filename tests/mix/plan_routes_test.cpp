// Routing: buses to the strips that take them, outputs, sends, key inputs and channel counts.
#include "mix/plan_routes.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "mix/channel_counts.hpp"
#include "mix/key_inputs.hpp"

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
        const TrackStrips track_strips(plans, {strips, {}, {}});
        const RoutingView view{track_strips, routes, records};
        const SendEnvelope envelope = [](const char* block, EnvelopeKind kind, const Lane&) {
            return EnvelopePlan{.block = block, .kind = kind, .points = {}};
        };
        settle_unknown_widths(plans, view);
        plan_outputs(plans, view, tallies);
        plan_key_inputs(plans, view, envelope, tallies);
        plan_sends(plans, view, envelope, tallies);
        settle_channel_counts(plans, view, tallies);
    }
};

RoutingSend send_to(const std::string& bus) {
    RoutingSend send;
    send.target = bus;
    return send;
}

/// Where a bus leads: the strips, "input", "leg" or "pair", the side, whether the legs part.
std::string route_text(const Mixer& mixer, const std::string& bus, std::uint64_t identity = 0) {
    const BusTable buses(mixer.strips, {"Off by name"}, mixer.records.rows, mixer.records.paths);
    const auto path = buses.paths().find(identity, bus);
    const auto route = path ? buses.route_of(*path) : std::nullopt;
    if (!route) return "";
    std::string text;
    for (const std::size_t strip_row : route->strip_rows) text += std::to_string(strip_row) + ' ';
    text += route->way == BusWay::input ? "input" : route->way == BusWay::leg ? "leg" : "pair";
    if (route->side != 0) text += route->side < 0 ? " left" : " right";
    return text + (route->legs_part ? " parted" : "");
}

TEST(BusTable, ABusLeadsToItsTakersThenToItsLegsThenToItsPair) {
    const struct {
        const char* what;
        std::vector<std::string> inputs;  ///< "-" in front: of an inactive aux
        const char* bus;
        const char* route;
    } cases[] = {
        {"its own taker", {"Verb.L", "Verb"}, "Verb", "1 input"},
        {"parallel takers", {"Verb", "-Verb", "Verb"}, "Verb", "0 2 input"},
        {"an inactive one first", {"-Verb", "Verb"}, "Verb", "1 input"},
        {"inactive ones alone", {"-Verb", "-Verb"}, "Verb", "0 1 input"},
        {"an active leg", {"-Verb", "Verb.R"}, "Verb", "1 leg"},
        {"one leg", {"Verb.R"}, "Verb", "0 leg"},
        {"both legs", {"Verb.R", "Verb.L"}, "Verb", "1 leg parted"},
        {"left of its pair", {"Verb"}, "Verb.L", "0 pair left"},
        {"right of its pair", {"Verb", "Verb"}, "Verb.R", "0 1 pair right"},
        {"the other leg", {"Verb.L"}, "Verb.R", ""},
        {"nobody", {"Other"}, "Verb", ""},
        {"no bus", {"Verb"}, "Out 1-2", ""},
    };
    for (const bool own : {false, true}) {
        for (const auto& c : cases) {
            Mixer mixer;
            mixer.path("Verb", {3, 4});
            mixer.path("Verb.L", {3});
            mixer.path("Verb.R", {4});
            mixer.path("Other", {5});
            for (IoPath& path : mixer.records.paths) path.own = own;
            // A table that says what is a part of what needs no channels to tell it.
            for (std::size_t i = 1; own && i < 3; ++i) mixer.records.paths[i].parent_identity = 1;
            for (const std::string& input : c.inputs) {
                const bool active = input.front() != '-';
                mixer.track("Takes " + input, "Out 1-2", active ? input : input.substr(1));
                mixer.strips.back().active = active;
            }
            EXPECT_EQ(route_text(mixer, c.bus), c.route) << c.what << own;
        }
    }
}

TEST(BusTable, AnAudioTrackTakesNoBusAndARenamedBusKeepsItsTakerUnderBothNames) {
    Mixer mixer;
    mixer.path("Print", {1, 2});
    mixer.path("Verb", {3, 4});
    mixer.path("Swapped", {5, 6});
    mixer.track("Recorder", "Out 1-2", "Print");
    mixer.strips[0].is_aux = false;
    mixer.track("Room", "Out 1-2", "Verb").input_name = "Old name";
    mixer.track("Off by name", "Out 1-2", "Verb");
    EXPECT_EQ(route_text(mixer, "Print"), "");
    EXPECT_EQ(route_text(mixer, "Verb"), "1 input");
    EXPECT_EQ(route_text(mixer, "Old name"), "1 input");
    EXPECT_EQ(route_text(mixer, "Swapped", 2), "1 input") << "the identity stands above the name";
    EXPECT_EQ(route_text(mixer, "Verb", 77), "1 input") << "of no path";
    Mixer sent;
    sent.path("Verb", {3, 4});
    sent.track("Room", "Out 1-2", "Verb");
    RoutingRow& vox = sent.track("Vox", "Older name");
    vox.output_identity = 1;
    EXPECT_EQ(route_text(sent, "Older name"), "0 input") << "learnt from an output";
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
    mixer.plans[5].width_unknown = true;
    mixer.track("Too wide", "Out 1-2", "", 301);
    mixer.track("Snare", "unread").output_identity = 1;
    mixer.track("Amb", "unread").sends = {send_to("")};
    for (const std::size_t unread : {7U, 8U}) mixer.records.rows[unread].output_name.clear();
    mixer.path("Spare", {8, 9});
    mixer.track("Guide", "Spare");
    mixer.track("Left out", "Out 1-2", "Spare");
    mixer.plans.pop_back();
    mixer.route();
    EXPECT_EQ(mixer.plans[6].written_channels, 128);
    EXPECT_EQ(mixer.tallies.master_channels, 128);
    const bool plays_to_parent[] = {false, false, false, true, false,
                                    true,  true,  false, true, true};
    for (std::size_t i = 0; i < mixer.plans.size(); ++i) {
        SCOPED_TRACE(mixer.plans[i].name);
        EXPECT_EQ(mixer.plans[i].mixer.plays_to_parent, plays_to_parent[i]);
    }
    ASSERT_EQ(mixer.plans[1].channel_receives.size(), 2U) << "a track receives itself";
    EXPECT_EQ(mixer.plans[1].channel_receives[0].source, 0U);
    EXPECT_EQ(mixer.plans[1].channel_receives[0].width_code, 0);
    ASSERT_EQ(mixer.plans[5].channel_receives.size(), 1U);
    EXPECT_EQ(mixer.plans[5].channel_receives[0].width_code, 3 << 10);
    EXPECT_EQ(mixer.plans[5].written_channels, 6);
    EXPECT_EQ(mixer.plans[5].channels, 5) << "as wide as its bus, so that all of it goes on";
    EXPECT_EQ(mixer.tallies.wide_auxes, 1);
    EXPECT_EQ(mixer.tallies.outputs_by_input, 3);
    EXPECT_EQ(mixer.tallies.without_output, std::vector<std::string>{"Off"});
    EXPECT_EQ(mixer.tallies.leading_astray, std::vector<std::string>{"Amb"});
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

std::string receives_text(const std::vector<ReceivePlan>& receives) {
    std::string text;
    for (const ReceivePlan& r : receives) {
        text += std::to_string(r.source) + '@' + std::to_string(r.destination_channel) + " mode " +
                std::to_string(r.mode) + " gain " + std::to_string(std::lround(r.gain * 100)) +
                (r.muted ? " muted; " : "; ");
    }
    return text;
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
    EXPECT_EQ(receives_text(bass.key_receives), "1@2 mode 1 gain 100; 2@4 mode 1 gain 100; ");
    EXPECT_EQ(bass.key_channels, (std::vector<std::optional<int>>{2, 2, 4, 2, 2, 2}));
    EXPECT_EQ(bass.written_channels, 6);
    EXPECT_EQ(bass.parent_channels, 2);
    EXPECT_EQ(mixer.tallies.keys_on_first_pair, 2);
    EXPECT_EQ(mixer.tallies.unresolved_keys, 3);
    EXPECT_EQ(mixer.tallies.misled_keys, 3);
    mixer.plans[1].muted = true;
    keep_pre_fader_sends(mixer.plans, mixer.tallies);
    EXPECT_FALSE(mixer.plans[1].muted) << "a key sounds on while its source is muted";
    unwired.records.carries_keys = false;
    unwired.route();
    EXPECT_TRUE(unwired.plans[0].key_receives.empty());
    EXPECT_EQ(unwired.plans[0].written_channels, 2);
}

TEST(PlanKeyInputs, AKeyHearsAnotherThanItsOwnTrackAndEachSourceOnce) {
    Mixer mixer;
    mixer.path("Key", {1, 2});
    mixer.path("Shared", {3, 4});
    mixer.path("Shared.L", {3});
    mixer.records.paths[2].parent_identity = 2;
    mixer.path("Pair", {5, 6});
    mixer.path("Left.L", {5});  // of the pair, by its channel
    mixer.track("Bass", "Out 1-2", "Key");
    mixer.track("Kick", "Out 1-2", "Key");
    mixer.track("Hat", "Shared");
    mixer.track("Tom", "Out 1-2", "Pair");  // is heard before what takes a side of it
    mixer.track("Low tom", "Out 1-2", "Left.L");
    mixer.records.keys = {{0, "Key"}, {0, "Shared.L"}, {0, "Left.L"}, {1, "Key"}};
    mixer.route();
    EXPECT_EQ(receives_text(mixer.plans[0].key_receives),
              "1@2 mode 1 gain 100; 2@4 mode 0 gain 100; 3@6 mode 1 gain 100; ");
    EXPECT_EQ(receives_text(mixer.plans[1].key_receives), "0@2 mode 1 gain 100; ");
}

TEST(PlanOutputs, APartOfASurroundBusPlaysOnItsChannelsOfTheWhole) {
    const struct {
        const char* output;
        int channels;
        const char* receives;  ///< codes of source and destination
    } cases[] = {
        {"Film.R", 1, "1024>1026 "},
        {"Film.L", stereo, "1024>1024 "},
        {"Film.Stereo", stereo, "1024>1024 1025>1026 "},
        {"Film.Front", 3, "2048>0 "},
        {"Film.Rear", 1, "1024>1027 1025>1028 "},
        {"Film.Far", 1, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.output);
        Mixer mixer;
        mixer.path("Film", {11, 12, 13, 14, 15});
        mixer.path("Film.L", {11});
        mixer.path("Film.R", {13});
        mixer.path("Film.Stereo", {11, 13});
        mixer.path("Film.Front", {11, 12, 13});
        mixer.path("Film.Rear", {14, 15, 12});
        mixer.path("Film.Far", {14, 16});
        for (IoPath& path : mixer.records.paths) path.own = true;
        for (std::size_t i = 1; i < 7; ++i) mixer.records.paths[i].parent_identity = 1;
        mixer.track("Vox", c.output, "", c.channels);
        mixer.track("Film bus", "Out 1-2", "Film");
        mixer.route();
        std::string text;
        for (const ChannelReceive& receive : mixer.plans[1].channel_receives) {
            text += std::to_string(receive.width_code) + '>' +
                    std::to_string(receive.destination_code) + ' ';
        }
        EXPECT_EQ(text, c.receives);
        EXPECT_EQ(mixer.plans[0].mixer.plays_to_parent, text.empty());
        EXPECT_EQ(mixer.tallies.outputs_by_part, text.empty() ? 0 : 1);
    }
}

TEST(PlanOutputs, AnOutputOfOneChannelHasNoPanner) {
    const std::pair<const char*, MonoOutput> cases[] = {
        {"Main.L", MonoOutput::left},   {"Main.R", MonoOutput::right},
        {"Main", MonoOutput::no},       {"Main.C", MonoOutput::no},
        {"Bed.C", MonoOutput::channel}, {"Mono", MonoOutput::whole},
        {"Verb.R", MonoOutput::right},  {"Speaker 2", MonoOutput::right},
        {"Side", MonoOutput::right}};
    for (const auto& [output, expected] : cases) {
        Mixer mixer;
        mixer.path("Main", {1, 2, 3, 4, 5, 6});
        mixer.path("Main.Stereo", {1, 3});
        for (const auto& [leg, channel] : {std::pair("L", 1), {"C", 2}, {"R", 3}}) {
            mixer.path(std::string("Main.") + leg, {static_cast<std::uint16_t>(channel)});
        }
        for (IoPath& path : mixer.records.paths) path.own = path.mapped = true;
        mixer.path("Mono", {7});
        mixer.path("Verb", {8, 9});
        mixer.path("Verb.R", {9});
        mixer.path("Speakers", {1, 2});
        mixer.path("Speaker 2", {2});
        for (std::size_t i = 5; i < 8; ++i) mixer.records.paths[i].own = true;
        for (std::size_t i = 8; i < 10; ++i) mixer.records.paths[i].type = output_path_type;
        mixer.path("Side", {20});
        mixer.records.paths.back().own = mixer.records.paths.back().mapped = true;
        mixer.records.paths.back().hardware = {99, mixer.records.paths[9].identity()};
        mixer.path("Bed", {31, 32, 33});
        mixer.path("Bed.C", {32});
        mixer.records.paths.back().own = mixer.records.paths[mixer.records.paths.size() - 2].own =
            true;
        mixer.records.paths.back().parent_identity = mixer.records.paths.size() - 1;
        mixer.track("Vox", output);
        mixer.track("Bed bus", "Main", "Bed");
        mixer.track("Mono aux", "Main", "Mono");
        mixer.track("Room", "Main", "Verb", stereo);
        const Routes routes = resolve_routes(mixer.strips, mixer.records);
        EXPECT_EQ(routes.strips[0].mono_output, expected) << output;
    }
}

TEST(PlanOutputs, AHardwareOutputThatAnAuxTakesIsHeardOnce) {
    const struct {
        const char* input;
        const char* output;
        bool stays;
    } auxes[] = {{"Stem", "Main", false}, {"Stem", "", true}, {"Stem.L", "Main", true}};
    for (const auto& aux : auxes) {
        Mixer mixer;
        mixer.path("Stem", {1, 2});
        mixer.path("Stem.L", {1});
        for (IoPath& path : mixer.records.paths) path.mapped = true;
        mixer.track("Vox", "Stem");
        mixer.track("Monitor", aux.output, aux.input, stereo);
        mixer.route();
        EXPECT_EQ(mixer.plans[1].channel_receives.size(), 1U);
        EXPECT_EQ(mixer.plans[0].mixer.plays_to_parent, aux.stays);
        EXPECT_EQ(mixer.tallies.taken_from_hardware.size(), aux.stays ? 0U : 1U);
    }
}

TEST(SettleChannelCounts, NothingThatPlaysToTheMasterLosesAChannelOnItsWay) {
    Mixer mixer;
    mixer.path("Surround", {1, 2, 3, 4, 5, 6});
    mixer.track("Container", "Out 1-2", "", stereo);
    RoutingRow& bed = mixer.track("Bed", "Out 1-2", "", 6);
    bed.sends = {send_to("Surround")};
    for (const auto& [name, channel] : {std::pair("Surround.LFE", 6), {"Nobody.L", 7}}) {
        mixer.path(name, {static_cast<std::uint16_t>(channel)});
        mixer.records.paths.back().own = true;
        mixer.records.paths.back().parent_identity = channel == 6 ? 1 : 0;
    }
    mixer.path("Phones", {8, 9});
    mixer.records.paths.back().mapped = true;
    mixer.track("Vox", "Out 1-2").sends = {send_to("Surround"), send_to("Surround.LFE"),
                                           send_to("Nobody.L"), send_to("Phones"),
                                           send_to("Phones")};
    mixer.records.rows.back().sends.back().mute_lane.initial = 1;
    mixer.track("Verb", "Out 1-2", "Surround", 6);
    mixer.plans[0].folder = {1, 1};
    mixer.plans[1].folder = {2, -1};
    mixer.route();
    EXPECT_EQ(mixer.plans[0].written_channels, 6);
    EXPECT_EQ(mixer.tallies.master_channels, 6);
    EXPECT_EQ(mixer.plans[3].receives.at(0).width_code, 3 << 10);
    EXPECT_EQ(mixer.plans[3].receives.at(1).width_code, 0);
    EXPECT_EQ(mixer.tallies.sends_into_surround, 1);
    EXPECT_EQ(mixer.tallies.sends_left_out, 2) << "those that Pro Tools plays somewhere";
}

}  // namespace
}  // namespace tanrove
