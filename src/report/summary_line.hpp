// The one line that tells a calling application how a run went, in numbers.
#pragma once

#include <string>

namespace tanrove {

struct SummaryLine {
    int tracks = 0;
    int clips = 0;
    int notes = 0;
    int plugins = 0;                ///< instances on the project's tracks
    int plugins_with_settings = 0;  ///< of those: written with their settings
    int needs_look = 0;             ///< items of the report that a person should look at
    bool problem_recorded = false;
};

/// "summary tracks=3 ...", without a line end.
std::string summary_line(const SummaryLine& run);

}  // namespace tanrove
