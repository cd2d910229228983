// The console writer: who gets a text, in which order, and whole.
#include "run/console.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tanrove {
namespace {

/// Notes what had been captured by the time each text arrived.
class WitnessSink : public TanroveSink {
public:
    explicit WitnessSink(const std::string& capture) : capture_(capture) {}
    void write(const char* text) override {
        texts.emplace_back(text);
        captured_before.push_back(capture_);
    }
    std::vector<std::string> texts;
    std::vector<std::string> captured_before;

private:
    const std::string& capture_;
};

class RecordingProgress : public tanrovegui::Progress {
public:
    bool stage(int index, int total, const char* text) override {
        lines.push_back(std::to_string(index) + "/" + std::to_string(total) + " " + text);
        return true;
    }
    std::vector<std::string> lines;
};

class Console : public testing::Test {
protected:
    void SetUp() override { console_state() = {}; }
    void TearDown() override { console_state() = {}; }
};

TEST_F(Console, FillsTheCaptureBeforeTheSinkIsCalled) {
    std::string capture;
    WitnessSink sink(capture);
    console_state().console_sink = &sink;
    console_state().console_capture = &capture;
    console_print("%d clip(s)\n", 3);
    console_write("100% done\n");
    EXPECT_EQ(sink.texts, (std::vector<std::string>{"3 clip(s)\n", "100% done\n"}));
    EXPECT_EQ(sink.captured_before,
              (std::vector<std::string>{"3 clip(s)\n", "3 clip(s)\n100% done\n"}));
}

TEST_F(Console, PrintsToStdoutWithoutASinkAndNothingThroughTheNullSink) {
    testing::internal::CaptureStdout();
    console_print("heard %s\n", "once");
    NullSink silent;
    console_state().console_sink = &silent;
    std::string capture;
    console_state().console_capture = &capture;
    console_print("captured\n");
    report_print("unheard %d\n", 1);  // no buffer takes it
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "heard once\n");
    EXPECT_EQ(capture, "captured\n");
}

TEST_F(Console, LongTextsComeOutWholeUpToTheLimitOfAFormattedOne) {
    NullSink silent;
    std::string capture;
    std::string report;
    console_state().console_sink = &silent;
    console_state().console_capture = &capture;
    console_state().report_buffer = &report;
    for (const std::size_t length : {4095U, 4096U, 4097U, 1000000U, 0x1000000U}) {
        SCOPED_TRACE(length);
        const std::string text(length, 'x');
        capture.clear();
        report.clear();
        console_print("%s", text.c_str());
        EXPECT_TRUE(capture == text.substr(0, length == 0x1000000U ? 4095 : length));
        console_write(text);
        EXPECT_TRUE(capture.ends_with(text));
        report_print("%s.", text.c_str());
        EXPECT_TRUE(length == 0x1000000U || report == text + ".");
    }
}

TEST_F(Console, StagesReachWhoeverListens) {
    report_stage(stage_reading, "nobody listens");
    RecordingProgress app;
    console_state().progress = &app;
    report_stage(stage_clips, "clips");
    report_track_stage(0, 12);
    EXPECT_EQ(app.lines, (std::vector<std::string>{"1/6 clips", "3/6 writing 0/12"}));

    StderrProgress shell;
    console_state().progress = &shell;
    testing::internal::CaptureStderr();
    report_stage(stage_tracks, "tracks");
    report_track_stage(11, 12);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "progress 2/6 tracks\nprogress 3/6 writing 11/12\n");
}

TEST_F(Console, TheFirstProblemStands) {
    record_problem("unreadable", "the session could not be parsed (code -4)");
    record_problem("unmatched-tracks", "2 track(s) matched no strip row");
    EXPECT_EQ(console_state().problem_kind, "unreadable");
    EXPECT_EQ(console_state().problem_detail, "the session could not be parsed (code -4)");
}

}  // namespace
}  // namespace tanrove
