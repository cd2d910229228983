// The one forward pass over the plan, and the passes over its text, under a temporary name.
#include "run/write_project.hpp"

#include <cstdio>
#include <filesystem>

#include "base/paths.hpp"
#include "base/platform.hpp"
#include "base/whole_file.hpp"
#include "project/extra_tracks.hpp"
#include "project/frozen_track.hpp"
#include "project/master_pass.hpp"
#include "project/track_block.hpp"
#include "project/video_pass.hpp"
#include "project/video_track.hpp"
#include "run/console.hpp"

namespace tanrove {

namespace {

bool is_device(const std::string& path) {
    const auto kind = status_of(path).type();
    return kind != std::filesystem::file_type::regular &&
           kind != std::filesystem::file_type::not_found;
}

void write_all_tracks(TextSink& out, const ProjectPlan& project, const RunOptions& options,
                      const std::string& path, MediaSearch& media, MovieSearch& movies,
                      RunTallies& tallies) {
    TakePlanner takes(static_cast<double>(project.head.sample_rate), tallies.takes);
    FreezeWriter freezer(path, !options.check_only, real_disk(), tallies.frozen);
    const auto progress = [](std::size_t track, std::size_t count) {
        report_track_stage(static_cast<unsigned long>(track), static_cast<unsigned long>(count));
    };
    tallies.track_facts =
        write_tracks(out, project.mix.tracks, {project.chains, project.take_chains}, media, takes,
                     tallies.written, progress, &freezer);
    write_video_tracks(out, project.mix.video.tracks, movies, tallies.mix.video, tallies.written);
    write_strip_tracks(out, project.mix.strip_tracks, project.strip_chains, tallies.written);
    for (const TrackPlan& strip : project.mix.strip_tracks) {
        tallies.track_facts.push_back({.name = strip.name});
    }
    tallies.bare_strip_tracks = static_cast<int>(project.mix.strip_tracks.size());
    if (project.mix.has_solo_track) write_solo_track(out);
}

/// The one forward pass. False if it did not all go through.
bool write_text(std::FILE* stream, const ProjectPlan& project, const RunOptions& options,
                const std::string& path, MediaSearch& media, MovieSearch& movies,
                RunTallies& tallies) {
    TextSink out(stream);
    const int master_points = write_project_head(out, project.head);
    tallies.written.automation_points += master_points;
    tallies.written.automated_tracks += master_points > 0 ? 1 : 0;
    write_all_tracks(out, project, options, path, media, movies, tallies);
    write_project_end(out);
    out.flush();
    return !out.failed();
}

/// A device or a pipe holds nothing that could be read again.
void note_no_passes(const ProjectPlan& project, RunTallies& tallies) {
    tallies.mix.video.at_top = false;
    tallies.mix.master.track_failed = project.mix.master.wants_own_track;
}

/// What can only be decided on the whole text. A pass that fails leaves the text as it is.
void run_post_passes(const ProjectPlan& project, const WholeFile& file, RunTallies& tallies) {
    const std::string* path = file.temporary_path();
    if (path == nullptr) return note_no_passes(project, tallies);
    const bool video_behind_others =
        !project.mix.video.tracks.empty() && !project.mix.tracks.empty();
    if (project.mix.video.stands_first && video_behind_others) {
        tallies.mix.video.at_top =
            move_video_tracks_first(*path, project.mix.video.tracks.size(), real_disk());
    }
    if (!project.mix.master.wants_own_track) return;
    MasterTrackPlan track;
    track.name = project.mix.master.name + " (Pro Tools master fader)";
    track.fader_db = project.mix.master.fader_db;
    track.automation_off = project.mix.master.automation_off;
    track.colour = project.mix.master.colour;
    track.in_front_of = project.mix.master.track_in_front_of;
    tallies.mix.master.tracks_through_master =
        static_cast<int>(give_master_its_track(*path, track, real_disk()));
    tallies.mix.master.track_failed = tallies.mix.master.tracks_through_master == 0;
}

/// Counts what the passes would do, where no project is kept.
void foresee_post_passes(const ProjectPlan& project, const RunOptions& options,
                         const std::string& path, RunTallies& tallies) {
    // Without leave to write over what is there, a run passes by a device and makes a file.
    if (options.overwrite && is_device(path)) return note_no_passes(project, tallies);
    if (!project.mix.master.wants_own_track) return;
    int depth = 0;
    int senders = project.mix.has_solo_track ? 1 : 0;
    for (const auto* list : {&project.mix.tracks, &project.mix.strip_tracks}) {
        for (const TrackPlan& plan : *list) {
            if (depth == 0 && plan.mixer.plays_to_parent) ++senders;
            depth += plan.folder.depth;
        }
    }
    tallies.mix.master.tracks_through_master = senders;
    tallies.mix.master.track_failed = senders == 0;
}

/// Writes the file under its temporary name, changes its text, and gives it its own name.
bool write_file(const ProjectPlan& project, const RunOptions& options, const std::string& path,
                MediaSearch& media, MovieSearch& movies, RunTallies& tallies) {
    const std::string target = options.check_only ? null_device : path;
    if (are_one_file(target, options.session_path)) return false;
    WholeFile file(target);
    if (file.stream() == nullptr) return false;
    if (!write_text(file.stream(), project, options, path, media, movies, tallies)) return false;
    if (!file.close()) return false;
    if (options.check_only) {
        foresee_post_passes(project, options, path, tallies);
    } else {
        run_post_passes(project, file, tallies);
    }
    return file.put_in_place();
}

}  // namespace

bool write_project(const ProjectPlan& project, const RunOptions& options, const std::string& path,
                   MediaSearch& media, MovieSearch& movies, RunTallies& tallies) {
    report_stage(stage_writing, "writing");
    const bool written = write_file(project, options, path, media, movies, tallies);
    if (!written) console_print("\nCould not write %s\n", path.c_str());
    return written;
}

}  // namespace tanrove
