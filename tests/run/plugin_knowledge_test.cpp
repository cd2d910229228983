// What a run learns of plug-ins from the files around it, and says of it; what --learn leaves
// behind; the list of wanted parameter tables.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "run/convert_session.hpp"
#include "run/learn_plugin.hpp"
#include "support/fx_chain_text.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

namespace fs = std::filesystem;
using namespace builder;

class PluginKnowledgeOfARun : public testing::Test {
protected:
    void SetUp() override {
        console_state() = {};
        console_state().console_sink = &silent;
        folder.enter();
        fs::create_directories("bin");
        SessionBuilder session;
        session.track({.name = "Vox",
                       .inserts = {{.code = "MakePrd1"},
                                   {.code = "MakePrd2"},
                                   {.code = "MakePrd3"},
                                   {.code = "MakePrd4"}}});
        session.plugin_name({.name = "Known By Name", .code = "MakePrd3"});
        ASSERT_TRUE(session.write("Song.ptx"));
        options.session_path = "Song.ptx";
        options.program_path = "bin/tanrove";
        options.overwrite = true;
    }
    void TearDown() override { console_state() = {}; }

    /// The console text of a conversion, from its beginning to the account.
    std::string found() {
        ConversionResult result;
        EXPECT_EQ(convert_session(options, &result, nullptr), 0);
        account = result.console_text;
        return account.substr(0, account.find("\n  Read: "));
    }

    /// Runs --learn; its console text is in `account`.
    std::int32_t learn(const std::string& chain, const std::string& signature) {
        account.clear();
        console_state().console_capture = &account;
        const std::int32_t code = learn_plugin(options.program_path, chain, signature);
        console_state().console_capture = nullptr;
        return code;
    }

    NullSink silent;
    TempFolder folder;
    RunOptions options;
    std::string account;
};

constexpr const char* list_missing = "plug-in list was not found on this computer";

TEST_F(PluginKnowledgeOfARun, IsToldInItsOrderInFrontOfTheAccount) {
    EXPECT_EQ(found(), "");
    EXPECT_NE(account.find(list_missing), std::string::npos);
    options.vstini_path = "no.ini";
    options.params_paths = {"no.tsv"};
    EXPECT_EQ(found(),
              "  --params no.tsv: nothing read\n  could not read plug-in cache: no.ini\n\n");

    ASSERT_TRUE(
        write_file_text("bin/tanrove-plugins.txt", "# mine\nMakePrd2 | VST: B | b | 1<2>\n"));
    ASSERT_TRUE(write_file_text("bin/tanrove-params.tsv", "VST: B\t1<2>\t\t0\tGain\n"));
    ASSERT_TRUE(write_file_text("bin/tanrove-params-local.tsv", "a\t1\t\t0\tA\nb\t1\t\t0\tB\n"));
    ASSERT_TRUE(write_file_text("reaper-vstplugins64.ini",
                                "[vstcache]\na.dll=0,1349674033,A (Me)\nb.dll=0,1349674034,B\n"
                                "known.vst3=0,5,Known By Name (You)\n"));
    options.params_paths.clear();
    options.dump_cache = true;
    EXPECT_EQ(found(),
              "  1 plug-in(s) learned from tanrove-plugins.txt\n\n"
              "  plug-in parameter names: 1 plug-in build(s) from bin/tanrove-params.tsv\n"
              "  plug-in parameter names: 2 plug-in build(s) from bin/tanrove-params-local.tsv\n"
              "  plug-in cache: 3 entries from ./reaper-vstplugins64.ini\n"
              "  --- plug-in cache dump ---\n"
              "    a.dll                                          VST: A (Me)\n"
              "      1349674033<56535450726431610000000000000000>\n"
              "    b.dll                                          VST: B\n"
              "      1349674034<56535450726432620000000000000000>\n"
              "    known.vst3                                     VST3: Known By Name (You)\n"
              "      5{565354000000056B6E6F776E20627920}\n"
              "  --- 3 entries ---\n\n"
              "    MakePrd1 -> VST: A (Me)                                    [VST2 id]\n"
              "    MakePrd3 -> VST3: Known By Name (You)                      "
              "[the name Pro Tools stores, VST3 class id unknown - marker only]\n");
    EXPECT_EQ(account.find(list_missing), std::string::npos);
}

TEST_F(PluginKnowledgeOfARun, TakesPartInTheNextConversionAndTheLaterLessonCounts) {
    const std::string table = "bin/tanrove-plugins.txt";
    const std::vector<std::uint32_t> header = {1, 0xfeed5eee, 1, 1, 0, 1, 1, 0, 9, 1, 77};
    ASSERT_TRUE(write_file_text(table, "# mine"));
    ASSERT_TRUE(write_file_text("one.RfxChain", fx_chain_text(header)));
    ASSERT_TRUE(write_file_text("two.RfxChain", fx_chain_text(header, "FabF", "3<4>")));
    ASSERT_TRUE(write_file_text("clap.RfxChain", "<CLAP \"CLAP: C (Me)\" com.c \"\"\n>\n"));
    EXPECT_EQ(learn("one.RfxChain", "MakePrd1"), 0);
    EXPECT_EQ(account,
              "\n  learned from one.RfxChain\n"
              "    display  VST: A (B)\n    file     a b.dll\n    ident    1<2>\n"
              "    pins     1 in, 1 out    tail word 77    chunk 9 bytes\n"
              "\n  appended to bin/tanrove-plugins.txt\n"
              "  The IDENTITY is now known: this plug-in will be inserted in the\n"
              "  right slot, in the right order, with its bypass state.\n"
              "  Its REAPER state does NOT use a container this build can synthesise,\n"
              "  so SETTINGS will not transfer: it goes in offline and labeled\n"
              "  rather than loading with values that would silently be wrong.\n");
    EXPECT_EQ(learn("two.RfxChain", "MakePrd1"), 0);
    EXPECT_NE(account.find("SETTINGS will transfer too"), std::string::npos);
    EXPECT_EQ(learn("clap.RfxChain", "Make|rd2"), 0);
    EXPECT_NE(account.find("How a CLAP keeps its state"), std::string::npos);
    EXPECT_EQ(file_text(table),
              "# mine\nMakePrd1 | VST: A (B) | a b.dll | 1<2> | 1 | 1 | 77\n"
              "MakePrd1 | VST: A (B) | a b.dll | 3<4> | 1 | 1 | 77 | Default Setting\n"
              "Make rd2 | CLAP: C (Me) |  | com.c | 2 | 2 | 0\n");
    ASSERT_TRUE(write_file_text("reaper-vstplugins64.ini", "a.dll=0,1349674033,A (Me)\n"));
    EXPECT_EQ(found(),
              "  3 plug-in(s) learned from tanrove-plugins.txt\n\n"
              "  plug-in cache: 1 entries from ./reaper-vstplugins64.ini\n"
              "    (nothing new matched)\n")
        << "what was taught is not looked for";

    const std::string before = file_text(table);
    ASSERT_TRUE(write_file_text("js.RfxChain", "<JS a \"\"\n>\n"));
    ASSERT_TRUE(write_file_text("cut.RfxChain", "<VST \"A\" b\n>\n"));
    ASSERT_TRUE(write_file_text("magic.RfxChain", "<VST a b 0 c 1<2>\n  AAAAAAAAAAAA\n>\n"));
    const struct {
        const char* path;
        const char* signature;
        const char* words;
    } refusals[] = {
        {"one.RfxChain", "MakePrd", "  the AAX signature must have at least 8 characters\n"},
        {"none.RfxChain", "MakePrd1", "  cannot open none.RfxChain\n"},
        {"js.RfxChain", "MakePrd1", "  js.RfxChain does not look like an .RfxChain\n"},
        {"cut.RfxChain", "MakePrd1", "  could not read the <VST line\n"},
        {"magic.RfxChain", "MakePrd1",
         "  header magic is 00000000, expected FEED5EEE/FEED5EEF - is this one plug-in?\n"},
    };
    for (const auto& c : refusals) {
        EXPECT_EQ(learn(c.path, c.signature), 1);
        EXPECT_EQ(account, c.words);
    }
    EXPECT_EQ(file_text(table), before);

    options.program_path = "nowhere/tanrove";
    EXPECT_EQ(learn("one.RfxChain", "MakePrd1"), 0) << "a folder of the user's own takes it";
    const std::string own = folder.path() + "/.local/share/tanrove/tanrove-plugins.txt";
    EXPECT_NE(account.find("\n  appended to " + own + "\n"), std::string::npos);
    options.program_path = "bin/tanrove";
    EXPECT_EQ(learn("two.RfxChain", "MakePrd2"), 0) << "and all that comes behind it";
    EXPECT_EQ(file_text(table), before);
    EXPECT_NE(found().find("  5 plug-in(s) learned from tanrove-plugins.txt\n"), std::string::npos);
    fs::remove(own);
    fs::create_directory(own);
    options.program_path = "nowhere/tanrove";
    EXPECT_EQ(learn("one.RfxChain", "MakePrd1"), 1);
    EXPECT_NE(account.find("  cannot write nowhere/tanrove-plugins.txt\n"), std::string::npos);
}

TEST_F(PluginKnowledgeOfARun, LeavesASampleOfEachPluginsSettingsInTheFolderForThem) {
    SessionBuilder session;
    session.track({.name = "Vox", .inserts = {{.code = "MakePrd1"}, {.code = "../a/Prd"}}});
    session.track({.name = "Bass", .inserts = {{.code = "MakePrd1"}, {.code = "MakePrd2"}}});
    ASSERT_TRUE(session.write("Song.ptx"));
    ASSERT_TRUE(write_file_text("bin/tanrove-plugins.txt",
                                "MakePrd1 | VST: A (Me) | a | 1<2>\n../a/Prd | B | b | 1{2}\n"));
    const auto files = [] {
        std::map<std::string, std::string> texts;
        for (const auto& entry : fs::directory_iterator("corpus")) {
            texts[entry.path().filename().string()] = file_text(entry.path().string());
        }
        return texts;
    };
    options.corpus_dir = "corpus";
    testing::internal::CaptureStderr();
    found();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "--dump-corpus: cannot write in corpus (does the directory exist?)\n");
    fs::create_directories("corpus");
    options.check_only = true;  // the samples are asked for, as a list of wanted tables is
    found();
    const auto samples = files();
    options.check_only = false;
    std::string names;
    for (const auto& [name, text] : samples) names += name + "\n";
    EXPECT_EQ(names,
              ".._a_Prd.6bb32320138aaefc.block\n.._a_Prd.6bb32320138aaefc.chunk\n"
              "MakePrd1.d26533cc3449ad67.block\nMakePrd1.d26533cc3449ad67.chunk\nindex.tsv\n");
    EXPECT_EQ(samples.at("MakePrd1.d26533cc3449ad67.block").substr(73),
              samples.at("MakePrd1.d26533cc3449ad67.chunk"));
    EXPECT_EQ(samples.at("index.tsv"),
              "name\tsig\tproduct\tident\tkind\tblocklen\tdocoff\tdoclen\tchunklen\tsession\n"
              "MakePrd1.d26533cc3449ad67.\tMakePrd1\tA\t1<2>\t13\t137\t73\t64\t64\tSong.ptx\n"
              ".._a_Prd.6bb32320138aaefc.\t../a/Prd\tB\t1{2}\t13\t137\t73\t64\t80\tSong.ptx\n");
    found();
    EXPECT_EQ(files(), samples) << "what is there already is known";
}

TEST_F(PluginKnowledgeOfARun, WantsTablesInAFileOfItsOwn) {
    options.check_only = true;
    options.want_params_path = "want.txt";
    found();
    EXPECT_TRUE(fs::exists("want.txt")) << "an empty list is an answer, in a check too";
    const std::string session = file_text("Song.ptx");
    options.check_only = false;
    for (const std::string path : {"./Song.ptx", "Song.rpp", "nowhere/want.txt"}) {
        options.want_params_path = path;
        found();
        EXPECT_NE(account.find("\n  could not write " + path + "\n"), std::string::npos);
    }
    EXPECT_EQ(file_text("Song.ptx"), session);
    EXPECT_FALSE(file_text("Song.rpp").empty());
}

}  // namespace
}  // namespace tanrove
