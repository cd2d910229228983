// Writes a planned project in one forward pass, then makes the changes that only the whole text
// allows.
#pragma once

#include <string>

#include "project/media_search.hpp"
#include "project/movie_search.hpp"
#include "report/run_tallies.hpp"
#include "run/plan_project.hpp"
#include "run/run_options.hpp"

namespace tanrove {

/// False if the project could not be written whole: the console says so, and what had its name is
/// there as it was. Under `check_only` all is done but nothing is kept.
bool write_project(const ProjectPlan& project, const RunOptions& options, const std::string& path,
                   MediaSearch& media, MovieSearch& movies, RunTallies& tallies);

}  // namespace tanrove
