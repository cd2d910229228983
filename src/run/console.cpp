// The console writer and the progress protocol: formats once, fills the capture first and the sink
// behind it, so that a run that prints nothing can still hand its words to the caller.
#include "run/console.hpp"

#include <cstdarg>
#include <cstdio>
#include <new>

#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

/// A message that finds no memory is left out; the conversion itself goes on.
std::string formatted_or_empty(const char* format, std::va_list values) TANROVE_PRINTF(1, 0);

std::string formatted_or_empty(const char* format, std::va_list values) {
    try {
        return formatted_list(format, values);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace

void StdoutSink::write(const char* text) {
    std::fputs(text, stdout);
}

void NullSink::write(const char* /*text*/) {}

bool StderrProgress::stage(int index, int total, const char* text) {
    std::fprintf(stderr, "progress %d/%d %s\n", index, total, text);
    std::fflush(stderr);
    return true;
}

ConsoleState& console_state() {
    static ConsoleState state;
    return state;
}

void console_write(const std::string& text) {
    const ConsoleState& state = console_state();
    if (state.console_capture != nullptr) *state.console_capture += text;
    if (state.console_sink != nullptr) {
        state.console_sink->write(text.c_str());
    } else {
        std::fputs(text.c_str(), stdout);
    }
}

void console_print(const char* format, ...) {
    std::va_list values;
    va_start(values, format);
    const std::string text = formatted_or_empty(format, values);
    va_end(values);
    console_write(text);
}

void report_print(const char* format, ...) {
    std::string* report = console_state().report_buffer;
    if (report == nullptr) return;
    std::va_list values;
    va_start(values, format);
    *report += formatted_or_empty(format, values);
    va_end(values);
}

void report_stage(int index, const char* text) {
    tanrovegui::Progress* progress = console_state().progress;
    if (progress != nullptr) progress->stage(index, stage_total, text);
}

void report_track_stage(unsigned long index, unsigned long count) {
    report_stage(stage_writing, formatted("%.24s %lu/%lu", "writing", index, count).c_str());
}

void record_problem(const std::string& kind, const std::string& detail) {
    ConsoleState& state = console_state();
    if (!state.problem_kind.empty()) return;
    state.problem_kind = kind;
    state.problem_detail = detail;
}

}  // namespace tanrove
