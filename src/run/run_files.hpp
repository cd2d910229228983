// The files that a run makes beside the project: the report, and the usage summary.
#pragma once

#include <cstdint>
#include <string>

#include "report/conversion_report.hpp"
#include "report/usage_summary.hpp"
#include "run/run_options.hpp"
#include "run/session_records.hpp"
#include "session/session_version.hpp"

namespace tanrove {

struct ProjectPlan;

/// What the report tells of the session as it was read, and of the switches.
ReportFacts report_facts(const RunOptions& options, const SessionVersion& version,
                         const TimeRecords& time);

/// "song.rpp" has "song-vorlane-report.txt".
std::string report_path_of(const std::string& project_path);

/// Writes the report beside the project, and says so. Returns its path; empty where it could not
/// be written.
std::string write_report_file(const RunOptions& options, const std::string& project_path,
                              const std::string& text);

/// What the usage summary tells of the plans.
UsageFacts usage_facts(const ProjectPlan& project, const StripRecords& strips,
                       const TimeRecords& time, std::int64_t rate_hz, const std::string& version);

/// Instrument tracks among the tracks with lists of clips.
int count_instrument_tracks(const ProjectPlan& project, const StripRecords& strips);

/// Writes what the last run of this process left for the summary; `code` is the run's result. Says
/// so where it cannot, and never writes over the session or the project.
void write_usage_file(const RunOptions& options, std::int32_t code);

}  // namespace tanrove
