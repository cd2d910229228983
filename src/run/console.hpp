// Where a run's words go: the console text, the report text, and the progress lines that an
// application reads from stderr. One conversion at a time in one thread, so one record holds it
// all.
#pragma once

#include <string>

#include "base/printf_check.hpp"

namespace tanrovegui {

/// Receives the stages of a conversion. The calling application derives from it.
class Progress {
public:
    /// Stage `index` of `total` has begun. The result is not used.
    virtual bool stage(int index, int total, const char* text) = 0;
    virtual ~Progress() = default;
};

}  // namespace tanrovegui

namespace tanrove {

/// Receives every console text of a run.
class TanroveSink {
public:
    virtual void write(const char* text) = 0;
    virtual ~TanroveSink() = default;
};

/// Console text goes to stdout.
class StdoutSink : public TanroveSink {
public:
    void write(const char* text) override;
};

/// Console text is dropped; a capture still gets it.
class NullSink : public TanroveSink {
public:
    void write(const char* text) override;
};

/// Prints "progress 2/6 tracks" lines on stderr, each flushed, so that a reader on a pipe sees a
/// stage when it happens.
class StderrProgress : public tanrovegui::Progress {
public:
    bool stage(int index, int total, const char* text) override;
};

/// Number of stages that every conversion reports.
constexpr int stage_total = 6;

/// The stages by their numbers.
constexpr int stage_reading = 0;
constexpr int stage_clips = 1;
constexpr int stage_tracks = 2;
constexpr int stage_writing = 3;
constexpr int stage_media = 4;
constexpr int stage_report = 5;
constexpr int stage_done = 6;

/// Where the words of the current run go, and what it tells at its end. The pointers are not owned.
struct ConsoleState {
    TanroveSink* console_sink = nullptr;       ///< null: plain stdout
    std::string* console_capture = nullptr;    ///< also gets every console text
    std::string* report_buffer = nullptr;      ///< null: report text is dropped
    tanrovegui::Progress* progress = nullptr;  ///< null: no application is listening
    std::string problem_kind;                  ///< empty: no problem on this tool's side
    std::string problem_detail;
    std::string summary_line;  ///< empty until the report stage builds it
    std::string project_path;  ///< empty until the project is written
    std::string usage_body;    ///< of the usage summary; empty until the end of a conversion
};

/// The one record of this process.
ConsoleState& console_state();

/// Formats as printf does and gives the text to the capture, then to the sink. A text past
/// `max_formatted_bytes` is cut short; one that finds no memory is empty.
void console_print(const char* format, ...) TANROVE_PRINTF(1, 2);

/// Gives text as it stands, of any length, to the capture, then to the sink.
void console_write(const std::string& text);

/// Formats as `console_print` does and appends to the report; nothing happens without a report.
void report_print(const char* format, ...) TANROVE_PRINTF(1, 2);

/// Tells the listening application, if there is one, that stage `index` of 6 has begun.
void report_stage(int index, const char* text);

/// Tells it that track `index` (from 0) of `count` is being written.
void report_track_stage(unsigned long index, unsigned long count);

/// Remembers a problem on this tool's side. The first one of a run stands, later ones are ignored.
void record_problem(const std::string& kind, const std::string& detail);

}  // namespace tanrove
