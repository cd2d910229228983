// Where the project of a run is written: beside the session or where the user says, and never over
// a project that is there unless the user says so.
#pragma once

#include <string>

#include "run/run_options.hpp"

namespace tanrove {

/// Highest number that is tried behind the name of a project that is already there.
constexpr int max_free_name_number = 9999;

/// The path that the options ask for: `output_path`, or the session's with ".rpp" for its
/// extension.
std::string project_path(const RunOptions& options);

/// The first of "song.rpp", "song (1).rpp", "song (2).rpp"... of which nothing stands there, be it
/// a file or a folder; the last one if all of them are there.
std::string free_project_path(const std::string& wanted);

/// The path that this run writes: the one asked for, or under a free name where that file exists,
/// of which the console is told. With `overwrite` or `check_only`, and for a folder that the user
/// names, nothing is searched.
std::string choose_output_path(const RunOptions& options);

/// True if both paths name one file, a link or another spelling included.
bool is_same_file(const std::string& path, const std::string& other);

/// The second project of `--convert-twice`, beside the first: "song.rpp" gives "song-2nd.rpp".
std::string second_pass_path(const std::string& first_output_path);

}  // namespace tanrove
