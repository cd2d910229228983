// Reads the command line: which command it asks for, and with which options. It touches no file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/platform.hpp"
#include "run/run_options.hpp"

namespace tanrove {

/// What the command line asks for.
enum class Command { convert, learn, show_help, show_version, refuse };

/// A command line, taken apart.
struct CommandLine {
    Command command = Command::convert;
    RunOptions options;  ///< without `session_path`, which the pieces still have to give
    std::vector<std::string> path_pieces;
    std::string unknown_option;  ///< the one that made us refuse
    std::string learn_chain_path;
    std::string learn_signature;
    bool progress_wanted = false;
    bool convert_twice = false;
    std::int32_t pause_at_end = default_pause_at_end;
};

/// Reads the arguments behind the program's name from left to right; of two that disagree the later
/// one counts. Nothing behind a request for help, a request for the version, or an unknown option
/// is looked at.
CommandLine read_command_line(int argument_count, const char* const* arguments);

}  // namespace tanrove
