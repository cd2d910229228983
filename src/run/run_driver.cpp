// The order of one run: command line, session path, conversion, the application's last lines on
// stderr, usage summary, second pass, pause. It converts nothing itself.
#include "run/run_driver.hpp"

#include <cstdio>
#include <new>
#include <utility>

#include "base/platform.hpp"
#include "base/version.hpp"
#include "base/whole_file.hpp"
#include "report/name_lists.hpp"
#include "run/command_line.hpp"
#include "run/console.hpp"
#include "run/media_folders.hpp"
#include "run/output_path.hpp"
#include "run/session_path.hpp"
#include "run/usage_text.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_named_words = 8;

constexpr const char* self_test_variable = "TANROVE_API_SELFTEST";

/// Console text goes to stdout while the run lasts.
class StdoutForThisRun {
public:
    StdoutForThisRun() { console_state().console_sink = &sink_; }
    ~StdoutForThisRun() { console_state().console_sink = nullptr; }
    StdoutForThisRun(const StdoutForThisRun&) = delete;
    StdoutForThisRun& operator=(const StdoutForThisRun&) = delete;

private:
    StdoutSink sink_;
};

void pause_if_wanted(const CommandLine& line) {
    if (line.pause_at_end == 0) return;
    console_print("\n  Press Enter to close.\n");
    std::fflush(stdout);
    std::getchar();
}

/// The code of a run whose words are all that it makes: a failure where they did not get out.
std::int32_t code_of_words(std::int32_t code) {
    const bool failed = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
    return failed ? exit_failure : code;
}

std::int32_t show_version() {
    std::printf("tanrove %s (build %s)\n", version_text, build_text);
    return code_of_words(exit_success);
}

std::int32_t show_help() {
    console_write(usage_text());
    return code_of_words(exit_success);
}

std::int32_t refuse(const std::string& unknown_option) {
    console_print(
        "\n  Unknown option: %s\n\n"
        "  Nothing was converted. Run  tanrove --help  for the options\n"
        "  this version understands.\n",
        unknown_option.c_str());
    return exit_unknown_option;
}

std::int32_t learn(const CommandLine& line, const RunSteps& steps) {
    const std::int32_t code =
        steps.learn(line.options.program_path, line.learn_chain_path, line.learn_signature);
    return code == 0 ? exit_success : exit_failure;
}

/// One conversion. A session that wants more memory than there is ends with a sentence, and what
/// tells of a run still tells of this one.
std::int32_t convert_once(const RunSteps& steps, const RunOptions& options,
                          ConversionResult* result = nullptr,
                          tanrovegui::Progress* progress = nullptr) {
    try {
        return steps.convert(options, result, progress);
    } catch (const std::bad_alloc&) {
        console_print(
            "\n  STOPPED: there is not enough memory for this session. No file was kept that\n"
            "      is not whole.\n");
        return exit_failure;
    }
}

/// Converts for an application that reads stderr: done, problem and summary come in this order.
std::int32_t convert_with_progress(const RunOptions& options, const RunSteps& steps) {
    StderrProgress progress;
    const std::int32_t code = convert_once(steps, options, nullptr, &progress);
    if (code == exit_success) progress.stage(stage_done, stage_total, "done");
    const ConsoleState& state = console_state();
    if (!state.problem_kind.empty()) {
        std::fprintf(stderr, "problem kind=%s %s\n", state.problem_kind.c_str(),
                     state.problem_detail.c_str());
        std::fflush(stderr);
    }
    if (!state.summary_line.empty()) {
        std::fprintf(stderr, "%s\n", state.summary_line.c_str());
        std::fflush(stderr);
    }
    return code;
}

void write_usage_summary(const RunOptions& options, std::int32_t code, const RunSteps& steps) {
    if (options.usage_json_path.empty() || options.check_only || options.list_only) return;
    if (steps.write_usage_summary) steps.write_usage_summary(options, code);
}

/// The same conversion again, to a file beside the first, so that a tester can compare the two.
std::int32_t convert_again(RunOptions options, const RunSteps& steps) {
    if (options.output_path.empty()) {
        console_print("  --convert-twice needs -o: both passes would write the same file.\n");
        return exit_failure;
    }
    options.output_path = second_pass_path(options.output_path);
    options.overwrite = true;
    return convert_once(steps, options);
}

/// Tests the interface for callers in the same process: the report handed back has to be the report
/// on disk.
std::int32_t test_in_process_interface(RunOptions options, const RunSteps& steps) {
    options.write_report = true;
    ConversionResult result;
    const std::int32_t code = convert_once(steps, options, &result);
    std::string on_disk;
    if (!result.report_path.empty()) {
        on_disk = read_whole_file(result.report_path, real_disk()).value_or("");
    }
    const bool identical = !on_disk.empty() && on_disk == result.report_text;
    console_print("  API SELFTEST: rc=%d report_text=%d ondisk=%d %s\n", static_cast<int>(code),
                  static_cast<int>(result.report_text.size()), static_cast<int>(on_disk.size()),
                  identical ? "IDENTICAL" : "DIFFER");
    console_print("  API SELFTEST: console_text=%d bytes\n",
                  static_cast<int>(result.console_text.size()));
    return code;
}

std::int32_t convert(const CommandLine& line, const RunSteps& steps) {
    const RunOptions& options = line.options;
    std::int32_t code =
        line.progress_wanted ? convert_with_progress(options, steps) : convert_once(steps, options);
    write_usage_summary(options, code, steps);
    if (code == exit_success && line.convert_twice) code = convert_again(options, steps);
    return options.list_only ? code_of_words(code) : code;
}

/// Finds the session and its audio folder. False if the command line names no session.
bool settle_paths(CommandLine& line) {
    RunOptions& options = line.options;
    SessionWords words = find_session_path(line.path_pieces);
    options.session_path = std::move(words.path);
    if (!words.others.empty()) {
        console_print(
            "  NOTE: these words are neither an option nor part of the session's path, and\n"
            "      nothing was done with them:%s\n",
            quoted_names(words.others, max_named_words).c_str());
    }
    if (options.session_path.empty()) return false;
    if (!options.audio_dir_given) options.audio_dir = audio_folder_beside(options.session_path);
    return true;
}

/// Everything that ends with a pause, where one is wanted.
std::int32_t run_command(CommandLine& line, const RunSteps& steps) {
    if (line.command == Command::refuse) return refuse(line.unknown_option);
    if (line.command == Command::learn) return learn(line, steps);
    if (!settle_paths(line)) {
        console_print("tanrove: drag a .ptx file onto this program.\n");
        return exit_failure;
    }
    if (environment_value(self_test_variable)) {
        line.pause_at_end = 0;
        return test_in_process_interface(line.options, steps);
    }
    return convert(line, steps);
}

}  // namespace

std::int32_t run_tanrove(int argument_count, const char* const* arguments, const RunSteps& steps) {
    const StdoutForThisRun sink;
    CommandLine line = read_command_line(argument_count, arguments);
    if (line.command == Command::show_help) return show_help();
    if (line.command == Command::show_version) return show_version();
    const std::int32_t code = run_command(line, steps);
    pause_if_wanted(line);
    return code;
}

}  // namespace tanrove
