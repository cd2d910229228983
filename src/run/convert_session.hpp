// One conversion: a session in, a project out. The command line calls it, and so can any program
// that links it. Paths are UTF-8 on every system; nothing here throws but where memory runs out.
#pragma once

#include <cstdint>
#include <string>

#include "run/console.hpp"
#include "run/run_options.hpp"

namespace tanrove {

/// What a caller in the same process gets back: texts of its own, UTF-8 with "\n" ends, that stay
/// when the next conversion begins.
struct ConversionResult {
    std::string console_text;  ///< everything that the run printed on the console
    std::string report_text;   ///< the whole report, whether or not a file was written
    std::string report_path;   ///< where the report was written; empty without a file
};

/// Converts one session. One conversion runs at a time in a process: what it says goes through the
/// one console of the process, and its numbers through the one locale. 0, or 1 if nothing was
/// converted; the console tells why, and what `output_path` named is what it was. `result` and
/// `progress` may be null, stay the caller's, and are not kept. Without `progress` or `result`, and
/// without a report asked for, no report is made.
std::int32_t convert_session(const RunOptions& options, ConversionResult* result,
                             tanrovegui::Progress* progress);

}  // namespace tanrove
