// What a user teaches: chains that REAPER wrote, the line that each gives, the table of lines, and
// tables of parameter names.
#include "plugins/learned_plugins.hpp"

#include <gtest/gtest.h>

#include "base/formatted_text.hpp"
#include "plugins/parameter_names.hpp"
#include "support/byte_writer.hpp"
#include "support/fx_chain_text.hpp"
#include "support/real_sessions.hpp"

namespace tanrove {
namespace {

using namespace builder;

/// The line that a chain teaches for the code "MakePrd1"; behind it what is off, if anything.
std::string taught(const std::string& text) {
    const ReadChain chain = read_chain(text);
    if (chain.fault == ChainFault::no_plugin) return "no plug-in";
    if (chain.fault == ChainFault::unreadable_line) return "no line";
    std::string line = learned_line("MakePrd1", chain.plugin);
    line.pop_back();
    if (!is_settings_magic(chain.plugin.magic)) line += ", no magic";
    if (!chain.plugin.header) line += ", no pins";
    return line;
}

TEST(ReadChain, TeachesWhatRealChainsHold) {
    const std::string reafir = "MakePrd1 | VST: ReaFir (FFT EQ+Dynamics Processor) (Cockos) | ";
    const std::string reafir_ident = " | 1919247986<56535472656672726561666972202866> | 2 | 2 | ";
    const struct {
        const char* file;
        std::string line;
    } cases[] = {
        {"Default_Track_Chain.RfxChain", reafir + "reafir.vst.dylib" + reafir_ident + "1048576"},
        {"Ultraschall_5_Tracks.RfxChain", reafir + "reafir.vst.dylib" + reafir_ident + "1048576"},
        {"master_js_only.RfxChain", "no plug-in"},
        {"video_processor_only.RfxChain", "no plug-in"},
        {"soundboard_au_macos.RTrackTemplate",
         "MakePrd1 | VST: ReaComp (Cockos) | reacomp.vst.dylib | "
         "1919247213<5653547265636D726561636F6D700000> | 4 | 4 | 0"},
        {"soundboard_vst3i_win.RTrackTemplate",
         "MakePrd1 | VST3i: Soundboard (Ultraschall) (mono) | Soundboard.vst3 | "
         "2061786605{ABCDEF019182FAEB556C7472536E6462} | 2 | 4 | 1114111"},
        {"studiolink_vst2_win.RTrackTemplate",
         "MakePrd1 | VST: StudioLink (IT-Service Sebastian Reimers) | studio-link.dll | "
         "1769239410<5653546974737273747564696F6C696E> | 2 | 2 | 1048576"},
        {"studiolink_and_soundboard_win.RPP", reafir + "reafir.dll" + reafir_ident + "1048576"},
        {"soundboard_old_form_macos.RPP", reafir + "reafir.vst.dylib" + reafir_ident + "1048576"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        TANROVE_REAL_REAPER_TEXT(text, std::string("chains/") + c.file);
        EXPECT_EQ(taught(text), c.line);
    }
    // Header, state and tail as one stream, and an ident that ends behind its number.
    TANROVE_REAL_REAPER_TEXT(old_form, "chains/soundboard_old_form_macos.RPP");
    EXPECT_EQ(taught(old_form.substr(old_form.find("<VST \"VSTi: Soundboard"))),
              "MakePrd1 | VSTi: Soundboard (Ultraschall) | Soundboard.vst | 1399813474 | 2 | 4 | "
              "1048831");
}

TEST(ReadChain, ReadsTheHeaderWithEightOrFourByteMasksOrNotAtAll) {
    const std::uint32_t magic = 0xfeed5eee;
    const std::string line = "MakePrd1 | VST: A (B) | a b.dll | 1<2> | ";
    const std::string stereo = line + "2 | 2 | 0";
    const std::vector<std::uint32_t> mono = {1, magic, 1, 1, 0, 1, 1, 0, 9, 1, 77};
    const auto with = [&](std::size_t at, std::uint32_t word) {
        auto words = mono;
        words[at] = word;
        return words;
    };
    const struct {
        const char* what;
        std::string chain;
        std::string line;
    } cases[] = {
        {"mono", fx_chain_text(mono), line + "1 | 1 | 77"},
        {"no input", fx_chain_text({1, magic, 0, 1, 1, 0, 9, 0, 77}), line + "0 | 1 | 77"},
        {"short masks", fx_chain_text({1, 0xfeed5eef, 2, 1, 2, 1, 1, 9, 1, 77}),
         line + "2 | 1 | 77"},
        {"framed", fx_chain_text(mono, "FabF"), line + "1 | 1 | 77 | Default Setting"},
        {"framed later", fx_chain_text(mono, "12345678FabF"),
         line + "1 | 1 | 77 | Default Setting"},
        {"not framed", fx_chain_text(mono, "1234FabF"), line + "1 | 1 | 77"},
        {"no magic", fx_chain_text(with(1, 0xfeed5eed)), line + "1 | 1 | 77, no magic"},
        {"4 billion pins", fx_chain_text(with(2, 0xffffffff)), stereo + ", no pins"},
        {"65 pins", fx_chain_text(with(5, 65)), stereo + ", no pins"},
        {"no output", fx_chain_text(with(5, 0)), stereo + ", no pins"},
        {"too long", fx_chain_text(with(8, 0x1000001)), stereo + ", no pins"},
        {"as long as can be", fx_chain_text(with(8, 0x1000000)), line + "1 | 1 | 77"},
        {"word 2", fx_chain_text(with(9, 2)), stereo + ", no pins"},
        {"cut", fx_chain_text({1, magic, 1, 1, 0, 1, 1, 0, 9, 1}), stereo + ", no pins"},
        {"no state", "<VST a b 0 c 1<2> \"\"\n>\n",
         "MakePrd1 | a | b | 1<2> | 2 | 2 | 0, no magic, no pins"},
        {"a CLAP", "<CLAP \"CLAP: A (B)\" com.a \"\"\n>\n",
         "MakePrd1 | CLAP: A (B) |  | com.a | 2 | 2 | 0, no magic, no pins"},
        {"no ident", "<VST \"a\" b 0 \"\"\n>\n", "no line"},
        {"an open quote", "<VST \"a b 0 c 1<2>\n>\n", "no line"},
        {"nothing", "", "no plug-in"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(taught(c.chain), c.line);
    }
}

/// A row of the table in one line.
std::string shown(const PluginTableRow& row) {
    return row.code + ": " + row.productName + ", " + row.fxName + ", " + row.file + ", " +
           row.ident + ", " + formatted("%d %d %d", row.pinsIn, row.pinsOut, row.tailWord) + ", " +
           row.fabName;
}

TEST(LearnedPlugins, ALineIsARowAndTheLaterOfTwoCounts) {
    const struct {
        std::string line;
        std::string row;  ///< "": none
    } cases[] = {
        {"MakePrd1|VST3: A (B)|\ta.vst3 |1{2}", "MakePrd1: A, VST3: A (B), a.vst3, 1{2}, 2 2 0, "},
        {"MakePrd1x|||1|0|64|4294967295|P", "MakePrd1: MakePrd1, MakePrd1, , 1, 0 64 -1, P"},
        {"WaveShelSub1 | A (8ch) | | i | 65 | x", "WaveShelSub1: A, A (8ch), , i, 2 2 0, "},
        {"WaveShelSub1x|A||i", "WaveShel: A, A, , i, 2 2 0, "},
        {"FabFPrd1|A||i|2|2|0", "FabFPrd1: A, A, , i, 2 2 0, Default Setting"},
        {"  MakePrd1  |A||i", "MakePrd1: A, A, , i, 2 2 0, "},
        {"MakePr1  |A||i", "MakePr1 : A, A, , i, 2 2 0, "},
        {"MakePr1|A||i", ""},
        {"MakePrd1|A|", ""},
        {"MakePrd1|A||  |2", ""},
        {"#MakePrd1|A||i", ""},
    };
    for (const auto& c : cases) {
        const auto learned = read_learned_plugins(c.line + "\r\n");
        EXPECT_EQ(learned.rows.empty() ? "" : shown(learned.rows.begin()->second), c.row) << c.line;
    }
    const auto both = read_learned_plugins("MakePrd1|A||1\nMakePrd2|C||3\nMakePrd1|B||2");
    EXPECT_EQ(both.line_count, 3);
    EXPECT_EQ(both.rows.at("MakePrd1").ident, "2");
    const ChainPlugin odd = {.fx_name = "VST: A|B\t(C)", .file = "f", .ident = "i"};
    EXPECT_EQ(learned_line("MakePrd1", odd), "MakePrd1 | VST: A B (C) | f | i | 2 | 2 | 0\n");
}

TEST(ParameterNames, AreThoseOfTheBuildOrThoseThatAllBuildsShare) {
    ParameterNames names;
    EXPECT_EQ(names.add("plugin\tbuild\tx\t7\tname\n"
                        "VST: A (B)\t1{2}\t\t0\tGain\nVST: A (B)\t1{2}\t\t1\tMix\tmore\n"
                        "VST: A (B)\t1<2>\t\t0\tGain\nVST: A (B)\t1<2>\t\t1\tDry\n"
                        "VST: A (B)\t1<2>\t\t2\tDry\n"
                        "b.dll\t1\t\t1234567\tLong\nb.dll\t1\t\tx\tNone\nb.dll\t1\t\t3\n"
                        "b.dll\t1\t\t4\tOld\r\nb.dll\t1\t\t5\tOther"),
              3);
    EXPECT_EQ(names.add("b.dll\t1\t\t4\tNew\n"), 1);
    EXPECT_EQ(names.add("no tabs at all\n"), 0);
    names.finish();
    const auto told = [&](const char* fx_name, const char* file, const char* ident) {
        const ParameterTable* table = names.table_for(fx_name, file, ident);
        std::string text = table == nullptr ? "none" : "";
        if (table != nullptr) {
            for (const auto& [number, name] : table->names) {
                text += std::to_string(number) + name + (table->is_unique(name) ? "." : "* ");
            }
        }
        return text;
    };
    EXPECT_EQ(told("VST: A (B)", "b.dll", "1{2}"), "0Gain.1Mix.");
    EXPECT_EQ(told("VST: A (B)", "b.dll", "1<2>"), "0Gain.1Dry* 2Dry* ");
    EXPECT_EQ(told("VST: A (B)", "b.dll", "3"), "0Gain.");
    EXPECT_EQ(told("VST: X", "b.dll", "3"), "4New.5Other.");
    EXPECT_EQ(told("VST: X", "", ""), "none");
}

TEST(LearnedTexts, EndInAnAnswerWhereverTheyAreCut) {
    const std::string texts[] = {
        fx_chain_text({1, 0xfeed5eee, 1, 1, 0, 1, 1, 0, 9, 1, 77}, "FabF"),
        "MakePrd1 | VST3: A (B) | a.vst3 | 1{2} | 4 | 2 | 65535 | P\n",
        "VST: A (B)\t1{2}\t\t1\tMix\tmore\n",
    };
    for (const std::string& whole : texts) {
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            const std::size_t long_line = length % 16 == 0 ? 100000 : 0;
            const std::string text = whole.substr(0, length) + std::string(long_line, 'x') +
                                     std::string(length % 2, '\0') + whole.substr(length);
            EXPECT_FALSE(taught(text).empty());
            for (const auto& [code, row] : read_learned_plugins(text).rows) {
                EXPECT_GE(code.size(), 8U);
                EXPECT_LE(std::max(row.pinsIn, row.pinsOut), max_pins);
            }
            EXPECT_LE(ParameterNames().add(text), 1);
        }
    }
}

}  // namespace
}  // namespace tanrove
