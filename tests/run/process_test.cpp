// The program as a process: whatever ends a run, or is missing around it, the project under its
// name is the former one or the whole new one, and nothing lies beside it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <csignal>
#include <filesystem>
#include <functional>
#include <new>

#include "base/whole_file.hpp"
#include "run/process_guard.hpp"
#include "run/run_driver.hpp"
#include "support/child_process.hpp"
#include "support/fx_chain_text.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

namespace fs = std::filesystem;
using namespace builder;

constexpr const char* out_path = "words/out";
constexpr const char* err_path = "words/err";

void put_descriptor(int number, const char* path) {
    const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(file, number);
    close(file);
}

class Process : public testing::Test {
protected:
    Process() {
        folder_.enter();
        setenv("XDG_DATA_HOME", "/dev/null", 1);  // nor is a lesson kept in the user's own folder
        fs::create_directory("words");
        const ClipSpec clip{.region = "Voice", .length = 48000};
        SessionBuilder session;
        session.audio_file({"Voice.wav", 48000, 0}).track({.name = "Voice", .clips = {clip}});
        EXPECT_TRUE(session.write("Song.ptx"));
        EXPECT_EQ(run({"Song.ptx"}), 0);
        whole_ = file_text("Song.rpp");
        fs::remove("Song.rpp");
    }

    /// Runs the program in this folder behind `prepare`; its words are in `out_path` and
    /// `err_path`.
    static int run(std::vector<const char*> arguments, const std::function<void()>& prepare = {}) {
        arguments.insert(arguments.begin(), "./tanrove");  // what is taught lies beside it: here
        arguments.push_back(nullptr);
        return in_child([&] {
            put_descriptor(STDOUT_FILENO, out_path);
            put_descriptor(STDERR_FILENO, err_path);
            if (prepare) prepare();
            return execv(TANROVE_PROGRAM, const_cast<char* const*>(arguments.data()));
        });
    }

    /// What is under the project's name: "former", "new", "none" or "torn".
    std::string project() const {
        if (!fs::exists("Song.rpp")) return "none";
        const std::string text = file_text("Song.rpp");
        return text == whole_ ? "new" : text == "former" ? text : "torn";
    }

    TempFolder folder_;
    std::string whole_;
};

/// Does its worst when the stage of this number, from 0, is told.
class FatalStage : public tanrovegui::Progress {
public:
    FatalStage(int fatal, std::function<void()> worst) : left_(fatal), worst_(std::move(worst)) {}
    bool stage(int /*index*/, int /*total*/, const char* /*text*/) override {
        if (left_-- == 0) worst_();
        return true;
    }

private:
    int left_;
    std::function<void()> worst_;
};

TEST_F(Process, TheUsageSummaryNeverTakesThePlaceOfAnotherFileNorTheRunsResult) {
    const std::string session = file_text("Song.ptx");
    ASSERT_TRUE(write_file_text("Broken.ptx", "no session"));
    const struct {
        const char* session;
        const char* summary;
        int code;
        const char* begins;  ///< how the summary begins; empty: it could not be written
    } rows[] = {
        {"Song.ptx", "usage.json", 0,
         R"({"schema":"vorlane-usage 1","converter":"1.0.2","build":308,"result":"converted",)"},
        {"Broken.ptx", "usage.json", 1,
         R"({"schema":"vorlane-usage 1","converter":"1.0.2","build":308,"result":"failed",)"
         R"("session":{},"plugins":[],"not_converted":[],"warnings":[]})"},
        {"Song.ptx", "Song.ptx", 0, ""},
        {"Song.ptx", "Song.rpp", 0, ""},
        {"Song.ptx", "words", 0, ""},
        {"Song.ptx", "nowhere/usage.json", 0, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.session << " to " << row.summary);
        EXPECT_EQ(run({row.session, "--overwrite", "--usage-json", row.summary}), row.code);
        const bool refused =
            file_text(out_path).find("could not write the usage summary file") != std::string::npos;
        EXPECT_EQ(refused, *row.begins == '\0');
        EXPECT_TRUE(refused || file_text(row.summary).starts_with(row.begins));
        EXPECT_EQ(file_text("Song.ptx"), session);
        EXPECT_EQ(project(), "new") << "that of the first run stays where a session is refused";
    }
    fs::remove("usage.json");
    EXPECT_EQ(run({"Song.ptx", "--check", "--usage-json", "usage.json"}), 0);
    EXPECT_FALSE(fs::exists("usage.json"));
}

/// What stands in the place of a file so that it cannot be written.
enum class Obstacle : std::uint8_t { full_disk, folder, read_only };

void put_in_place(Obstacle obstacle, const std::string& path) {
    fs::remove_all(path);
    if (obstacle == Obstacle::full_disk) fs::create_symlink("/dev/full", path);
    if (obstacle == Obstacle::folder) fs::create_directory(path);
    if (obstacle != Obstacle::read_only) return;
    ASSERT_TRUE(write_file_text(path, "former"));
    fs::permissions(path, fs::perms::owner_read | fs::perms::others_read);
}

std::size_t count_of(const std::string& text, const std::string& words) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(words, at)) != std::string::npos; ++at) ++count;
    return count;
}

TEST_F(Process, AFileThatCannotBeWrittenIsToldInOneLineAndHarmsNoOther) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    SessionBuilder session;
    TrackSpec track{.name = "Voice", .inserts = {{.code = "MakePrd1"}}};
    track.inserts[0].lanes = {{.name = "Drive", .id = "drive", .points = {{0, 0}}}};
    ASSERT_TRUE(session.track(track).write("Song.ptx"));
    ASSERT_TRUE(write_file_text("one.RfxChain",
                                fx_chain_text({1, 0xfeed5eee, 1, 1, 0, 1, 1, 0, 9, 1, 77})));
    const std::string taught = "MakePrd1 | VST: Maker (Me) | a | 1<2>\n";
    const struct {
        std::vector<const char*> arguments;
        const char* file;
        const char* words;
        int code = 0;
    } cases[] = {
        {{"--report"},
         "Song-vorlane-report.txt",
         "\n  could not write report: Song-vorlane-report.txt\n"},
        {{"--usage-json", "usage"}, "usage", "\n  could not write the usage summary file\n"},
        {{"--want-params", "wanted"}, "wanted", "\n  could not write wanted\n"},
        {{"--dump-corpus", "corpus"},
         "corpus/index.tsv",
         "--dump-corpus: cannot write in corpus (does the directory exist?)\n"},
        {{"--learn", "one.RfxChain", "MakePrd1"},
         "tanrove-plugins.txt",
         "\n  cannot write ./tanrove-plugins.txt\n",
         1},
    };
    const auto as_nobody = [] {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(99);  // root may write what none may
    };
    for (const auto obstacle : {Obstacle::full_disk, Obstacle::folder, Obstacle::read_only}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << c.file << static_cast<int>(obstacle));
            fs::remove_all("tanrove-plugins.txt");
            ASSERT_TRUE(write_file_text("tanrove-plugins.txt", taught));
            ASSERT_EQ(run({"Song.ptx", "--overwrite"}), 0);
            whole_ = file_text("Song.rpp");
            ASSERT_NE(whole_.find("VST: Maker (Me)"), std::string::npos);
            fs::remove_all("corpus");
            fs::create_directory("corpus");
            for (const char* folder : {".", "corpus"}) fs::permissions(folder, fs::perms::all);
            fs::permissions("Song.rpp", fs::perms::all);
            put_in_place(obstacle, c.file);
            std::vector<const char*> arguments = {"Song.ptx", "--overwrite"};
            arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
            EXPECT_EQ(run(arguments, as_nobody), c.code);
            const std::string said = "\n" + file_text(out_path) + file_text(err_path);
            EXPECT_EQ(count_of(said, c.words), 1U) << said;
            EXPECT_EQ(count_of(said, "could not write") + count_of(said, "cannot write"), 1U);
            EXPECT_EQ(project(), "new");
            EXPECT_FALSE(obstacle == Obstacle::read_only && file_text(c.file) != "former");
            fs::remove_all(c.file);
            for (const auto& left : fs::recursive_directory_iterator(".")) {
                EXPECT_NE(left.path().extension(), temporary_suffix) << left.path();
            }
        }
    }
    put_in_place(Obstacle::read_only, "Song.rpp");
    EXPECT_EQ(run({"Song.ptx", "--overwrite", "--report", "--usage-json", "usage"}, as_nobody), 1);
    EXPECT_TRUE(file_text(out_path).ends_with("\nCould not write Song.rpp\n"));
    EXPECT_EQ(project(), "former");
    EXPECT_NE(file_text("usage").find("\"result\":\"failed\",\"session\":{},"), std::string::npos);
    EXPECT_FALSE(fs::exists("Song-vorlane-report.txt")) << "no report of what is not there";
}

TEST_F(Process, ASignalAtAnyStageLeavesTheFormerProjectOrTheWholeNewOne) {
    const auto run_until = [](int stage, const std::function<void()>& worst) {
        guard_process();
        RunSteps steps;
        steps.convert = [&](const RunOptions& options, ConversionResult*, tanrovegui::Progress*) {
            FatalStage progress(stage, worst);
            return convert_session(options, nullptr, &progress);
        };
        put_descriptor(STDOUT_FILENO, out_path);
        put_descriptor(STDERR_FILENO, err_path);
        const char* arguments[] = {"tanrove", "Song.ptx", "--overwrite"};
        return static_cast<int>(run_tanrove(3, arguments, steps));
    };
    // reading, clips, tracks, writing, its one track; then the project is there: media, report.
    constexpr int stage_count = 7;
    constexpr int project_stands = 5;
    const struct {
        const char* what;
        std::function<void()> worst;
        int code;
    } ends[] = {
        {"interrupt", [] { raise(SIGINT); }, 128 + SIGINT},
        {"terminate", [] { raise(SIGTERM); }, 128 + SIGTERM},
        {"hang up", [] { raise(SIGHUP); }, 128 + SIGHUP},
        {"no memory left", [] { throw std::bad_alloc(); }, exit_failure},
    };
    for (const auto& end : ends) {
        for (int stage = 0; stage < stage_count; ++stage) {
            for (const bool is_there : {false, true}) {
                SCOPED_TRACE(testing::Message() << end.what << " at " << stage << is_there);
                fs::remove("Song.rpp");
                if (is_there) {
                    ASSERT_TRUE(write_file_text("Song.rpp", "former"));
                }
                EXPECT_EQ(in_child([&] { return run_until(stage, end.worst); }), end.code);
                const char* before = is_there ? "former" : "none";
                EXPECT_EQ(project(), stage < project_stands ? before : "new");
                EXPECT_EQ(folder_.file_count(), project() == "none" ? 3U : 4U);
                const std::string said = file_text(out_path);
                EXPECT_EQ(said.find("Could not"), said.npos);
                EXPECT_EQ(said.find("not enough memory") != said.npos, end.code == exit_failure);
            }
        }
    }
    const auto ignored = [] { std::signal(SIGHUP, SIG_IGN); };
    EXPECT_EQ(in_child([&] { return ignored(), run_until(4, [] { raise(SIGHUP); }); }), 0);
    EXPECT_EQ(project(), "new") << "whoever started us wanted it to go on";
}

TEST_F(Process, WhatIsMissingAroundARunTearsNoProject) {
    const auto closed = [](std::vector<int> descriptors) {
        return [descriptors] {
            for (const int descriptor : descriptors) close(descriptor);
        };
    };
    const auto reader_gone = [](int descriptor) {
        return [descriptor] {
            int ends[2];
            if (pipe(ends) != 0) return;
            dup2(ends[1], descriptor);
            close(ends[0]);
        };
    };
    const auto full_stdout = [] { put_descriptor(STDOUT_FILENO, "/dev/full"); };
    const auto small_disk = [] {
        const rlimit limit = {.rlim_cur = 300, .rlim_max = 300};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    const struct {
        const char* what;
        std::function<void()> prepare;
        std::vector<const char*> options;
        int code;
        const char* project;
        const char* words = "";  ///< all that is said, where it is little
    } cases[] = {
        {"no stdin to pause on", closed({0}), {"--pause"}, 0, "new"},
        {"no stdout", closed({1}), {}, 0, "new"},
        {"no stderr", closed({2}), {"--progress"}, 0, "new"},
        {"nothing open", closed({0, 1, 2}), {"--progress", "--pause"}, 0, "new"},
        {"stdout full", full_stdout, {}, 0, "new"},
        {"nobody reads the account", reader_gone(1), {}, 0, "new"},
        {"nobody reads the stages", reader_gone(2), {"--progress"}, 0, "new"},
        {"no stdout for a list", closed({1}), {"--list"}, 1, "former"},
        {"stdout full for a list", full_stdout, {"--list"}, 1, "former"},
        {"nobody reads the help", reader_gone(1), {"--help"}, 1, "former"},
        {"stdout full for the help", full_stdout, {"--help"}, 1, "former"},
        {"stdout full for the version", full_stdout, {"--version"}, 1, "former"},
        {"disk full", small_disk, {}, 1, "former", "\nCould not write Song.rpp\n"},
    };
    for (const auto& c : cases) {
        for (const bool is_there : {true, false}) {
            SCOPED_TRACE(testing::Message() << c.what << is_there);
            fs::remove("Song.rpp");
            fs::remove(out_path);
            if (is_there) {
                ASSERT_TRUE(write_file_text("Song.rpp", "former"));
            }
            std::vector<const char*> arguments = {"Song.ptx", "--overwrite"};
            arguments.insert(arguments.end(), c.options.begin(), c.options.end());
            EXPECT_EQ(run(arguments, c.prepare), c.code);
            const bool is_kept = !is_there && std::string("former") == c.project;
            EXPECT_EQ(project(), is_kept ? "none" : c.project);
            EXPECT_EQ(folder_.file_count(), project() == "none" ? 3U : 4U);
            if (*c.words != 0) {
                EXPECT_EQ(file_text(out_path), c.words);
            }
        }
    }
    for (const char* before : {"none", "former"}) {
        EXPECT_EQ(project(), before);
        EXPECT_EQ(run({"Song.ptx"}, small_disk), 1) << "a disk full without leave to replace";
        EXPECT_EQ(project(), before);
        EXPECT_EQ(folder_.file_count(), *before == 'n' ? 3U : 4U);
        ASSERT_TRUE(write_file_text("Song.rpp", "former"));
    }
}

TEST_F(Process, AProjectGoesIntoAPipeAheadOfItsAccount) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(run({"Song.ptx", "-o", "/dev/stdout"}, [&] { dup2(ends[1], STDOUT_FILENO); }), 0);
    std::string piped(PIPE_BUF, '\0');
    EXPECT_GT(read(ends[0], piped.data(), piped.size()), 0);
    EXPECT_TRUE(piped.starts_with("<REAPER_PROJECT"));
    EXPECT_NE(piped.find("\n>\n\n  Read:"), std::string::npos) << piped;
    close(ends[0]);
    close(ends[1]);
}

TEST_F(Process, NoPipeAndNoDeviceIsWaitedFor) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    for (const char* path : {"pipe", "/dev/zero", "/dev/tty"}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(run({path}), 1);
        EXPECT_TRUE(file_text(out_path).starts_with(std::string("\n  No such file:\n    ") + path));
    }
}

}  // namespace
}  // namespace tanrove
