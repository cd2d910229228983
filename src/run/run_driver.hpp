// The program as one function: reads the command line, runs one conversion or two, and says how it
// ended.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "run/convert_session.hpp"

namespace tanrove {

/// Exit codes of the program.
constexpr std::int32_t exit_success = 0;
constexpr std::int32_t exit_failure = 1;
constexpr std::int32_t exit_unknown_option = 2;

/// The work that a run hands out. `convert` and `learn` have to be there.
struct RunSteps {
    std::function<std::int32_t(const RunOptions&, ConversionResult*, tanrovegui::Progress*)>
        convert;

    /// Learns one plug-in from an FX chain file and its signature; 0, or 1 on failure.
    std::function<std::int32_t(const std::string& program_path, const std::string& chain_path,
                               const std::string& signature)>
        learn;

    /// Writes the usage summary of a finished conversion to `usage_json_path`; the result code of
    /// the run does not depend on it. Without it none is written.
    std::function<void(const RunOptions&, std::int32_t result_code)> write_usage_summary;
};

/// One run of the program: 0 success, 1 nothing converted, 2 an unknown option.
std::int32_t run_tanrove(int argument_count, const char* const* arguments, const RunSteps& steps);

}  // namespace tanrove
