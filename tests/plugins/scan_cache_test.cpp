// REAPER's lists of plug-ins: lines of every kind, real lists, and where they are looked for.
#include "plugins/scan_cache.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/text_lines.hpp"
#include "plugins/product_names.hpp"
#include "plugins/rfx_chain.hpp"
#include "support/real_sessions.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

using namespace builder;

/// An entry as a project would name it, with its file; "-" where the line gives none.
std::string as_named(const std::vector<ScanEntry>& entries) {
    std::string lines;
    for (const ScanEntry& entry : entries) {
        const ReaperName name = reaper_name(entry);
        lines += lines.empty() ? "" : " and ";
        lines += entry.file + ": " + name.fx_name + " " + name.ident;
    }
    return lines.empty() ? "-" : lines;
}

TEST(VstList, ALineGivesTheNameThatAProjectBears) {
    const std::string cls = "5653544D6462316D6F646F2062617373";
    const struct {
        std::string line;
        std::string named;
    } cases[] = {
        {"reaeq.dll=00,1919247729,ReaEQ (Cockos)",
         "reaeq.dll: VST: ReaEQ (Cockos) 1919247729<56535472656571726561657100000000>"},
        {"a.dll=00,7,Synth (Me) (4 out)!!!VSTi\r\r",
         "a.dll: VSTi: Synth (Me) (4 out) 7<5653540000000773796E746800000000>"},
        {"a.VST3=00,7,One, Two (Me, Inc.)",
         "a.VST3: VST3: One, Two (Me, Inc.) 7{565354000000076F6E652C2074776F00}"},
        {"a.vst3=00,7{" + cls + "}},X", "a.vst3: VST3: X 7{" + cls + "}"},
        {"a.vst3=00,7{" + cls.substr(1) + ",X",
         "a.vst3: VST3: X 7{56535400000007780000000000000000}"},
        {"sh.vst3<12=00,12{" + cls + ",X (W)!!!VSTi", "sh.vst3: VST3i: X (W) 12{" + cls + "}"},
        {"a.dll<" + cls + ">=00,7,X", "a.dll: VST3: X 7{" + cls + "}"},
        {"a.dll<1x=00,7,X", "a.dll<1x: VST: X 7<56535400000007780000000000000000>"},
        {".vst3=00,7,!!!VSTi", ".vst3: VST: !!!VSTi 7<56535400000007212121767374690000>"},
        {"sh.vst3=00,0,<SHELL>", "-"},
        {"no plug-in.dll=00", "-"},
        {"a.dll=00,7", "-"},
        {"a.dll=00,7,", "-"},
        {"a.dll=00,4294967296,X", "-"},
        {"[a]=00,7,X", "-"},
        {";a=00,7,X", "-"},
        {"a.dll 00,7,X", "-"},
        {"565354=352029 - DUNE3.vst3/IPluginCompatibility", "-"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        EXPECT_EQ(as_named(read_vst_list(c.line)), c.named);
    }
}

TEST(VstList, LongLinesAndZeroBytesEndWhereALineReaderEnds) {
    const std::string long_name(max_scan_line_bytes, 'x');
    EXPECT_EQ(read_vst_list("a=0,7," + long_name + ",\nb=0,8,B\n").size(), 2U);
    EXPECT_EQ(read_vst_list(long_name + "a=0,7,A\n").size(), 1U) << "the rest of a long line";
    const auto cut = read_vst_list(std::string("a=0,7,A\0B\nb=0,8,B\0", 18));
    ASSERT_EQ(cut.size(), 2U);
    EXPECT_EQ(cut[0].name, "A");
}

TEST(ClapList, HasASectionAFile) {
    const std::string text =
        ";[no section]\n[one.clap]\n_=00\ncom.one=1|One (Me)\n=1|None\ncom.bad=One\n"
        "com.empty=1|\n[two\ncom.two=2|Two";
    EXPECT_EQ(as_named(read_clap_list(text)),
              "one.clap: CLAPi: One (Me) com.one and two: CLAP: Two com.two");
}

TEST(ProductNames, LoseChannelLayoutsFirst) {
    const struct {
        const char* name;
        const char* shown;  // short name | without vendor | maker
    } cases[] = {
        {"ReaFir (FFT EQ+Dynamics Processor) (Cockos)",
         "ReaFir (FFT EQ+Dynamics Processor)|ReaFir|Cockos"},
        {"ReaStream (Cockos) (8ch)", "ReaStream|ReaStream|Cockos"},
        {"Surge XT (Surge Synth Team) (2->6ch)", "Surge XT|Surge XT|Surge Synth Team"},
        {"DSK (DSK Music) (stereo) (32 out) (mono)", "DSK|DSK|DSK Music"},
        {"Reverb (2->ch)", "Reverb|Reverb|2->ch"},
        {"Plain", "Plain|Plain|"},
        {"(mono)", "(mono)|(mono)|"},
    };
    for (const auto& c : cases) {
        const std::string name = c.name;
        EXPECT_EQ(std::string(short_name(name)) + "|" + std::string(without_vendor(name)) + "|" +
                      std::string(maker_of(name)),
                  c.shown);
    }
}

TEST(ScanPlaces, AreTriedInTheirOrderAndTheFirstWithAPluginIsTaken) {
    const ScanPlaces places = {"given", "s", "p", "A", "H"};
    const auto candidates = vst_list_candidates(places);
    ASSERT_EQ(candidates.size(), 1U + 4U * 9U);
    const std::string first_name = "reaper-vstplugins_arm64.ini";
    const std::vector<std::string> folders = {"s/",
                                              "p/",
                                              "./",
                                              "A/REAPER/",
                                              "A/Library/Application Support/REAPER/",
                                              "A/.config/REAPER/",
                                              "H/REAPER/"};
    EXPECT_EQ(candidates[0], "given");
    for (std::size_t i = 0; i < folders.size(); ++i) {
        EXPECT_EQ(candidates[i + 1], folders[i] + first_name);
    }
    EXPECT_EQ(candidates[10], "s/reaper-vstplugins_aarch64.ini");
    EXPECT_EQ(vst_list_candidates({}).size(), 4U);

    TempFolder folder;
    folder.enter();
    std::filesystem::create_directories("home/.config/REAPER");
    ASSERT_TRUE(write_file_text("empty.ini", "[vstcache]\n"));
    ASSERT_TRUE(
        write_file_text("home/.config/REAPER/reaper-vstplugins64.ini", "a=0,7,A\nb=0,8,B\n"));
    ASSERT_TRUE(write_file_text("home/.config/REAPER/reaper-clap-win64.ini", "[x]\n"));
    ASSERT_TRUE(
        write_file_text("home/.config/REAPER/reaper-clap-linux-x86_64.ini", "[c]\nid=0|C\n"));
    ASSERT_TRUE(write_file_text("reaper-clap-win64.ini", "[c]\nother=0|Other\n"));
    const ScanCache cache = load_scan_cache({.given_path = "empty.ini", .home = "home"});
    EXPECT_EQ(cache.path, "home/.config/REAPER/reaper-vstplugins64.ini");
    ASSERT_EQ(cache.entries.size(), 3U);
    EXPECT_EQ(cache.entries[2].clapId, "id") << "the CLAP list beside the VST list";
    EXPECT_TRUE(load_scan_cache({.given_path = "/"}).entries.empty()) << "a folder is no list";
}

TEST(RealScanLists, ParseToWhatTheyHold) {
    const struct {
        const char* file;
        std::size_t entries, instruments, classes, of_shells, vst3_without_class;
    } cases[] = {
        {"scan/macos-arm64.ini", 23, 3, 0, 0, 0},
        {"scan/macos-x86_64.ini", 29, 3, 0, 0, 4},
        {"scan/win64-waves-shells-compat.ini", 245, 31, 214, 17, 0},
        {"scan/reaper-vstshells64.ini", 0, 0, 0, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        TANROVE_REAL_REAPER_TEXT(text, c.file);
        const auto entries = read_vst_list(text);
        const auto count = [&](auto test) {
            return static_cast<std::size_t>(std::ranges::count_if(entries, test));
        };
        EXPECT_EQ(entries.size(), c.entries);
        EXPECT_EQ(count([](const auto& e) { return e.instrument; }), c.instruments);
        EXPECT_EQ(count([](const auto& e) { return e.classId.size() == 32; }), c.classes);
        EXPECT_EQ(count([](const auto& e) { return e.file.starts_with("WaveShell"); }),
                  c.of_shells);
        EXPECT_EQ(count([](const auto& e) { return e.isVst3 && e.classId.empty(); }),
                  c.vst3_without_class);
    }
    TANROVE_REAL_REAPER_TEXT(claps, "scan/reaper-clap-win64.ini");
    EXPECT_EQ(as_named(read_clap_list(claps)),
              "Dexed.clap: CLAPi: Dexed (Digital Suburban) com.digital-suburban.dexed and "
              "Surge XT Effects.clap: CLAP: Surge XT Effects (Surge Synth Team) "
              "org.surge-synth-team.surge-xt-fx and "
              "Surge XT.clap: CLAPi: Surge XT (Surge Synth Team) org.surge-synth-team.surge-xt and "
              "Vital.clap: CLAPi: Vital (Vital Audio) audio.vital.synth");
}

// The chains come from the machines of the lists: what REAPER wrote into them is what we would.
TEST(RealScanLists, NameTheirVst2sAsRealChainsDo) {
    TANROVE_REAL_REAPER_TEXT(list, "scan/macos-x86_64.ini");
    std::string chains;
    for (const char* file :
         {"Default_Track_Chain.RfxChain", "Ultraschall_5_Tracks.RfxChain",
          "soundboard_au_macos.RTrackTemplate", "soundboard_vst3i_win.RTrackTemplate",
          "studiolink_vst2_win.RTrackTemplate", "studiolink_and_soundboard_win.RPP"}) {
        TANROVE_REAL_REAPER_TEXT(chain, std::string("chains/") + file);
        chains += chain;
    }
    std::size_t written = 0;
    for (const ScanEntry& entry : read_vst_list(list)) {
        const ReaperName name = reaper_name(entry);
        const std::size_t at = chains.find("<VST \"" + name.fx_name + "\" ");
        if (at == std::string::npos) continue;
        ++written;
        const std::string line = chains.substr(at, chains.find('\n', at) - at);
        EXPECT_NE(line.find("\" " + entry.file + " 0 "), std::string::npos) << line;
        EXPECT_NE(line.find(" " + name.ident + " "), std::string::npos) << line;
    }
    EXPECT_EQ(written, 4U) << "ReaComp, ReaEQ, ReaFir, ReaVerbate";
    // On whatever machine: the class is made of the number and the name alone.
    std::size_t classes = 0;
    for (std::size_t at = 0; (at = chains.find("<VST \"VST: ", at)) != std::string::npos; ++at) {
        const ChainPlugin plugin = read_chain(std::string_view(chains).substr(at)).plugin;
        if (is_number(plugin.ident)) continue;  // an older REAPER wrote none
        const std::uint32_t id = leading_number(plugin.ident);
        const std::string made_up = made_up_class(id, short_name(behind_kind(plugin.fx_name)));
        EXPECT_TRUE(plugin.ident.ends_with("<" + made_up + ">")) << plugin.fx_name;
        ++classes;
    }
    EXPECT_GE(classes, 20U);
}

}  // namespace
}  // namespace tanrove
