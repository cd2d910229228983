// One run of the program around a conversion that the test plays: what is called, in which order
// the last lines come, and with which code it ends.
#include "run/run_driver.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

using namespace builder;

/// Stdin holds these bytes, and then its end, while the object lives.
class StdinBytes {
public:
    explicit StdinBytes(const std::string& bytes) : former_(dup(STDIN_FILENO)) {
        std::FILE* file = std::tmpfile();
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::rewind(file);
        dup2(fileno(file), STDIN_FILENO);
        std::fclose(file);
        std::clearerr(stdin);
    }
    ~StdinBytes() {
        while (std::getchar() != EOF) continue;
        dup2(former_, STDIN_FILENO);
        close(former_);
        std::clearerr(stdin);
    }
    StdinBytes(const StdinBytes&) = delete;
    StdinBytes& operator=(const StdinBytes&) = delete;

private:
    int former_;
};

class RunDriver : public testing::Test {
protected:
    void SetUp() override {
        console_state() = {};
        folder.enter();
        steps.convert = [this](const RunOptions& options, ConversionResult* result,
                               tanrovegui::Progress* progress) {
            seen.push_back(options);
            if (progress != nullptr) progress->stage(0, 6, "reading");
            if (during_conversion) during_conversion(result);
            return codes.size() >= seen.size() ? codes[seen.size() - 1] : 0;
        };
    }
    void TearDown() override { console_state() = {}; }

    /// Runs the program; what it prints is in `out` and `err` afterwards.
    int run(std::vector<const char*> arguments) {
        arguments.insert(arguments.begin(), "tanrove");
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int code = run_tanrove(static_cast<int>(arguments.size()), arguments.data(), steps);
        out = testing::internal::GetCapturedStdout();
        err = testing::internal::GetCapturedStderr();
        EXPECT_EQ(console_state().console_sink, nullptr);
        return code;
    }

    TempFolder folder;
    RunSteps steps;
    std::vector<RunOptions> seen;                              ///< one a conversion
    std::vector<std::int32_t> codes;                           ///< theirs; 0 where none is given
    std::function<void(ConversionResult*)> during_conversion;  ///< what each one does besides
    std::string out;
    std::string err;
};

const std::string pause_text = "\n  Press Enter to close.\n";

TEST_F(RunDriver, TheLastLinesForAnApplicationComeInOrderAndAFailedRunIsNeverDone) {
    during_conversion = [](ConversionResult*) {
        record_problem("unreadable", "it could not be parsed");
        console_state().summary_line = "summary tracks=2 problem=1";
    };
    codes = {0, 1, 0};
    EXPECT_EQ(run({"x.ptx", "--progress"}), 0);
    EXPECT_EQ(err,
              "progress 0/6 reading\nprogress 6/6 done\n"
              "problem kind=unreadable it could not be parsed\nsummary tracks=2 problem=1\n");
    EXPECT_EQ(out, "");
    console_state() = {};
    during_conversion = [](ConversionResult*) { record_problem("unreadable", "nor this"); };
    EXPECT_EQ(run({"--progress", "x.ptx"}), 1);
    EXPECT_EQ(err, "progress 0/6 reading\nproblem kind=unreadable nor this\n");
    EXPECT_EQ(run({"x.ptx"}), 0);
    EXPECT_EQ(err, "") << "nobody asked for it";
}

TEST_F(RunDriver, TheConversionGetsTheSessionAndItsAudioFolder) {
    ASSERT_TRUE(write_file_text("My Song.ptx", "x"));
    EXPECT_EQ(run({"My", "--list", "Song.ptx"}), 0);
    EXPECT_EQ(run({"/s/x.ptx", "--audio-dir", "/a"}), 0);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(out, "");
    EXPECT_EQ(seen[0].session_path, "My Song.ptx");
    EXPECT_EQ(seen[0].audio_dir, "./Audio Files");
    EXPECT_TRUE(seen[0].list_only);
    EXPECT_EQ(run({"My", "mix", "of", "My", "Song.ptx", "x"}), 0);
    EXPECT_EQ(out,
              "  NOTE: these words are neither an option nor part of the session's path, and\n"
              "      nothing was done with them: \"My\", \"mix\", \"of\", \"x\"\n");
    EXPECT_EQ(seen[1].session_path, "/s/x.ptx");
    EXPECT_EQ(seen[1].audio_dir, "/a");
}

TEST_F(RunDriver, WhatConvertsNothingSaysWhyAndEndsWithItsCode) {
    const std::string unknown =
        "\n  Unknown option: --tempo\n\n"
        "  Nothing was converted. Run  tanrove --help  for the options\n"
        "  this version understands.\n";
    const std::string no_session = "tanrove: drag a .ptx file onto this program.\n";
    const std::string no_learning = "a is no chain\n";
    steps.learn = [](const std::string&, const std::string& chain, const std::string&) {
        console_print("%s is no chain\n", chain.c_str());
        return 1;
    };
    const struct {
        std::vector<const char*> arguments;
        int code;
        std::string text;
        bool pauses;
    } cases[] = {
        {{"x.ptx", "--tempo"}, 2, unknown, true},
        {{}, 1, no_session, true},
        {{"", "--report"}, 1, no_session, true},
        {{"--learn", "a", "b", "x.ptx"}, 1, no_learning, true},
        {{"--version", "x.ptx"}, 0, "tanrove 1.0.2 (build 308)\n", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        auto arguments = c.arguments;
        arguments.insert(arguments.begin(), "--no-pause");
        EXPECT_EQ(run(arguments), c.code);
        EXPECT_EQ(out, c.text);
        arguments[0] = "--pause";
        const StdinBytes stdin_bytes("\nx");
        EXPECT_EQ(run(arguments), c.code);
        EXPECT_EQ(out, c.pauses ? c.text + pause_text : c.text);
        EXPECT_EQ(std::getchar(), c.pauses ? 'x' : '\n');
    }
    EXPECT_EQ(run({"--pause", "-h"}), 0);
    EXPECT_EQ(out.rfind("tanrove: convert a Pro Tools session", 0), 0U);
    EXPECT_EQ(out.find(pause_text), std::string::npos);
    EXPECT_TRUE(seen.empty());
}

TEST_F(RunDriver, LearningTakesTheWholeRun) {
    std::string learned;
    std::int32_t verdict = 0;
    steps.learn = [&](const std::string& program, const std::string& chain,
                      const std::string& signature) {
        learned += program + ":" + chain + "/" + signature + ";";
        return verdict;
    };
    EXPECT_EQ(run({"--learn", "a.RfxChain", "ABCDefgh", "x.ptx"}), 0);
    verdict = -7;
    EXPECT_EQ(run({"--learn", "b", "c"}), 1);
    EXPECT_EQ(learned, "tanrove:a.RfxChain/ABCDefgh;tanrove:b/c;");
    EXPECT_TRUE(seen.empty());
}

TEST_F(RunDriver, TheSecondPassWritesBesideTheFirstAndItsCodeCounts) {
    codes = {0, 1};
    EXPECT_EQ(run({"x.ptx", "-o", "out/x.rpp", "--convert-twice", "--progress"}), 1);
    ASSERT_EQ(seen.size(), 2U);
    RunOptions second = seen[0];
    second.output_path = "out/x-2nd.rpp";
    second.overwrite = true;
    EXPECT_TRUE(seen[1] == second);
    EXPECT_EQ(err, "progress 0/6 reading\nprogress 6/6 done\n");
}

TEST_F(RunDriver, ThereIsNoSecondPassWithoutAPathOrAfterAFailure) {
    EXPECT_EQ(run({"x.ptx", "--convert-twice"}), 1);
    EXPECT_EQ(out, "  --convert-twice needs -o: both passes would write the same file.\n");
    EXPECT_EQ(seen.size(), 1U);
    codes = {0, 1};
    EXPECT_EQ(run({"x.ptx", "--convert-twice"}), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(seen.size(), 2U);
}

TEST_F(RunDriver, AUsageSummaryIsWrittenForConversionsOnlyAndNeverChangesTheCode) {
    std::vector<std::int32_t> told;
    steps.write_usage_summary = [&](const RunOptions& options, std::int32_t code) {
        EXPECT_EQ(options.usage_json_path, "u");
        told.push_back(code);
    };
    codes = {1};
    EXPECT_EQ(run({"x.ptx", "--usage-json", "u"}), 1);
    EXPECT_EQ(run({"x.ptx", "--usage-json", "u", "-o", "y.rpp", "--convert-twice"}), 0);
    EXPECT_EQ(run({"x.ptx", "--usage-json", "u", "--check"}), 0);
    EXPECT_EQ(run({"x.ptx", "--usage-json", "u", "--list"}), 0);
    EXPECT_EQ(run({"x.ptx"}), 0);
    EXPECT_EQ(told, (std::vector<std::int32_t>{1, 0}));
    steps.write_usage_summary = nullptr;
    EXPECT_EQ(run({"x.ptx", "--usage-json", "u"}), 0);
    EXPECT_EQ(folder.file_count(), 0U);
}

TEST_F(RunDriver, TheSelfTestComparesTheReportHandedBackWithTheOneOnDisk) {
    const struct {
        std::string on_disk;
        std::string report_path;
        std::string verdict;
    } cases[] = {
        {"report", "r.txt", "rc=0 report_text=6 ondisk=6 IDENTICAL\n"},
        {"repart", "r.txt", "rc=0 report_text=6 ondisk=6 DIFFER\n"},
        {"", "r.txt", "rc=0 report_text=6 ondisk=0 DIFFER\n"},
        {"report", "", "rc=0 report_text=6 ondisk=0 DIFFER\n"},
    };
    setenv("TANROVE_API_SELFTEST", "", 1);
    steps.write_usage_summary = [](const RunOptions&, std::int32_t) { ADD_FAILURE(); };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.verdict);
        EXPECT_TRUE(write_file_text("r.txt", c.on_disk));
        during_conversion = [&](ConversionResult* result) {
            *result = {.console_text = "0123456789",
                       .report_text = "report",
                       .report_path = c.report_path};
        };
        EXPECT_EQ(run({"x.ptx", "-o", "y.rpp", "--pause", "--progress", "--convert-twice",
                       "--usage-json", "u"}),
                  0);
        EXPECT_EQ(out, "  API SELFTEST: " + c.verdict + "  API SELFTEST: console_text=10 bytes\n");
        EXPECT_EQ(err, "");
        EXPECT_TRUE(seen.back().write_report);
    }
    unsetenv("TANROVE_API_SELFTEST");
    EXPECT_EQ(seen.size(), 4U);
}

}  // namespace
}  // namespace tanrove
