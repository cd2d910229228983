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

/// False if the project could not be written whole: the console says so, and nothing is left of it.
/// Under `check_only` all is done but nothing is kept.
bool write_project(const ProjectPlan& project, const RunOptions& options, const std::string& path,
                   MediaSearch& media, MovieSearch& movies, RunTallies& tallies);

/// What can only be decided on the whole text. A pass that fails leaves the project as it is.
void run_post_passes(const ProjectPlan& project, const std::string& path, RunTallies& tallies);

/// Counts what the passes would do, where no project is written.
void foresee_post_passes(const ProjectPlan& project, RunTallies& tallies);

}  // namespace tanrove
