// Whole conversions of small built sessions, compared byte for byte with what stands in this
// folder: the project (.rpp) and the console text (.txt), and of some the report and the usage
// summary (.report.txt, .usage.json). scripts/refresh_goldens.sh rewrites them and shows the
// difference. Every project is also left in the build folder, where an independent
// parser of the format and the comparison of two compilers' builds find it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "golden/golden_sessions.hpp"
#include "report/usage_summary.hpp"
#include "run/convert_session.hpp"
#include "support/golden_text.hpp"
#include "support/temp_folder.hpp"
#include "support/told_counts.hpp"

namespace tanrove {
namespace {

namespace fs = std::filesystem;
using namespace builder;

class Golden : public testing::TestWithParam<golden::GoldenCase> {
protected:
    Golden() { console_state().console_sink = &silent_; }
    ~Golden() override { console_state().console_sink = nullptr; }

private:
    NullSink silent_;
};

/// Holds `text` against the golden file of this name.
void expect_golden(const std::string& file, const std::string& text) {
    builder::expect_golden(std::string(TANROVE_GOLDEN_FOLDER) + "/" + file, text);
}

const std::set<std::string> cases_with_reports = {
    "empty_session", "plugins",       "dynamics", "surround", "left_out_tracks", "frozen",
    "clip_effects",  "much_left_out", "damaged",  "full_mix", "time_frame",      "video"};

TEST_P(Golden, ConvertsToItsProjectAndItsAccount) {
    const auto& c = GetParam();
    TempFolder folder;
    folder.enter();
    fs::create_directory("Audio Files");
    fs::create_directory("Video Files");
    for (const auto& name : c.audio_on_disk) {
        ASSERT_TRUE(write_file_text("Audio Files/" + name, "RIFF"));
    }
    for (const auto& [name, text] : c.other_files) ASSERT_TRUE(write_file_text(name, text));
    ASSERT_TRUE(c.session.write("Song.ptx"));
    fs::resize_file("Song.ptx", fs::file_size("Song.ptx") - c.cut_bytes);

    RunOptions options = c.options;
    options.session_path = "Song.ptx";
    ConversionResult result;
    ASSERT_EQ(convert_session(options, &result, nullptr), 0) << result.console_text;
    const std::string project = file_text("Song.rpp");
    ASSERT_FALSE(project.empty());
    const std::string usage = usage_summary(true, console_state().usage_body);

    options.overwrite = true;
    ASSERT_EQ(convert_session(options, nullptr, nullptr), 0);
    EXPECT_EQ(file_text("Song.rpp"), project) << "a second conversion gave other bytes";

    options.check_only = true;
    ConversionResult check;
    ASSERT_EQ(convert_session(options, &check, nullptr), 0);
    std::string account = result.console_text;
    const std::string wrote = "  Wrote: Song.rpp\n";
    account.replace(account.find(wrote), wrote.size(), "  Not written (--check).\n");
    EXPECT_NE(check.console_text.find(account), std::string::npos) << check.console_text;

    expect_told_counts(project, result.console_text, result.report_text, usage,
                       c.parallel_receives);
    expect_golden(c.name + ".rpp", project);
    if (cases_with_reports.contains(c.name)) {
        expect_golden(c.name + ".report.txt", result.report_text);
        expect_golden(c.name + ".usage.json", usage);
    }
    expect_golden(c.name + ".txt", result.console_text);
    const fs::path kept = TANROVE_GOLDEN_PROJECTS;
    fs::create_directories(kept);
    ASSERT_TRUE(write_file_text((kept / (c.name + ".rpp")).string(), project));
}

/// The names and colours of a project, a line each.
std::string colour_lines(const std::string& project) {
    std::string colours;
    for (std::size_t at = 0; at < project.size();) {
        const std::size_t end = project.find('\n', at) + 1;
        const std::string line = project.substr(at, end - at);
        const std::string word = line.substr(std::min(line.find_first_not_of(' '), line.size()));
        for (const char* kept : {"NAME ", "PEAKCOL ", "COLOR ", "MARKER "}) {
            if (word.rfind(kept, 0) == 0) colours += line;
        }
        at = end;
    }
    return colours;
}

TEST(GoldenColours, OfEachCodingInBothThemes) {
    NullSink silent;
    console_state().console_sink = &silent;
    TempFolder folder;
    folder.enter();
    std::string colours;
    for (std::uint8_t scheme = 0; scheme < 8; ++scheme) {
        ASSERT_TRUE(golden::coloured_session(scheme).write("Song.ptx"));
        for (const std::int32_t theme : {theme_classic, theme_dark}) {
            RunOptions options;
            options.session_path = "Song.ptx";
            options.overwrite = true;
            options.theme_mode = theme;
            ASSERT_EQ(convert_session(options, nullptr, nullptr), 0);
            colours += "coding " + std::to_string(scheme);
            colours += theme == theme_dark ? ", Dark\n" : ", Classic\n";
            colours += colour_lines(file_text("Song.rpp"));
        }
    }
    console_state().console_sink = nullptr;
    expect_golden("colour_codings.txt", colours);
}

INSTANTIATE_TEST_SUITE_P(Projects, Golden, testing::ValuesIn(golden::golden_cases()),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(PluginProjects, Golden, testing::ValuesIn(golden::plugin_golden_cases()),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(AccountProjects, Golden, testing::ValuesIn(golden::account_golden_cases()),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(PannerProjects, Golden, testing::ValuesIn(golden::panner_golden_cases()),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(MidiProjects, Golden, testing::ValuesIn(golden::midi_golden_cases()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace tanrove
