// Chains from the session's bytes to REAPER's text and back: an independent reader finds in every
// slot what the session held.
#include "project/fx_chain_text.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <set>

#include "chains/plan_chain.hpp"
#include "plugins/plugin_inserts.hpp"
#include "plugins/rfx_chain.hpp"
#include "support/chain_reader.hpp"
#include "support/real_sessions.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

struct Build {
    const char* fx_name;
    const char* file;
    const char* ident;
};
constexpr Build vst2 = {"VST: Two (Makr)", "two.dll", "1265525810<00>"};
constexpr Build vst3 = {"VST3: \"Three\" (Makr)", "three.vst3", "77{0123456789ABCDEF}"};
constexpr Build clap = {"CLAP: Four (Makr)", "", "makr.four"};

/// The track's chain as text, and what was counted.
struct Written {
    std::string text;
    ChainTallies tallies;
};

/// Reads the insert from its bytes, and writes it for this build on a stereo track.
Written write_insert(const InsertSpec& spec, const Build& build, const TempoMap& tempo = {},
                     const ParameterNames& names = {}) {
    const Bytes image = ByteWriter().raw(insert_slot(spec)).zeros(64).bytes();
    const auto inserts = read_plugin_inserts(BlockIndex(ByteView(image)));
    PluginTableRow row;
    row.code = insert_key(inserts.at(0));
    row.productName = "Product";
    row.fxName = build.fx_name;
    row.file = build.file;
    row.ident = build.ident;
    row.pinsIn = keyed_pins_in;
    row.tailWord = 65535;
    row.fabName = program_name_for(row.code);
    TextBuffer lines;
    const PluginIdentities identities({.scan = {},
                                       .built_in = {},
                                       .learned = {{row.code, row}},
                                       .inserts = inserts,
                                       .session_names = {},
                                       .settings_translate = {}},
                                      lines);
    const TempoClock clock(tempo, 120);
    StandInMaker stand_ins{ByteView(image)};
    Written written;
    const ChainPlan chain = plan_chain({.name = "Track", .inserts = {{&inserts[0]}}},
                                       {.image = ByteView(image),
                                        .identities = identities,
                                        .names = names,
                                        .times = {.clock = clock, .rate_hz = 44100},
                                        .stand_ins = stand_ins},
                                       {}, written.tallies);
    TextSink out(written.text);
    write_fx_chain(out, chain_level, track_chain_tag, chain);
    out.flush();
    return written;
}

std::string random_text(std::mt19937& random, std::size_t size) {
    std::string text;
    while (text.size() < size) text += static_cast<char>('a' + random() % 26);
    return text;
}

/// A state, what of it every build must have, and the builds that have it.
struct StateCase {
    int kind;
    Bytes state;
    std::string kept;
    bool under_vst2 = true, under_vst3 = true, under_clap = false;
    std::string code = "MakrPrd1";
};

std::vector<StateCase> random_states(std::mt19937& random) {
    const std::string text = random_text(random, 40 + random() % 3000);
    const auto size = text.size();
    const auto bare = [](const ByteWriter& payload) { return bare_state(payload.bytes()); };
    const std::string tree =
        "<PresetChunkXMLTree><PluginSubComp>WQ10</PluginSubComp>" + text + "</PresetChunkXMLTree>";
    const std::string archive = "22 serialization::archive" + text;
    std::vector<float> values;
    ByteWriter controls, floats;
    controls.zeros(4);
    for (std::size_t i = 0; i < 3 + random() % 40; ++i) {
        const float value =
            std::bit_cast<float>(0x3f000000U + static_cast<unsigned>(random() % 99));
        controls.raw(real_control("AB", static_cast<double>(value), 4));
        floats.f32(value);
    }
    const std::string code = "MakrPrd1", program = "FabFPrd1";
    const auto chunk = [&](const std::string& of, const std::string& tag, const Bytes& payload) {
        return plugin_chunk(of, tag, "", payload);
    };
    const Bytes payload = ByteWriter().u8(0x81).raw(text).bytes();
    const Bytes float_bytes = floats.bytes();
    return {
        {0, bare(ByteWriter()), "", false, false, false},
        {1, bare(ByteWriter().raw("FFBS").u32(1).u32(0).raw(text).raw("FFEx1234")), text, true,
         true, true},
        {2, bare(ByteWriter().raw("VC2!").u32(size - 1).raw(text)), text, true, true, true},
        {3, bare(ByteWriter().raw("<?xml").raw(text)), text},
        {4, bare(ByteWriter().raw("HXMC").raw(text)), text},
        {5,
         ByteWriter()
             .raw(chunk(code, "elck", controls.bytes()))
             .raw(chunk(code, "one.", payload))
             .bytes(),
         text, true, false, true},
        {5,
         ByteWriter()
             .raw(chunk(program, "elck", controls.bytes()))
             .raw(chunk(program, "one.", payload))
             .bytes(),
         std::string(float_bytes.begin(), float_bytes.end()), true, true, true, program},
        {6, bare(ByteWriter().raw("/*@Meta ").raw(text)), text},
        {7, bare(ByteWriter().u32(0x0085988d).u32(0).u32(size).raw(text)), text},
        {8, bare(ByteWriter().u32(1).u32(2).u32(size + 6).u32(9999).u16(0x9c78).raw(text)), text},
        {9, bare(ByteWriter().raw(preset_chunk(tree))), text},
        {10, bare(ByteWriter().raw("{\n\tindex = ").raw(text).raw("}")), text},
        {11,
         bare(ByteWriter().u32(archive.size() + 64).raw(archive).zeros(64).zeros(4).raw(archive)),
         text},
        {12, bare(ByteWriter().u32(size + 96).u32(0).u32(1).raw("hsin").raw(text).zeros(80)), text},
        {13, chunk(code, "dflt", payload), text, true, true, true},
    };
}

TEST(FxChainText, HoldsTheSessionsBytesOfEveryKindForEveryBuild) {
    std::mt19937 random(15);
    for (int round = 0; round < 12; ++round) {
        for (const StateCase& c : random_states(random)) {
            for (const Build& build : {vst2, vst3, clap}) {
                SCOPED_TRACE(testing::Message() << c.kind << ' ' << build.fx_name);
                const bool is_clap = build.ident == std::string(clap.ident);
                const bool is_vst3 = build.ident == std::string(vst3.ident);
                const bool is_kept =
                    is_clap ? c.under_clap : (is_vst3 ? c.under_vst3 : c.under_vst2);
                const Written written = write_insert({.code = c.code, .state = c.state}, build);
                const auto slots = read_fx_slots(written.text);
                ASSERT_EQ(slots.size(), 1U);
                const ReadSlot& slot = slots[0];
                EXPECT_EQ(slot.state.empty(), !is_kept);
                EXPECT_NE(slot.state.find(is_kept ? c.kept : ""), std::string::npos);
                EXPECT_EQ(slot.bypassed && slot.offline, !is_kept);
                EXPECT_EQ(slot.preset_name,
                          is_kept ? "" : "** Pro Tools settings not transferred **");
                EXPECT_EQ(slot.tokens.at(1), build.fx_name);
                EXPECT_EQ(slot.tokens.at(is_clap ? 2 : 5), build.ident);
                const ReadChain learned = read_chain(written.text);
                EXPECT_EQ(learned.fault, ChainFault::none);
                EXPECT_EQ(learned.plugin.fx_name, build.fx_name);
                EXPECT_EQ(learned.plugin.ident, build.ident);
                if (is_clap) continue;
                EXPECT_TRUE(slot.has_header);
                EXPECT_EQ(slot.id, std::stoul(build.ident));
                EXPECT_EQ(slot.pins_in, (std::vector<std::uint64_t>{1, 2, 0, 0}));
                EXPECT_EQ(slot.pins_out, (std::vector<std::uint64_t>{1, 2}));
                EXPECT_EQ(slot.state_bytes, slot.state.size());
                EXPECT_EQ(slot.magic, 0xfeed5eee);
                EXPECT_EQ(slot.magic_flag, 1U);
                EXPECT_EQ(slot.tail_word, 65535U);
                EXPECT_EQ(slot.tail, std::string(6, '\0'));
                ASSERT_TRUE(learned.plugin.header);
                EXPECT_EQ(learned.plugin.header->pins_in, 4U);
                EXPECT_EQ(learned.plugin.header->settings_bytes, slot.state.size());
            }
        }
    }
}

/// Pairs of lines that follow one another, at any distance, in a slot.
std::set<std::pair<std::string, std::string>> orders(const std::vector<ReadSlot>& slots) {
    std::set<std::pair<std::string, std::string>> found;
    for (const ReadSlot& slot : slots) {
        for (std::size_t i = 0; i < slot.lines.size(); ++i) {
            for (std::size_t j = i + 1; j < slot.lines.size(); ++j) {
                const auto word = [](const std::string& line) {
                    return line == "<JS" || line == "<CLAP" || line == "<AU" ? "<VST" : line;
                };
                found.emplace(word(slot.lines[i]), word(slot.lines[j]));
            }
        }
    }
    return found;
}

TEST(FxChainText, HasTheLinesOfASlotInReapersOrder) {
    const PluginLaneSpec lane = {.points = {{0, 0}}};
    const auto written =
        read_fx_slots(write_insert({.code = "MakrPrd1", .lanes = {lane}}, vst2).text +
                      write_insert({.code = "MakrPrd1", .state = bare_state({})}, vst2).text);
    ASSERT_EQ(written.size(), 2U);
    EXPECT_EQ(written[0].lines, (std::vector<std::string>{"BYPASS", "<VST", "FLOATPOS", "FXID",
                                                          "<PARMENV", "PINFLAGS", "WAK"}));
    EXPECT_EQ(written[1].lines, (std::vector<std::string>{"BYPASS", "<VST", "PRESETNAME",
                                                          "FLOATPOS", "FXID", "PINFLAGS", "WAK"}));
    for (const char* file :
         {"chains/Default_Track_Chain.RfxChain", "chains/Ultraschall_5_Tracks.RfxChain",
          "chains/soundboard_au_macos.RTrackTemplate", "chains/soundboard_vst3i_win.RTrackTemplate",
          "chains/studiolink_and_soundboard_win.RPP"}) {
        TANROVE_REAL_REAPER_TEXT(real, file);
        const auto slots = read_fx_slots(real);
        ASSERT_FALSE(slots.empty());
        const auto reapers = orders(slots);
        for (const auto& [first, second] : orders(written)) {
            EXPECT_FALSE(reapers.contains({second, first}))
                << file << ' ' << first << ' ' << second;
        }
        for (const ReadSlot& slot : slots) {
            // Older ones have header, state and tail in one run.
            if (!slot.has_header) continue;
            EXPECT_EQ(slot.state_bytes, slot.state.size()) << file;
        }
    }
}

/// Seconds of a tick: half the session at 120, then at 60.
double seconds_of(double tick, double change_tick) {
    const double quarter = 960000;
    return std::min(tick, change_tick) / quarter * 0.5 +
           std::max(tick - change_tick, 0.0) / quarter;
}

TEST(FxChainText, AutomationIsWhereTheSessionHasIt) {
    constexpr double change = 960000 * 4;
    ParameterNames names;
    names.add(
        "VST: Two (Makr)\t1265525810<00>\t\t8\tDry/Wet\n"
        "two.dll\tx\t\t3\tnot asked\n"
        "VST: Two (Makr)\t1265525810<00>\t\t17\tTwice\n"
        "VST: Two (Makr)\t1265525810<00>\t\t18\tTwice\n"
        "VST: Two (Makr)\t1265525810<00>\t\t27\tGain-L\n"
        "VST: Two (Makr)\t1265525810<00>\t\t40\tGAIN L\n"
        "VST: Two (Makr)\t1265525810<00>\t\t5\tPlain\n");
    names.finish();
    const struct {
        const char* code;
        PluginLaneSpec lane;
        const char* parameter;
        bool active = true;
    } cases[] = {
        {"MakrPrd1", {.name = "By id", .index = 3, .id = "2"}, "2:2"},
        {"MakrPrd1", {.name = "By id, two on", .index = 3, .id = "1"}, "1:1"},
        {"MakrPrd1", {.name = "dry wet", .index = 9, .id = ""}, "8:8"},
        {"MakrPrd1", {.name = "Plain", .index = 7, .id = "gain"}, "5:5"},
        {"MakrPrd1", {.name = "Twice", .index = 18, .id = ""}, "17:17", false},
        {"MakrPrd1", {.name = "gain l", .index = 28, .id = ""}, "27:27", false},
        {"MakrPrd1", {.name = "Dry/Wet", .index = 20, .id = ""}, "19:19", false},
        {"ikm_Atx3", {.name = "By offset", .index = 20, .id = "dry"}, "18:18"},
        {"FabFFC2p", {.name = "Below", .index = 1, .id = ""}, "0:0", false},
        {"MakrPrd1", {.name = "No number", .index = 3, .id = "02"}, "2:2", false},
        {"MakrPrd1", {.name = "Another's", .index = 3, .id = "5"}, "2:2", false},
        {"MakrPrd1", {.name = "None", .index = 0, .id = "dry"}, "0:0", false},
    };
    std::mt19937 random(3);
    for (const auto& c : cases) {
        for (const bool in_ticks : {false, true}) {
            SCOPED_TRACE(testing::Message() << c.lane.name << ' ' << in_ticks);
            PluginLaneSpec lane = c.lane;
            lane.in_ticks = in_ticks;
            lane.steps = in_ticks ? 4 : 0;
            lane.default_value = static_cast<std::int32_t>(random() % (1U << 31)) - (1 << 30);
            std::int64_t position = 1;
            for (int i = 0; i < 40; ++i) {
                position += 1 + static_cast<std::int64_t>(random() % 500000);
                lane.points.push_back(
                    {position, static_cast<std::int32_t>(random() % (1U << 31)) - (1 << 30)});
            }
            const TempoMap tempo = {{0, 120}, {change, 60}};
            const auto written =
                write_insert({.code = c.code, .lanes = {lane}}, vst2, tempo, names);
            const auto slots = read_fx_slots(written.text);
            ASSERT_EQ(slots.size(), 1U);
            ASSERT_EQ(slots[0].envelopes.size(), 1U);
            const auto& read = slots[0].envelopes[0];
            EXPECT_EQ(read.parameter, c.parameter);
            EXPECT_EQ(read.active, c.active);
            EXPECT_EQ(read.name,
                      std::string(c.active ? "" : "ASSIGN: ") + c.lane.name + " / Product");
            EXPECT_EQ(read.default_shape, in_ticks ? 1 : 0);
            ASSERT_EQ(read.points.size(), lane.points.size() + 1);
            const auto share = [](std::int32_t value) { return value / std::exp2(31) + 0.5; };
            EXPECT_EQ(read.points[0].seconds, 0);
            EXPECT_NEAR(read.points[0].value, share(lane.default_value), 1e-9);
            for (std::size_t i = 0; i < lane.points.size(); ++i) {
                const auto at = static_cast<double>(lane.points[i].position);
                EXPECT_NEAR(read.points[i + 1].seconds,
                            in_ticks ? seconds_of(at, change) : at / 44100, 1e-9);
                EXPECT_NEAR(read.points[i + 1].value, share(lane.points[i].value), 1e-9);
                EXPECT_EQ(read.points[i + 1].shape, in_ticks ? 1 : 0);
            }
            EXPECT_EQ(written.tallies.lanes.points, 41);
        }
    }
}

TEST(FxChainText, EveryLaneHasAParameterOfItsOwn) {
    InsertSpec spec = {.code = "MakrPrd1"};
    for (const auto& [index, id] : std::vector<std::pair<std::uint32_t, std::string>>{
             {4, ""}, {5, "3"}, {4, "3"}, {0, ""}, {1, ""}}) {
        spec.lanes.push_back({.index = index, .id = id, .points = {{0, 0}}});
    }
    const Written written = write_insert(spec, vst2);
    std::string parameters;
    const auto slots = read_fx_slots(written.text);
    for (const auto& envelope : slots.at(0).envelopes) {
        parameters += envelope.parameter + (envelope.active ? " " : "? ");
    }
    EXPECT_EQ(parameters, "4:4? 3:3 5:5? 0:0? 1:1? ");
    EXPECT_EQ(written.tallies.lanes.placed_by_id, 1);
    EXPECT_EQ(written.tallies.lanes.unassigned, 4);
}

}  // namespace
}  // namespace tanrove
