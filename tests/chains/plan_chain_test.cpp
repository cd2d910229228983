// The chain of a track: the switches of each slot, its pins, the envelopes of its controls, and
// what is said of every insert.
#include "chains/plan_chain.hpp"

#include <gtest/gtest.h>

#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr std::size_t state_at = 100;

/// A run over one track, with a plug-in of the user's own table for each code of his.
class ChainRun {
public:
    ChainRun() {
        image_.assign(state_at, 0);
        for (const char c : std::string("bytes")) image_.push_back(static_cast<std::uint8_t>(c));
        learn("MakePrd1", "VST: One (Make)", "1<00>");
        learn("FabFFC2p", "VST3: Comp (Fab)", "2{00}");
    }

    void learn(const std::string& code, const std::string& fx_name, const std::string& ident) {
        PluginTableRow row;
        row.code = code;
        row.productName = code;
        row.fxName = fx_name;
        row.file = "file.dll";
        row.ident = ident;
        row.pinsIn = keyed_pins_in;
        row.fabName = program_name_for(code);
        learned_[code] = row;
    }

    ChainPlan chain(std::vector<PluginInsert> inserts, int width = 2, bool is_master = false) {
        return chain(std::move(inserts),
                     ChainTrack{.name = "Voice", .width = width, .is_master = is_master});
    }

    ChainPlan chain(std::vector<PluginInsert> inserts, ChainTrack track) {
        for (PluginInsert& insert : inserts) {
            ChainInsert place{.insert = &insert};
            if (insert.keyInput > 0) place.key_channel = insert.keyInput;
            track.inserts.push_back(place);
        }
        TextBuffer lines;
        const NamesByCode no_names;
        const PluginIdentities identities({.scan = {},
                                           .built_in = built_in_plugins(),
                                           .learned = learned_,
                                           .inserts = inserts,
                                           .session_names = no_names,
                                           .settings_translate = {}},
                                          lines);
        const TempoClock clock({}, 120);
        StandInMaker stand_ins{ByteView(image_)};
        tallies = {};
        return plan_chain(track,
                          {.image = ByteView(image_),
                           .identities = identities,
                           .names = names,
                           .times = {.clock = clock, .rate_hz = 48000},
                           .stand_ins = stand_ins},
                          options, tallies);
    }

    /// A plug-in whose settings block stands in the image, behind all else.
    PluginInsert stored(const std::string& code, const Bytes& state) {
        PluginInsert made;
        made.code = code;
        made.channels = 2;
        made.blockStart = made.slot_end = image_.size();
        image_.insert(image_.end(), 17, 0);
        image_.insert(image_.end(), state.begin(), state.end());
        made.chunkLimit = image_.size();
        return made;
    }

    PluginInsert trim(const std::vector<TrimSpec>& channels) {
        return stored("DigiTrim", trim_state(channels));
    }

    ChainOptions options;
    ParameterNames names;
    ChainTallies tallies;

private:
    std::vector<std::uint8_t> image_;
    RowsByKey learned_;
};

PluginInsert insert(const std::string& code, bool has_state = true) {
    static std::uint64_t slot = 0;
    PluginInsert made;
    made.code = code;
    made.channels = 2;
    made.slot_end = ++slot;
    made.chunkLimit = state_at + 5;
    made.chunkOffset = state_at;
    made.chunkSize = has_state ? 5 : 0;
    made.containerKind = has_state ? ContainerKind::xml : ContainerKind::none;
    return made;
}

TEST(PlanChain, SwitchesASlotAsProToolsLeftIt) {
    const struct {
        bool state, inactive, bypassed, offline_wanted;
        bool bypass, offline;
        int carried_bypassed = 0, inactive_offline = 0, written_offline = 0;
    } cases[] = {
        {false, false, false, false, true, true},       {false, true, true, true, true, true},
        {true, true, false, false, true, true, 0, 1},   {true, true, true, true, true, true, 0, 1},
        {true, false, true, true, true, true, 1, 0, 1}, {true, false, true, false, true, false, 1},
        {true, false, false, true, false, false}};
    for (const auto& c : cases) {
        ChainRun run;
        run.options.offline_bypassed = c.offline_wanted;
        PluginInsert made = insert("MakePrd1", c.state);
        made.inactive = c.inactive;
        made.bypassed = c.bypassed;
        const ChainPlan chain = run.chain({made});
        ASSERT_EQ(chain.slots.size(), 1U);
        const FxSlot& slot = chain.slots.front();
        EXPECT_EQ(slot.bypassed, c.bypass);
        EXPECT_EQ(slot.offline, c.offline);
        EXPECT_EQ(slot.state, c.state ? "bytes" : "");
        EXPECT_EQ(slot.preset_name, c.state ? "" : "** Pro Tools settings not transferred **");
        EXPECT_EQ(run.tallies.carried_bypassed, c.carried_bypassed);
        EXPECT_EQ(run.tallies.inactive_offline, c.inactive_offline);
        EXPECT_EQ(run.tallies.written_offline, c.written_offline);
        EXPECT_EQ(run.tallies.outcomes.front().without_settings, !c.state);
    }
}

/// The channels of the input pins in a header: of each pin its first channel, "-" for none.
std::string input_pins(const std::string& header) {
    const ByteView bytes(
        std::span(reinterpret_cast<const std::uint8_t*>(header.data()), header.size()));
    std::string pins;
    for (std::size_t i = 0; i < bytes.u32(8); ++i) {
        const std::uint64_t mask = bytes.u64(12 + 8 * i);
        pins += mask == 0 ? "-" : std::to_string(std::countr_zero(mask));
    }
    return pins;
}

TEST(PlanChain, ConnectsTheKeyInputToItsOwnChannelsOnly) {
    const struct {
        const char* code;
        int width, key_input;
        const char* pins;
    } cases[] = {{"MakePrd1", 2, -1, "01--"}, {"MakePrd1", 1, -1, "01--"},
                 {"MakePrd1", 6, -1, "0123"}, {"MakePrd1", 2, 2, "0123"},
                 {"MakePrd1", 2, 4, "0145"},  {"MakePrd1", 2, 0, "0123"},
                 {"MakePrd1", 6, 0, "01--"},  {"MakePrd1", 2, 63, "0163-"},
                 {"Lin6Helx", 1, -1, "0---"}, {"Lin6Helx", 2, -1, "01--"}};
    for (const auto& c : cases) {
        ChainRun run;
        run.learn("Lin6Helx", "VST: Helix (L6)", "3<00>");
        PluginInsert made = insert(c.code);
        made.keyInput = c.key_input;
        run.learn("MakeClap", "CLAP: Clap (Make)", "make.clap");
        PluginInsert clap = made;
        clap.code = "MakeClap";
        clap.containerKind = ContainerKind::scored;
        run.chain({clap}, c.width);
        EXPECT_EQ(run.tallies.misled_claps.size(), c.key_input > 2 ? 1U : 0U);
        EXPECT_EQ(input_pins(run.chain({made}, c.width).slots.front().header), c.pins);
    }
}

TEST(PlanChain, HoldsASlotForWhatOnlyProToolsHasAndMarksTheLastThatIsHeard) {
    ChainRun run;
    const std::vector<PluginInsert> inserts = {insert("MakePrd1"), insert("DigiTest"),
                                               insert("DigiTest")};
    const ChainPlan chain = run.chain(inserts, 3);
    ASSERT_EQ(chain.slots.size(), 3U);
    EXPECT_TRUE(chain.slots[0].marks_last_pins);
    EXPECT_FALSE(chain.slots[2].marks_last_pins);
    EXPECT_EQ(input_pins(chain.slots[2].header), "012");
    EXPECT_EQ(chain.slots[1].ident, chain.slots[2].ident);
    EXPECT_EQ(run.tallies.outcomes[2].slot, 3);
    EXPECT_FALSE(run.chain(inserts, 2, true).slots[0].marks_last_pins)
        << "REAPER's master has none";
    EXPECT_EQ(run.tallies.master_slots, 1);
    run.options.fate.aax_slots = false;
    EXPECT_EQ(run.chain(inserts).slots.size(), 1U);
    EXPECT_EQ(run.tallies.outcomes.size(), 3U);
    EXPECT_TRUE(run.chain({insert("NoneSuch")}).slots.empty());
    EXPECT_EQ(run.tallies.outcomes.front().kind, OutcomeKind::not_recognized);
}

TEST(PlanChain, TrimTurnsTheTrackOverOrOneSideOfIt) {
    const TrimSpec inverted = {.inverted = true}, low = {-900000000, true};
    ChainRun run;
    PluginInsert both = run.trim({inverted}), left = run.trim({inverted, {}});
    PluginInsert uneven = run.trim({low, inverted});
    ChainPlan chain = run.chain({both});
    EXPECT_TRUE(chain.inverts_track);
    EXPECT_EQ(chain.slots.size(), 1U);
    chain = run.chain({left});
    EXPECT_FALSE(chain.inverts_track);
    ASSERT_EQ(chain.slots.size(), 2U);
    EXPECT_EQ(chain.slots[0].title, "Trim polarity, left channel (Channel Polarity Control)");
    EXPECT_EQ(chain.slots[0].parameters.substr(0, 5), "1 - -");
    EXPECT_EQ(chain.slots[0].guid_seed, (static_cast<std::uint32_t>('V') << 16 ^ 5 ^ 0x504f4c00));
    EXPECT_TRUE(chain.slots[1].marks_last_pins);
    EXPECT_TRUE(run.tallies.multi_mono.empty());
    run.chain({uneven, both});
    EXPECT_EQ(run.tallies.trims.different_gains, 1);
    EXPECT_EQ(run.tallies.trims.below_measured, std::vector<std::string>{"Voice: -19.08 dB"});
    EXPECT_EQ(run.tallies.trims.cancelled, std::vector<std::string>{"Voice"});

    // A wide track keeps the slot of Pro Tools; the side is turned over all the same.
    chain = run.chain({left}, 6);
    ASSERT_EQ(chain.slots.size(), 2U);
    EXPECT_TRUE(chain.slots[1].is_placeholder);
    EXPECT_FALSE(chain.slots[0].marks_last_pins || chain.slots[1].marks_last_pins);
    EXPECT_EQ(run.tallies.trims.on_wide_tracks, 1);
    EXPECT_TRUE(run.chain({both}, 6).inverts_track);
    run.options.fate.aax_slots = false;
    chain = run.chain({left}, 6);
    EXPECT_TRUE(chain.slots.size() == 1 && !chain.slots[0].marks_last_pins) << "polarity alone";
    run.options = {};

    // Each leg has its own gain and its own side.
    chain = run.chain({left}, ChainTrack{.name = "Voice", .width = 1, .leg = 1});
    EXPECT_FALSE(chain.inverts_track);
    chain = run.chain({uneven}, ChainTrack{.name = "Voice", .width = 1, .leg = 0});
    EXPECT_TRUE(chain.inverts_track);
    EXPECT_EQ(chain.slots[0].preset_name, "Avid Trim -19.08 dB");

    // A render is turned over already.
    chain = run.chain({both}, ChainTrack{.name = "Voice", .is_frozen = true});
    EXPECT_FALSE(chain.inverts_track);
    EXPECT_EQ(chain.slots[0].parameters.substr(0, 3), "3 -");

    EXPECT_FALSE(run.chain({left}, 2, true).inverts_track);
    EXPECT_EQ(run.tallies.trims.without_switch, 1);
    EXPECT_EQ(run.tallies.master_slots, 1);

    both.inactive = true;
    chain = run.chain({both});
    EXPECT_FALSE(chain.inverts_track);
    EXPECT_TRUE(chain.slots[0].bypassed && !chain.slots[0].offline);
    EXPECT_EQ(run.tallies.trims.switched_off, 1);
    run.options.fate.stand_ins = false;
    both.inactive = false;
    EXPECT_EQ(run.chain({left}).slots.size(), 1U);
    EXPECT_EQ(run.tallies.trims.one_sided_declined, 1);
    EXPECT_TRUE(run.chain({both}).inverts_track);
}

TEST(PlanChain, WritesUnlinkedChannelsOnce) {
    ChainRun run;
    PluginInsert left = insert("MakePrd1");
    left.channels = 1;
    PluginInsert right = left, other = left, further = left;
    further.slot_end = 9999;
    EXPECT_EQ(run.chain({left, right, other, further}).slots.size(), 2U);
    EXPECT_EQ(run.tallies.multi_mono, std::vector<std::string>{"Voice / MakePrd1"});
    const Bytes one = plugin_chunk("MakePrd1", "dflt", "", {1, 2});
    const Bytes another = plugin_chunk("MakePrd1", "more", "", {1, 2});
    for (const auto& second : {one, another}) {
        run.chain({run.stored("MakePrd1", ByteWriter().raw(one).raw(second).bytes())});
        EXPECT_EQ(run.tallies.multi_mono.size(), second == one ? 1U : 0U);
    }
    EXPECT_EQ(run.chain({left, right}, 1).slots.size(), 2U) << "a mono track has one channel";
    right.blockStart = 9;
    const ChainTrack leg{.name = "Voice", .width = 1, .leg = 1};
    EXPECT_EQ(run.chain({left, right, further}, leg).slots.size(), 2U);
    EXPECT_EQ(run.chain({left, right}, leg).slots[0].guid_seed, 9U | 1U << 24)
        << "the leg's own settings";
}

TEST(PlanChain, KontaktStaysAtItsDefaultsAsAsked) {
    ChainRun run;
    run.options.kontakt_state = false;
    run.options.fate.placeholders = false;
    PluginInsert made = insert("MakePrd1");
    made.containerKind = ContainerKind::hsin;
    EXPECT_EQ(run.chain({made}).slots.size(), 1U);
    EXPECT_EQ(run.tallies.outcomes.front().reason,
              "left at its defaults, as asked (--no-kontakt-state)");
}

PluginLane lane(std::uint32_t index, const std::string& id) {
    PluginLane made;
    made.name = "Any";
    made.index = index;
    made.id = id;
    return made;
}

TEST(PlanChain, TimesAutomationAndCountsWhatStaysBehind) {
    ChainRun run;
    PluginInsert made = insert("MakePrd1");
    PluginLane moved = lane(1, "0");
    moved.default_value = -0.5;
    moved.points = {{24000, 1.25}, {-5, 0}};
    PluginLane ticks = moved, bypass = moved, named = moved;
    ticks.in_ticks = true;
    ticks.steps = 2;
    ticks.points = {{960000 * 2, 0.5}};
    bypass.is_bypass = true;
    named.name = "Global Bypass";
    made.lanes = {moved, ticks, bypass, named, lane(9, "")};
    const FxSlot slot = run.chain({made}).slots.front();
    ASSERT_EQ(slot.envelopes.size(), 2U);
    EXPECT_NEAR(slot.envelopes[0].points[0].seconds, 0.5, 1e-9);
    EXPECT_EQ(slot.envelopes[0].points[0].value, 1) << "held within the control's range";
    EXPECT_EQ(slot.envelopes[0].points[1].seconds, 0);
    EXPECT_EQ(slot.envelopes[0].default_value, 0);
    EXPECT_NEAR(slot.envelopes[1].points[0].seconds, 1.0, 1e-9);
    EXPECT_TRUE(slot.envelopes[1].steps);
    EXPECT_EQ(run.tallies.lanes.of_bypass, 2);
    EXPECT_EQ(run.tallies.lanes.points, 5) << "each begins with its default at time 0";
    EXPECT_EQ(run.tallies.outcomes.front().automation_points, 5);
    made.chunkSize = 0;
    PluginInsert stock = made;
    stock.code = "DigiTest";
    run.chain({made, stock});
    EXPECT_EQ(run.tallies.lanes.on_defaults, 8);
}

}  // namespace
}  // namespace tanrove
