// Paths of a run: the session among the words of the command line, the audio folders beside it, and
// a name for the project that is not taken.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/paths.hpp"
#include "run/console.hpp"
#include "run/media_folders.hpp"
#include "run/output_path.hpp"
#include "run/session_path.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

using namespace builder;

TEST(FindSessionPath, TheLongestRunWinsAndOfEquallyLongOnesTheLeftOne) {
    TempFolder folder;
    folder.enter();
    for (const char* name : {"a", "a b", "c d", "My Song.ptx", "e"}) {
        ASSERT_TRUE(write_file_text(name, "x"));
    }
    std::filesystem::create_directory("folder one");
    const struct {
        std::vector<std::string> pieces;
        const char* path;
        std::vector<std::string> others;
    } cases[] = {
        {{"My", "Song.ptx"}, "My Song.ptx", {}},
        {{"a", "b"}, "a b", {}},
        {{"a", "b", "c", "d"}, "a b", {"c", "d"}},
        {{"z", "c", "d", "a", "b"}, "c d", {"z", "a", "b"}},
        {{"z", "e", "a"}, "e", {"z", "a"}},
        {{"folder", "one", "e"}, "e", {"folder", "one"}},
        {{"no", "such", "file"}, "no such file", {}},
        {{}, "", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const SessionWords words = find_session_path(c.pieces);
        EXPECT_EQ(words.path, c.path);
        EXPECT_EQ(words.others, c.others);
    }
}

TEST(FindSessionPath, AHugeCommandLineStillFindsANameOfManyWords) {
    TempFolder folder;
    folder.enter();
    ASSERT_TRUE(write_file_text("one", "x"));
    std::vector<std::string> pieces(1000, "y");
    pieces[100] = "one";
    EXPECT_EQ(find_session_path(pieces).path, "one");
    std::string name = "y";
    for (std::size_t word = 1; word < max_short_run; ++word) name += " y";
    name.replace(0, 1, "one");
    ASSERT_TRUE(write_file_text(name, "x"));
    EXPECT_EQ(find_session_path(pieces).path, name);
}

TEST(MediaFolders, FollowTheOptionOrElseTheSessionAndStayReadableForTheProject) {
    TempFolder folder;
    folder.enter();
    const std::string here = std::filesystem::current_path().string();
    const struct {
        bool given;
        std::string audio_dir;
        std::string session;
        std::string media_dir;
        std::string media_parent;
        std::string session_folder;
        std::string output = {};
    } cases[] = {
        {false, "Audio Files", "/s/My Song.ptx", "/s/Audio Files", "/s", "/s"},
        {false, "Audio Files", "My Song.ptx", "./Audio Files", ".", "."},
        {false, "", "x.ptx", "./Audio Files", ".", ".", here + "/y.rpp"},
        {false, "", "x.ptx", "./Audio Files", ".", ".", "sub/../y.rpp"},
        {false, "", "x.ptx", here + "/Audio Files", here, here, "sub/y.rpp"},
        {false, "", "./x.ptx", here + "/Audio Files", here, here},
        {false, "", "sub/../a/x.ptx", here + "/a/Audio Files", here + "/a", here + "/a"},
        {false, "left over", "D:\\s\\x.ptx", "D:\\s/Audio Files", "D:\\s", "D:\\s"},
        {true, "/a/b//\\", "/s/x.ptx", "/a/b", "/a", "/s"},
        {true, "takes/", "/s/x.ptx", here + "/takes", here, "/s"},
        {true, "takes", "x.ptx", here + "/takes", here, "."},
        {true, "///", "/s/x.ptx", "/", "", "/s"},
        {true, "", "/s/x.ptx", here, folder_of(here), "/s"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.audio_dir << ' ' << c.session);
        RunOptions options;
        options.audio_dir = c.audio_dir;
        options.audio_dir_given = c.given;
        options.session_path = c.session;
        options.output_path = c.output;
        EXPECT_EQ(media_folders(options).session_folder, c.session_folder);
        EXPECT_EQ(media_folders(options).media_dir, c.media_dir);
        EXPECT_EQ(media_folders(options).media_parent, c.media_parent);
    }
}

TEST(OutputPath, AProjectIsNamedForItsSessionUnlessTheUserNamesIt) {
    RunOptions options;
    options.session_path = "a.b/c";
    EXPECT_EQ(project_path(options), "a.b/c.rpp");
    options.session_path = "a.b/c.d.ptx";
    EXPECT_EQ(project_path(options), "a.b/c.d.rpp");
    options.output_path = "elsewhere";
    EXPECT_EQ(project_path(options), "elsewhere");
    EXPECT_EQ(second_pass_path("a.b/elsewhere"), "a.b/elsewhere-2nd.rpp");
    EXPECT_EQ(second_pass_path("x.y.rpp"), "x.y-2nd.rpp");
}

TEST(OutputPath, FindsAFreeNameAndSaysSoUnlessItMayReplace) {
    TempFolder folder;
    folder.enter();
    for (const char* name : {"x.rpp", "x (1).rpp", "x (3).rpp", "bare"}) {
        ASSERT_TRUE(write_file_text(name, "taken"));
    }
    std::string said;
    NullSink silent;
    console_state().console_sink = &silent;
    console_state().console_capture = &said;
    RunOptions options;
    options.session_path = "x.ptx";
    EXPECT_EQ(choose_output_path(options), "x (2).rpp");
    EXPECT_EQ(said,
              "\n  x.rpp already exists - writing x (2).rpp instead\n"
              "  (--overwrite to replace it)\n");
    options.output_path = "bare";
    EXPECT_EQ(choose_output_path(options), "bare (1)");
    std::filesystem::create_directory("folder.rpp");
    options.session_path = "folder.ptx";
    options.output_path.clear();
    EXPECT_EQ(choose_output_path(options), "folder (1).rpp");
    said.clear();
    options.output_path = "folder.rpp";
    EXPECT_EQ(choose_output_path(options), "folder.rpp") << "named, so refused when it is opened";
    options.output_path = "/dev/null";
    EXPECT_EQ(choose_output_path(options), "/dev/null");
    options.output_path = "free.rpp";
    EXPECT_EQ(choose_output_path(options), "free.rpp");
    options.output_path = "x.rpp";
    options.overwrite = true;
    EXPECT_EQ(choose_output_path(options), "x.rpp");
    options.overwrite = false;
    options.check_only = true;
    EXPECT_EQ(choose_output_path(options), "x.rpp");
    EXPECT_EQ(said, "");
    console_state() = {};
}

}  // namespace
}  // namespace tanrove
