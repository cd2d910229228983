#include "run/run_files.hpp"

#include <algorithm>

#include "base/paths.hpp"
#include "base/platform.hpp"
#include "base/whole_file.hpp"
#include "run/console.hpp"
#include "run/output_path.hpp"
#include "run/plan_project.hpp"

namespace tanrove {

namespace {

int count_plans(const std::vector<TrackPlan>& plans, auto&& is_meant) {
    return static_cast<int>(std::ranges::count_if(plans, is_meant));
}

int count_written(const ProjectPlan& project, auto&& is_meant) {
    return count_plans(project.mix.tracks, is_meant) +
           count_plans(project.mix.strip_tracks, is_meant);
}

}  // namespace

ReportFacts report_facts(const RunOptions& options, const SessionVersion& version,
                         const TimeRecords& time) {
    ReportFacts facts;
    facts.application_version = environment_value("VORLANE_VERSION").value_or("");
    facts.problem_kind = console_state().problem_kind;
    facts.problem_detail = console_state().problem_detail;
    facts.session_path = options.session_path;
    facts.check_only = options.check_only;
    facts.session_major = version.major;
    facts.bit_depth = time.bit_depth.value_or(BitDepth{});
    facts.audio_format = time.audio_format;
    facts.has_tempo_map = time.tempo_map.size() > 1;
    facts.has_session_start = (time.frame_rate && time.frame_rate->start_frames > 0) ||
                              (time.extended_timecode && time.extended_timecode->start_frames > 0);
    facts.no_stand_ins = options.no_stand_ins;
    facts.usage_shared = options.usage_shared;
    return facts;
}

std::string report_path_of(const std::string& project_path) {
    return without_extension(project_path) + "-vorlane-report.txt";
}

std::string write_report_file(const RunOptions& options, const std::string& project_path,
                              const std::string& text) {
    std::string path = report_path_of(project_path);
    // A project that went to a device has no folder to put a report into.
    const bool has_place = options.check_only || is_regular_file(project_path);
    if (!has_place || is_same_file(path, options.session_path) || !write_whole_file(path, text)) {
        console_print("  could not write report: %s\n", path.c_str());
        return {};
    }
    console_print("  report written: %s\n", path.c_str());
    return path;
}

UsageFacts usage_facts(const ProjectPlan& project, const StripRecords& strips,
                       const TimeRecords& time, std::int64_t rate_hz, const std::string& version) {
    UsageFacts facts;
    facts.version = version;
    facts.sample_rate_hz = rate_hz;
    if (time.bit_depth) {
        facts.bit_depth = time.bit_depth->bits;
        facts.is_float = time.bit_depth->is_float;
    }
    facts.midi_tracks =
        count_written(project, [](const TrackPlan& plan) { return !plan.midi_items.empty(); });
    facts.hidden_tracks = count_written(project, [](const TrackPlan& plan) { return plan.hidden; });
    facts.inactive_tracks =
        count_written(project, [](const TrackPlan& plan) { return plan.inactive; });
    for (const TrackPlan& plan : project.mix.tracks) {
        facts.lanes += static_cast<int>(plan.lanes.size());
    }
    facts.master_faders = static_cast<int>(strips.masters.count);
    facts.problem_recorded = !console_state().problem_kind.empty();
    return facts;
}

int count_instrument_tracks(const ProjectPlan& project, const StripRecords& strips) {
    const std::vector<StripRow>& rows = strips.strips.rows;
    int count = 0;
    for (std::size_t i = 0; i < project.mix.tracks.size(); ++i) {
        const auto row = project.mix.strip_rows[i];
        const bool plays = row ? plays_midi(rows[*row].type) : project.mix.tracks[i].is_midi;
        if (plays) ++count;
    }
    return count;
}

void write_usage_file(const RunOptions& options, std::int32_t code) {
    const ConsoleState& state = console_state();
    const std::string& path = options.usage_json_path;
    if (is_same_file(path, options.session_path) || is_same_file(path, state.project_path) ||
        !write_whole_file(path, usage_summary(code == 0, state.usage_body))) {
        console_print("  could not write the usage summary file\n");
    }
}

}  // namespace tanrove
