// A disk that fills up at any byte, and a session that changes while it is read: what stands under
// a name at the end is whole, nothing lies beside it, and the run says what happened.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <thread>

#include "support/child_process.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

namespace fs = std::filesystem;
using namespace builder;

/// Every file below the working folder.
std::map<std::string, std::string> all_files() {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(".")) {
        const std::string path = entry.path().generic_string();
        if (entry.is_regular_file()) files[path] = file_text(path);
    }
    return files;
}

struct Run {
    int code = 0;
    std::string said;
};

/// Runs the program with room for files of `most_bytes`. Its words, which have to fit into a pipe,
/// are none of them.
Run run_with_room(rlim_t most_bytes, std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "tanrove");
    arguments.push_back(nullptr);
    int words[2];
    if (pipe(words) != 0) return {};
    Run run;
    run.code = in_child([&] {
        dup2(words[1], STDOUT_FILENO);
        dup2(words[1], STDERR_FILENO);
        const rlimit limit = {.rlim_cur = most_bytes, .rlim_max = most_bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
        return execv(TANROVE_PROGRAM, const_cast<char* const*>(arguments.data()));
    });
    close(words[1]);
    char bytes[4096];
    for (ssize_t n = 0; (n = read(words[0], bytes, sizeof bytes)) > 0;)
        run.said.append(bytes, static_cast<std::size_t>(n));
    close(words[0]);
    return run;
}

TEST(DiskFaults, ADiskThatFillsAtAnyByteLeavesOnlyWholeFiles) {
    TempFolder folder;
    folder.enter();
    SessionBuilder session;
    TrackSpec track{.name = "Voice",
                    .inserts = {{.code = "MakePrd1"}},
                    .clips = {{.region = "Voice", .length = 48000}}};
    track.inserts[0].lanes = {{.name = "Drive", .id = "drive", .points = {{0, 0}}}};
    session.audio_file({"Voice.wav", 48000, 0}).track(track);
    ASSERT_TRUE(session.write("Song.ptx"));
    ASSERT_TRUE(write_file_text("tanrove-plugins.txt", "MakePrd1 | VST: Maker (Me) | a | 1<2>\n"));
    fs::create_directory("corpus");
    const std::vector<const char*> arguments = {"Song.ptx",     "--overwrite",   "--report",
                                                "--usage-json", "usage.json",    "--want-params",
                                                "wanted",       "--dump-corpus", "corpus"};
    const auto before = all_files();
    ASSERT_EQ(run_with_room(RLIM_INFINITY, arguments).code, 0);
    const auto whole = all_files();
    ASSERT_GE(whole.size(), before.size() + 4) << "project, report, summary, wanted, corpus";
    std::size_t longest = 0;
    for (const auto& [path, text] : whole)
        if (!before.contains(path)) longest = std::max(longest, text.size());

    for (std::size_t room = 0; room <= longest; room += room < 64 ? 7 : 97) {
        SCOPED_TRACE(testing::Message() << "room for files of " << room << " bytes");
        for (const auto& [path, text] : whole) {
            if (!before.contains(path)) fs::remove(path);
        }
        const auto [code, said] = run_with_room(room, arguments);
        const bool has_project = whole.at("./Song.rpp").size() <= room;
        EXPECT_EQ(code, has_project ? 0 : 1);
        const auto left = all_files();
        for (const auto& [path, text] : left) {
            const auto same = whole.find(path);
            ASSERT_NE(same, whole.end()) << path << " lies about";
            if (path == "./usage.json" && !has_project) {
                EXPECT_NE(text.find("\"result\":\"failed\""), std::string::npos);
                EXPECT_TRUE(text.ends_with("}\n")) << text;
            } else {
                EXPECT_TRUE(text == same->second) << path << " is torn";
            }
        }
        for (const auto& [path, text] : whole) {
            if (left.contains(path) || !has_project) continue;
            EXPECT_NE(said.find("ould not write"), std::string::npos) << path << "\n" << said;
        }
        const bool told = said.find("\nCould not write Song.rpp\n") != std::string::npos;
        EXPECT_EQ(told, !has_project) << said;
    }
}

TEST(DiskFaults, ASessionThatChangesWhileItIsReadGivesAWholeProjectOrASentence) {
    TempFolder folder;
    folder.enter();
    SessionBuilder session;
    for (int t = 0; t < 200; ++t) session.track({.name = "Track " + std::to_string(t)});
    ASSERT_TRUE(session.write("Song.ptx"));
    const std::string whole = file_text("Song.ptx");
    std::atomic<bool> done = false;
    std::thread saving([&] {
        for (std::size_t turn = 1; !done; ++turn) {
            fs::resize_file("Song.ptx", whole.size() * (turn * 7 % 16) / 16);
            static_cast<void>(write_file_text("Song.ptx", whole));
        }
    });
    constexpr int runs = 40;
    for (int i = 0; i < runs; ++i) {
        const auto [code, said] = run_with_room(RLIM_INFINITY, {"Song.ptx", "--overwrite"});
        ASSERT_TRUE(code == 0 || code == 1) << code;
        EXPECT_FALSE(said.empty());
        const std::string project = file_text("Song.rpp");
        EXPECT_TRUE(code == 1 || project.ends_with("\n>\n"));
        fs::remove("Song.rpp");
        EXPECT_LE(folder.file_count(), 1U) << "something lies about";
    }
    done = true;
    saving.join();
}

}  // namespace
}  // namespace tanrove
