// What becomes of an insert: the questions in their order, the words for each answer.
#include "plugins/insert_fate.hpp"

#include <gtest/gtest.h>

#include "base/formatted_text.hpp"
#include "plugins/avid_stand_ins.hpp"
#include "plugins/elck_chunks.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

PluginInsert insert_of(const std::string& code, ContainerKind kind) {
    PluginInsert insert;
    insert.code = code;
    insert.containerKind = kind;
    insert.pluginName = "C1 comp";
    return insert;
}

/// "kind, slot, format, name, maker: reason"
std::string told(const InsertFate& fate) {
    return formatted("%d, %s, %s, %s, %s: ", static_cast<int>(fate.kind),
                     fate.takes_slot ? "slot" : "none", std::string(fate.format).c_str(),
                     fate.display_name.c_str(), fate.maker.c_str()) +
           std::string(fate.reason.substr(0, 44));
}

TEST(InsertFate, IsDecidedByTheFirstQuestionThatApplies) {
    using enum ContainerKind;
    const BuiltInPlugins built_in = {
        .rows = {}, .aax_only = {{"MakeOnly", "a meter", true}}, .stepped = {}};
    PluginTableRow vst;
    vst.productName = "Plug";
    vst.fxName = "VST3: Plug (Me) (8ch)";
    vst.ident = "1{2}";
    PluginTableRow clap = vst;
    clap.fxName = "CLAP: Plug (Me)";
    PluginTableRow vst2 = vst;
    vst2.fxName = "VSTi: Plug";
    PluginTableRow name_only = vst;
    name_only.ident = name_only.fxName = "";
    PluginInsert plain = insert_of("MakePrd1", xml);
    PluginInsert bypassed = plain;
    bypassed.bypassed = true;
    PluginInsert inactive = bypassed;
    inactive.inactive = true;
    PluginInsert chunk = plain;
    chunk.elckSize = 5;
    PluginInsert found_chunk = insert_of("MakePrd1", scored);
    found_chunk.how = elck_how;
    const PluginInsert values = insert_of("MakePrd1", control_values);
    const PluginInsert trim = insert_of("DigiTrim", xml);
    const PluginInsert eq = insert_of("Digi47e3", control_values);
    const FateOptions usual;
    const FateOptions strict = {.leave_out_unheard = true,
                                .leave_out_missing = true,
                                .placeholders = false,
                                .stand_ins = false,
                                .aax_slots = false};
    const struct {
        FateFacts facts;
        FateOptions options;
        std::string told;
    } cases[] = {
        {{.insert = inactive, .row = &vst},
         strict,
         "4, none, none, Plug, Me: was inactive in Pro Tools"},
        {{.insert = bypassed}, strict, "4, none, none, MakePrd1, : was bypassed in Pro Tools"},
        {{.insert = bypassed, .row = &vst, .settings_translate = true},
         usual,
         "0, slot, vst3, Plug, Me: "},
        {{.insert = plain, .row = &vst, .installed = false, .settings_translate = true},
         strict,
         "6, none, none, Plug, Me: not installed for REAPER here - left out"},
        {{.insert = plain, .row = &vst2, .installed = false, .settings_translate = true},
         usual,
         "0, slot, vst2, Plug, : "},
        {{.insert = plain, .row = &clap},
         usual,
         "1, slot, clap, Plug, Me: tried: its settings ARE in the session, but "},
        {{.insert = plain, .row = &vst},
         strict,
         "5, none, none, Plug, Me: Pro Tools stored no transferable settings fo"},
        {{.insert = insert_of("MakePrd1", none), .row = &clap},
         usual,
         "1, slot, clap, Plug, Me: Pro Tools stored no transferable settings fo"},
        {{.insert = values, .row = &vst},
         usual,
         "1, slot, vst3, Plug, Me: tried: Pro Tools stored only its control val"},
        {{.insert = trim, .trim_is_carried = true},
         usual,
         "0, slot, reaper, DigiTrim, Avid: gain carried as REAPER's Volume Adjustment ("},
        {{.insert = trim},
         usual,
         "2, slot, none, DigiTrim, Avid: AAX only - no VST/VST3 version exists"},
        {{.insert = eq, .has_stand_in = true},
         usual,
         "0, slot, reaper, Digi47e3, Avid: stand-in: REAPER's own plug-ins with the sam"},
        {{.insert = eq, .has_stand_in = true},
         strict,
         "2, none, none, Digi47e3, Avid: AAX only - no VST/VST3 version exists"},
        {{.insert = insert_of("MakeOnly", xml)},
         usual,
         "2, slot, none, MakeOnly, : AAX only - no VST/VST3 version exists"},
        {{.insert = insert_of("KsWVWave", preset_tree)},
         usual,
         "3, none, none, Waves C1 comp, : REAPER has not scanned this Waves plug-in - "},
        {{.insert = plain, .row = &name_only},
         usual,
         "3, none, none, Plug, : not recognized - we have not matched this on"},
    };
    for (const auto& c : cases) EXPECT_EQ(told(decide_fate(c.facts, c.options, built_in)), c.told);

    EXPECT_NE(
        decide_fate({.insert = chunk, .row = &vst}, usual, built_in).reason.find("Worth telling"),
        std::string::npos);
    EXPECT_NE(
        decide_fate({.insert = found_chunk, .row = &vst}, usual, built_in).reason.find("Worth"),
        std::string::npos);
    EXPECT_TRUE(
        decide_fate({.insert = eq, .has_stand_in = true}, strict, built_in).stand_in_declined);
    EXPECT_EQ(aax_only_description("MakeOnly", built_in), "a meter");
    EXPECT_EQ(aax_only_description("TrLnXxxx", built_in), "an Avid stock processor");
}

TEST(StandIns, AreKnownByCodeAndShape) {
    const struct {
        const char* code;
        std::size_t controls;
        const char* product;
    } cases[] = {
        {"Digi47e3", 38, "EQ3 7-Band"},         {"Digi47e3", 37, ""},
        {"Digi1be3", 8, "EQ3 1-Band"},          {"Digidn3c", 14, "Dyn3 Compressor/Limiter"},
        {"Digidn3e", 15, "Dyn3 Expander/Gate"}, {"Digidn3x", 15, ""},
    };
    for (const auto& c : cases) {
        PluginInsert insert = insert_of(c.code, ContainerKind::control_values);
        insert.controlValues.resize(c.controls);
        EXPECT_EQ(stand_in_product(insert, {}).value_or(""), c.product);
        insert.containerKind = ContainerKind::xml;
        EXPECT_EQ(stand_in_product(insert, {}), std::nullopt);
    }
    const std::vector<std::string> names = {"Cmp Ratio", "EQ Low Gain", "Filter 2 Type",
                                            "Sc Source"};
    for (std::size_t left_out = 0; left_out <= names.size(); ++left_out) {
        ByteWriter map;
        map.zeros(4);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::size_t spacing = (names[i].size() + 2 + 4) / 4 * 4;
            if (i != left_out) map.raw(real_control(names[i], 1, spacing));
        }
        const auto state = plugin_chunk("AVIDChSt", "elck", "", map.bytes());
        const auto image = plugin_settings_block({.code = "AVIDChSt", .state = state});
        PluginInsert strip = insert_of("AVIDChSt", ContainerKind::control_values);
        strip.chunkLimit = image.size();
        EXPECT_EQ(stand_in_product(strip, ByteView(image)).value_or(""),
                  left_out == names.size() ? "Channel Strip" : "");
    }
}

}  // namespace
}  // namespace tanrove
