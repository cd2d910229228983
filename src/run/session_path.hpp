// Finds the session among the words of a command line: a path with spaces that nobody quoted
// arrives in pieces.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tanrove {

/// Runs of pieces that are tried before only short runs are. 700 pieces have fewer runs; a shell
/// can hand over a million pieces.
constexpr std::size_t max_piece_runs = 250000;

/// Runs up to this length are tried on every command line; no name of a session has more words.
constexpr std::size_t max_short_run = 32;

/// The session's path, and the words that are no part of it.
struct SessionWords {
    std::string path;
    std::vector<std::string> others;
};

/// The longest run of neighbouring pieces that names a readable file when joined with single
/// blanks; of two equally long runs the left one. All pieces joined if there is none; empty without
/// pieces.
SessionWords find_session_path(const std::vector<std::string>& pieces);

}  // namespace tanrove
