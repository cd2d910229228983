// The sessions of the golden projects, each about one subject.
#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "run/run_options.hpp"
#include "support/session_builder.hpp"

namespace tanrove::golden {

struct GoldenCase {
    std::string name;  ///< of the golden files, lower_case_with_underscores
    builder::SessionBuilder session;
    RunOptions options;
    std::vector<std::string> audio_on_disk;  ///< files that stand in "Audio Files"
    std::vector<std::pair<std::string, std::string>> other_files = {};  ///< names and texts
    int parallel_receives = 0;  ///< of sends that more than one aux takes, all but the first
    std::size_t cut_bytes = 0;  ///< that the session's file lacks at its end
};

std::vector<GoldenCase> golden_cases();
std::vector<GoldenCase> midi_golden_cases();
std::vector<GoldenCase> plugin_golden_cases();
std::vector<GoldenCase> account_golden_cases();
std::vector<GoldenCase> panner_golden_cases();

/// A session whose tracks and clips are coloured by the coding of this number.
builder::SessionBuilder coloured_session(std::uint8_t scheme);

/// Tests are named for their case.
inline void PrintTo(const GoldenCase& c, std::ostream* out) {
    *out << c.name;
}

}  // namespace tanrove::golden
