// Which plug-in of REAPER's stands in: each rule alone, the order of the rules against a plain
// reading of them, and what the run over a session makes of it.
#include "plugins/plugin_identities.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "plugins/identity_rules.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {
namespace {

/// 16 bytes as the 32 digits of a class.
std::string hex(std::string_view bytes) {
    std::string digits;
    for (const char c : bytes) digits += formatted("%02x", static_cast<unsigned char>(c));
    return digits;
}

ScanEntry vst2(const std::string& number, const std::string& name, const std::string& file = "") {
    ScanEntry entry;
    entry.id = code_word(number, 0);
    entry.name = name;
    entry.shortName = short_name(name);
    entry.file = file.empty() ? entry.shortName + ".dll" : file;
    return entry;
}

ScanEntry vst3(const std::string& class_text, const std::string& name,
               const std::string& file = "") {
    ScanEntry entry = vst2("zzzz", name, file.empty() ? "some.vst3" : file);
    entry.isVst3 = true;
    if (!class_text.empty())
        entry.classId = hex((class_text + std::string(16, '\0')).substr(0, 16));
    return entry;
}

ScanEntry clap(const std::string& id, const std::string& name, const std::string& file) {
    ScanEntry entry = vst2("\0\0\0\0", name, file);
    entry.isClap = true;
    entry.id = 0;
    entry.clapId = id;
    return entry;
}

PluginInsert insert(const std::string& code, ContainerKind kind = ContainerKind::xml,
                    std::uint64_t at = 0) {
    PluginInsert made;
    made.code = code;
    made.containerKind = kind;
    made.blockStart = at;
    if (code.size() == shell_key_characters) {
        made.code = code.substr(0, code_characters);
        made.pluginSubComp = code.substr(code_characters);
        made.containerKind = ContainerKind::preset_tree;
    }
    return made;
}

/// The list as it is looked up for a key and a name.
ScanIndex indexed(const std::vector<ScanEntry>& scan, const std::string& key = "",
                  const std::string& name = "") {
    AskedWords asked;
    add_asked_by_key(asked, key);
    add_asked_by_name(asked, name);
    return {scan, asked};
}

/// What a run prints, and the object it leaves.
struct SessionRun {
    std::vector<ScanEntry> scan;
    std::vector<PluginInsert> inserts;
    NamesByCode names = {};
    BuiltInPlugins built_in = built_in_plugins();
    RowsByKey learned = {};
    bool prefer_vst3 = true;
    bool prefer_clap = false;
    SettingsTrial trial = {};

    std::string lines;
    PluginIdentities identities() {
        TextBuffer out;
        PluginIdentities made(
            {scan, built_in, learned, inserts, names, prefer_vst3, prefer_clap, trial}, out);
        lines = out.text();
        return made;
    }
};

PluginTableRow row_of(const std::string& code, const std::string& product, const std::string& fx,
                      const std::string& file, const std::string& ident) {
    PluginTableRow row;
    row.code = code;
    row.productName = product;
    row.fxName = fx;
    row.file = file;
    row.ident = ident;
    return row;
}

const std::string kept = "kept on VST3: its VST2 build cannot take these settings";

TEST(IdentityRules, EachMatchesAloneAndTheFirstInScanOrderWins) {
    const ScanEntry other = vst2("none", "Other (Else)");
    const ScanEntry my_plugin = vst2("none", "MYPLUGIN"), my_second = vst2("none", "My Plugins 2");
    const struct {
        const char* rule;  ///< empty: no match
        const char* key;
        std::vector<ScanEntry> fit;  ///< each fits alone
        const char* product = "";
        bool prefer_vst3 = true;
    } cases[] = {
        {"iZotope code rule", "iZtpZab0", {vst3("VSTZnabcdefghijk", "X"), vst3("VSTZnab", "X")}},
        {"iZotope code rule (VST2)", "iZtpZab0", {vst2("Znab", "X")}},
        {"", "iZtpZab1", {vst2("Znab", "X")}},
        {"VST3 compat id (--prefer-vst3)", "MakePrd1", {vst3("VSTPrd1 some nam", "X")}},
        {"VST3 compat id", "MakePrd1", {vst3("VSTPrd1 some nam", "X")}, "", false},
        {"VST2 id", "MakePrd1", {vst2("Prd1", "X"), vst2("Prd1", "Y")}},
        {"VST3 class id ends in the AAX code", "MakePrd1", {vst3("0123456789abPrd1", "X")}},
        {"VST3 class id holds both AAX codes", "MakePrd1", {vst3("0Prd123Make9abcd", "X")}},
        {"", "MakePrd1", {vst3("0Prd123456789abc", "X"), vst3("0Make23456789abc", "X")}},
        {"name", "MakePrd1", {vst2("none", "My  Plug-in (Me)"), my_plugin}, "My Plugin"},
        {"name", "MakePrd1", {vst2("none", "Pro (Mid) (Me)")}, "Pro (Mid)"},
        {"name (partial)", "MakePrd1", {vst2("none", "Plug (Me)"), my_second}, "My Plugin"},
        {"", "MakePrd1", {vst2("none", "My (Me)")}, "My Plugin"},
        {"", "MakePrd", {vst2("Prd1", "X")}},
        {"", "MakePrd1", {clap("id", "X", "x.clap")}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.rule << " for " << c.key);
        for (std::size_t drop = 0; drop <= c.fit.size(); ++drop) {
            std::vector<ScanEntry> scan = {other};
            scan.insert(scan.end(), c.fit.begin(), c.fit.end());
            if (drop < c.fit.size()) scan.erase(scan.begin() + 1);
            if (scan.size() == 1) continue;
            const auto match =
                match_by_code(indexed(scan, c.key, c.product), c.key, c.product, c.prefer_vst3);
            EXPECT_EQ(match ? match->rule : "", c.rule);
            if (match) {
                EXPECT_EQ(match->entry, 1U);
            }
        }
    }
    const std::vector<ScanEntry> stems = {vst2("Prd1", "X", "C:\\My_Plug 2.dll"),
                                          vst3("", "X", "MyPlug2.vst3"),
                                          vst3("0123456789abcdef", "X", "myplug2.vst3")};
    EXPECT_EQ(match_by_code(indexed(stems, "MakePrd1"), "MakePrd1", "", true)->rule,
              "VST3 by filename stem (--prefer-vst3)");
    EXPECT_EQ(match_by_code(indexed(stems, "MakePrd1"), "MakePrd1", "", false)->rule, "VST2 id");
}

/// The rules once more, each as a walk over the list.
std::string plain_match(const std::vector<ScanEntry>& scan, const std::string& key,
                        bool vst3_first) {
    const auto first = [&](auto fits) -> std::string {
        const auto found = std::ranges::find_if(scan, fits);
        return found == scan.end() ? "" : std::to_string(found - scan.begin());
    };
    const std::string maker = hex(key.substr(0, 4));
    const std::string product = hex(key.substr(4));
    const auto compatible = [&](const ScanEntry& e) {
        return e.classId.starts_with(hex("VST") + product);
    };
    const auto is_vst2 = [&](const ScanEntry& e) {
        return e.classId.empty() && !e.isClap && e.id == code_word(key, 4);
    };
    std::vector<std::string> found;
    if (vst3_first) {
        found.push_back(first(compatible));
        if (const std::string at = first(is_vst2); !at.empty()) {
            found.push_back(first([&](const ScanEntry& e) {
                return e.isVst3 && !e.classId.empty() &&
                       file_stem(e.file) == file_stem(scan[std::stoul(at)].file);
            }));
        }
    }
    found.push_back(first(is_vst2));
    found.push_back(first(compatible));
    found.push_back(first([&](const auto& e) { return e.isVst3 && e.classId.ends_with(product); }));
    found.push_back(first([&](const ScanEntry& e) {
        const auto holds = [&](const std::string& word) {
            for (std::size_t at = 0; at < e.classId.size(); at += 2) {
                if (e.classId.compare(at, word.size(), word) == 0) return true;
            }
            return false;
        };
        return e.isVst3 && holds(maker) && holds(product);
    }));
    const auto hit = std::ranges::find_if(found, [](const auto& at) { return !at.empty(); });
    return hit == found.end() ? "" : *hit;
}

TEST(IdentityRules, AgreeWithAPlainWalkOverRandomLists) {
    std::mt19937 random(3);
    const auto text = [&](std::size_t length) {
        std::string made;
        while (made.size() < length) made += "ab"[random() % 2];
        return made;
    };
    for (int round = 0; round < 3000; ++round) {
        std::vector<ScanEntry> scan;
        for (std::size_t i = random() % 6; i-- > 0;) {
            const std::string cls = random() % 2 == 0 ? "VST" + text(13) : text(16);
            ScanEntry entry = vst3(random() % 3 == 0 ? "" : cls, "X", text(2) + ".x");
            entry.id = code_word(text(4), 0);
            entry.isVst3 = random() % 4 != 0;
            scan.push_back(entry);
        }
        const std::string key = text(8);
        for (const bool vst3_first : {false, true}) {
            const auto match = match_by_code(indexed(scan, key), key, "", vst3_first);
            ASSERT_EQ(match ? std::to_string(match->entry) : "", plain_match(scan, key, vst3_first))
                << key << " in round " << round;
        }
    }
}

TEST(PluginIdentities, MakeARowAndALineForEachMatch) {
    SessionRun run;
    run.scan = {vst2("Prd1", "One (Me) (8ch)"), vst3("", "Two (You)", "two.vst3"),
                vst3("VSTsubCwaves nam", "Waves Thing (Waves)"), vst3("VSTsubD", "", "x.vst3")};
    run.scan[1].id = code_word("Prd2", 0);
    run.scan[2].instrument = true;
    run.inserts = {insert("MakePrd2"),   insert("MakePrd1"), insert("KsWVWavesubC"),
                   insert("MakePrd1"),   insert("FabFPrd9"), insert("shor"),
                   insert("MakePrdXsub")};
    run.inserts[3].keyInput = 0;
    const PluginIdentities identities = run.identities();
    EXPECT_EQ(run.lines,
              "    KsWVWavesubC -> VST3i: Waves Thing (Waves)                     "
              "[Waves PluginSubComp]\n"
              "    MakePrd1 -> VST: One (Me) (8ch)                            [VST2 id]\n"
              "    MakePrd2 -> VST3: Two (You)                                "
              "[VST2 id, VST3 class id unknown - marker only]\n");
    const PluginTableRow* one = identities.row_for("MakePrd1");
    ASSERT_NE(one, nullptr);
    EXPECT_EQ(one->productName + ", " + one->file, "One, One.dll");
    EXPECT_EQ(one->pinsIn, 4) << "one of the two is keyed";
    EXPECT_EQ(identities.row_for("KsWVWavesubC")->pinsIn, 2);
    EXPECT_EQ(one->pinsOut, 2);
    EXPECT_EQ(one->tailWord, 65535);
    EXPECT_EQ(identities.findings().without_class, std::set<std::string>{"MakePrd2"});
    EXPECT_EQ(identities.row_for("FabFPrd9"), nullptr);

    run.scan = {vst2("none", "X")};
    EXPECT_EQ(run.identities().row_for("MakePrd1"), nullptr);
    EXPECT_EQ(run.lines, "    (nothing new matched)\n");
    run.scan.clear();
    EXPECT_TRUE(run.identities().is_installed("1<2>"));
    EXPECT_EQ(run.lines, "") << "without a list nothing is said";
}

TEST(PluginIdentities, TakeTheSessionsNameWhereNoCodeFits) {
    const ScanEntry me2 = vst2("none", "Thing (Me)");
    const ScanEntry me3 = vst3("0123456789abcdef", "Thing (Me) (mono)");
    const ScanEntry me_clap = clap("id", "Thing (Me)", "t.clap");
    const ScanEntry you = vst2("none", "Thing (You)");
    const struct {
        const char* key;
        const char* name;
        std::vector<ScanEntry> scan;
        const char* fx_name;  ///< "": none
    } cases[] = {
        {"MakePrd1", "Thing", {me2, me3, me_clap}, "VST3: Thing (Me) (mono)"},
        {"MakePrd1", "Thing", {me_clap, me2}, "VST: Thing (Me)"},
        {"MakePrd1", "Thing", {me_clap}, "CLAP: Thing (Me)"},
        {"MakePrd1", "Thing", {me2, you, me3}, ""},
        {"MakePrd1", "Th-", {vst2("none", "Th (Me)")}, ""},
        {"MakePrd1", "Thi", {vst2("none", "Thi (Me)")}, "VST: Thi (Me)"},
        {"DigiPrd1", "Thing", {me2}, ""},
        {"KsWVWavesubC", "Thing", {me2}, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.key << ' ' << c.name << ' ' << c.fx_name);
        SessionRun run;
        run.scan = c.scan;
        run.inserts = {insert(c.key)};
        run.names = {{c.key, c.name}};
        run.prefer_vst3 = false;  // a VST3 of that name is taken all the same
        const PluginIdentities identities = run.identities();
        const PluginTableRow* row = identities.row_for(c.key);
        EXPECT_EQ(row == nullptr ? "" : row->fxName, c.fx_name);
    }
}

TEST(PluginIdentities, FindTheKontaktThatTakesTheSettings) {
    const ScanEntry six = vst2("Ni$D", "Kontakt (Native Instruments)");
    const ScanEntry x86 = vst2("Ni$D", "Kontakt (Native Instruments) (x86)");
    const ScanEntry seven = vst3("VSTNiK7kontakt 7", "Kontakt 7 (Native Instruments) (64 out)");
    const ScanEntry eight = vst3("VSTNiK8kontakt 8", "Kontakt 8 (Native Instruments)", "K_8.vst3");
    const ScanEntry ten = vst3("VSTNiKAkontakt10", "Kontakt 10 (Native Instruments)");
    const ScanEntry wrong = vst3("VSTNiKBkontakt99", "Kontakt 99 (Somebody)");
    const std::string measured = "Kontakt 7 takes Kontakt 6's settings, measured";
    const struct {
        std::vector<ScanEntry> scan;
        bool prefer_vst3;
        const char* fx_name;
        std::string why;
    } cases[] = {
        {{six, seven, ten}, true, "VST3: Kontakt 7 (Native Instruments) (64 out)", measured},
        {{six, seven}, false, "VSTi: Kontakt (Native Instruments)", ""},
        {{x86, seven}, false, "VST3: Kontakt 7 (Native Instruments) (64 out)", measured},
        {{eight, ten, wrong}, true, "VST3: Kontakt 10 (Native Instruments)", "predicted: "},
        {{six, ten}, true, "VSTi: Kontakt (Native Instruments)", ""},
        {{wrong}, true, "VSTi: Kontakt (Native Instruments)", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fx_name + c.why);
        SessionRun run;
        run.scan = c.scan;
        run.inserts = {insert(kontakt_code), insert(kontakt_code)};
        run.prefer_vst3 = c.prefer_vst3;
        const PluginIdentities identities = run.identities();
        EXPECT_EQ(identities.row_for(kontakt_code)->fxName, c.fx_name);
        EXPECT_NE(run.lines.find(c.why), std::string::npos) << run.lines;
        EXPECT_EQ(identities.findings().kontakt.has_value(), !c.why.empty());
        if (!c.why.empty()) {
            EXPECT_EQ(identities.findings().kontakt->instances, 2);
        }
        const bool seven_outs = c.why == measured;
        EXPECT_EQ(identities.row_for(kontakt_code)->pinsOut, seven_outs ? 64 : 2);
    }
    EXPECT_EQ(built_in_plugins().rows.at(kontakt_code).ident,
              "1315513412<5653544E6924446B6F6E74616B740000>");
}

TEST(PluginIdentities, LeaveAVst3ForTheVst2OnlyWithTheSettings) {
    using enum ContainerKind;
    const ScanEntry twin = vst2("Prd1", "Plug (Me)", "My_Plug.dll");
    const ScanEntry x86 = vst2("Prd1", "Plug (Me) (x86)");
    const ScanEntry fab2 = vst2("FQ3p", "Pro-Q 3 (FabFilter)");
    const ScanEntry fab3 = vst3("VSTFQ3p some nam", "FabFilter Pro-Q 3 (FabFilter)");
    const std::string in_table = "VST3: Plug (Me)", twins = "VST: Plug (Me)";
    const std::string q3 = "VST3: FabFilter Pro-Q 3 (FabFilter)", q2 = "VST: Pro-Q 3 (FabFilter)";
    const std::string moved = "[--prefer-vst2 over the table row]", same = "(nothing new";
    const std::string by_class = "[VST3 compat id (--prefer-vst3)]";
    const struct {
        const char* what;
        const char* key;
        std::vector<ScanEntry> scan;
        std::vector<ContainerKind> kinds;
        bool prefer_vst3;
        std::string fx_name;
        std::string why;
        std::string kept;  ///< name and instances of the key kept on VST3
    } cases[] = {
        {"by default", "MakePrd1", {twin}, {ffbs}, true, in_table, same, ""},
        {"settings fit", "MakePrd1", {twin}, {ffbs, index_text}, false, twins, moved, ""},
        {"one does not", "MakePrd1", {twin}, {ffbs, xml}, false, in_table, kept, "Plug 2"},
        {"32 bits", "MakePrd1", {x86}, {ffbs}, false, in_table, same, ""},
        {"fits", "FabFFQ3p", {fab2, fab3}, {ffbs}, false, q2, "[VST2 id]", ""},
        {"not", "FabFFQ3p", {fab2, fab3}, {xml}, false, q3, kept, "FabFilter Pro-Q 3 1"},
        {"alone", "FabFFQ3p", {fab3}, {xml}, false, q3, by_class, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.key << ' ' << c.what);
        SessionRun run;
        run.built_in.rows["MakePrd1"] =
            row_of("MakePrd1", "Plug", "VST3: Plug (Me)", "My-Plug.vst3", "1{ab}");
        run.scan = c.scan;
        for (const ContainerKind kind : c.kinds) run.inserts.push_back(insert(c.key, kind));
        run.prefer_vst3 = c.prefer_vst3;
        const PluginIdentities identities = run.identities();
        const PluginTableRow* row = identities.row_for(c.key);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->fxName, c.fx_name);
        EXPECT_NE(run.lines.find(c.why), std::string::npos) << run.lines;
        const bool is_moved = c.why == moved;
        EXPECT_EQ(identities.findings().moved_to_vst2.contains(c.key), is_moved);
        if (is_moved) {
            EXPECT_EQ(row->file, "My-Plug.dll") << "the character that the scan replaced";
        }
        EXPECT_EQ(row->fabName, *c.key == 'F' ? "Default Setting" : "");
        std::string kept_key;
        for (const auto& [key, build] : identities.findings().kept_on_vst3) {
            kept_key += build.display_name + " " + std::to_string(build.instances);
        }
        EXPECT_EQ(kept_key, c.kept);
    }
}

TEST(PluginIdentities, LookARowUpWhereItIsSurest) {
    SessionRun run;
    run.scan = {vst2("Prd1", "Found (Me)"), vst2("Prd2", "Found (Me)"), vst2("Prd3", "Third (Me)")};
    for (const char* key : {"MakePrd1", "MakePrd2", "MakePrd3", "MakePrd4", "MakePrd5"}) {
        run.inserts.push_back(insert(key));
    }
    run.learned["MakePrd2"] = row_of("MakePrd2", "", "learned", "", "1<2>");
    run.learned["MakePrd4"] = row_of("MakePrd4", "", "learned", "", "1<2>");
    run.built_in.rows["MakePrd3"] = row_of("MakePrd3", "Third!", "", "Third.dll", "");
    run.built_in.rows["MakePrd4"] = row_of("MakePrd4", "", "by heart", "", "1<2>");
    run.built_in.rows["MakePrd5"] = row_of("MakePrd5", "Name Only", "", "", "");
    run.names = {{"MakePrd5", "Third"}};
    const PluginIdentities identities = run.identities();
    const auto fx = [&](const char* key) { return identities.row_for(key)->fxName; };
    EXPECT_EQ(fx("MakePrd1"), "VST: Found (Me)");
    EXPECT_EQ(fx("MakePrd2"), "learned");
    EXPECT_EQ(fx("MakePrd3"), "VST: Third (Me)");
    EXPECT_EQ(identities.row_for("MakePrd3")->productName, "Third!");
    EXPECT_EQ(fx("MakePrd4"), "by heart");
    EXPECT_EQ(identities.row_for("MakePrd5")->productName, "Name Only");
    EXPECT_EQ(identities.row_for("MakePrd5")->ident, "") << "its name is no reason to guess";
    EXPECT_EQ(identities.row_for("MakePrd6"), nullptr);
}

TEST(PluginIdentities, TakeAClapOnlyWithItsSettings) {
    const char* const plug = "VST: Plug (Me) (8ch)";
    const char* const taken =
        "    MakePrd1 -> CLAP: Plug (Me)                                [--prefer-clap]\n";
    const char* const stays =
        "    MakePrd1 stays on VST: Plug (Me) (8ch): its settings cannot be carried to the CLAP "
        "build yet\n";
    const ScanEntry by_name = clap("c", "Plug (Me)", "other.clap");
    const ScanEntry a = clap("c", "A", "plug.clap"), b = clap("d", "B", "plug.clap");
    const struct {
        const char* what;
        std::vector<ScanEntry> claps;
        bool translates;
        const char* fx_name;
        const char* line;
    } cases[] = {
        {"by name", {by_name}, true, "CLAP: Plug (Me)", taken},
        {"by file", {clap("c", "Plug 2 (Me)", "PLUG.clap")}, true, "CLAP: Plug 2 (Me)", "clap]\n"},
        {"two in the file", {a, b}, true, plug, ""},
        {"no settings", {clap("c", "Plug (Me)", "")}, false, plug, stays},
        {"none", {clap("c", "Else (Me)", "else.clap")}, true, plug, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        SessionRun run;
        run.scan = {vst2("Prd1", "Plug (Me) (8ch)")};
        run.scan.insert(run.scan.end(), c.claps.begin(), c.claps.end());
        run.inserts = {insert("MakePrd1", ContainerKind::xml, 9),
                       insert("MakePrd1", ContainerKind::xml, 4)};
        run.prefer_clap = true;
        run.trial = [&](const PluginInsert& tried, const PluginTableRow& row) {
            EXPECT_EQ(tried.blockStart, 4U) << "the first of them";
            EXPECT_EQ(row.file, "Plug.dll");
            return c.translates;
        };
        const PluginIdentities identities = run.identities();
        EXPECT_EQ(identities.row_for("MakePrd1")->fxName, c.fx_name);
        EXPECT_TRUE(run.lines.ends_with(*c.line == '\0' ? "[VST2 id]\n" : c.line)) << run.lines;
        EXPECT_EQ(identities.findings().kept_from_clap.size(), c.translates ? 0U : 1U);
    }
}

TEST(ScanIndex, KnowsWhatIsInstalled) {
    const ScanIndex scan =
        indexed({vst2("Prd1", "A"), vst3("0123456789abcdef", "B"), clap("a.b", "C", "")});
    const std::string number = std::to_string(code_word("Prd1", 0));
    const struct {
        std::string ident;
        bool installed;
    } cases[] = {
        {number + "<whatever>", true},
        {"5{30313233343536373839616263646566}", true},
        {"5{30313233343536373839616263646566", true},
        {"5{30313233343536373839616263646567}", false},
        {"a.b", true},
        {"a.c", false},
        {"0{}", false},
        {"", true},
    };
    for (const auto& c : cases) EXPECT_EQ(scan.is_installed(c.ident), c.installed) << c.ident;
}

}  // namespace
}  // namespace tanrove
