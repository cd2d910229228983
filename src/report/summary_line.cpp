// The summary line of the progress protocol.
#include "report/summary_line.hpp"

#include "base/formatted_text.hpp"

namespace tanrove {

std::string summary_line(const SummaryLine& run) {
    return formatted("summary tracks=%d clips=%d notes=%d fx=%d written=%d needs_look=%d%s",
                     run.tracks, run.clips, run.notes, run.plugins, run.plugins_with_settings,
                     run.needs_look, run.problem_recorded ? " problem=1" : "");
}

}  // namespace tanrove
