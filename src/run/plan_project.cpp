// The stages' inputs, one function each, and the order in which they are planned. The head comes
// before the mix, whose colours follow its markers.
#include "run/plan_project.hpp"

#include <cstdio>
#include <utility>

#include "base/formatted_text.hpp"
#include "base/platform.hpp"
#include "mix/fold_dump.hpp"
#include "project/frozen_track.hpp"
#include "run/colour_input.hpp"
#include "run/console.hpp"
#include "run/plan_midi.hpp"
#include "timeline/lay_out_timeline.hpp"

namespace tanrove {

namespace {

LeaveOutOptions leave_out_options(const RunOptions& options) {
    return {.skip_hidden_tracks = options.skip_hidden_tracks,
            .skip_inactive_tracks = options.skip_inactive_tracks,
            .hidden_names = environment_value("TANROVE_DEBUG_HIDE").value_or("")};
}

CommentPlace comment_place(const RunOptions& options) {
    if (options.comments_mode == comments_in_items) return CommentPlace::items;
    if (options.comments_mode == comments_nowhere) return CommentPlace::nowhere;
    return CommentPlace::project_notes;
}

std::vector<TimelineTrack> place_clips(const RunOptions& options, const PlanningRecords& records,
                                       TimelineTallies& tallies) {
    const ClipRecords& clips = records.clips;
    TimelineInput timeline;
    timeline.track_rows = clips.track_rows;
    timeline.placements = clips.lists.placements;
    timeline.regions = clips.lists.regions;
    timeline.files = clips.files;
    timeline.records = clips.playlists.records;
    timeline.clip_counts = clips.playlists.clip_counts;
    timeline.edit_lists = clips.details;
    timeline.fades = clips.fades;
    timeline.clip_groups = &clips.clip_groups;
    timeline.sync_points = clips.region_starts;
    timeline.gains = &clips.gains;
    timeline.tempo_map = records.time.tempo_map;
    timeline.default_tempo = records.time.tempo_bpm;
    timeline.rate_hz = records.rate_hz;
    timeline.keep_fade_clips = options.keep_fade_clips;
    timeline.warp_maps = &clips.warp_maps;
    timeline.pitch_shifts = &clips.pitch_shifts;
    timeline.loops = clips.loops;
    timeline.no_stretch = options.no_stretch;
    timeline.no_fades = options.no_fades;
    timeline.plain_fades = options.plain_fades;
    return lay_out_timeline(timeline, tallies);
}

HeadPlan plan_head(const RunOptions& options, const TimeRecords& time, double rate_hz,
                   HeadTallies& tallies) {
    HeadRecords records;
    records.sample_rate = static_cast<std::int64_t>(rate_hz);
    records.tempo = {time.tempo_map, time.tempo_bpm, time.first_tempo_refused,
                     time.tempo_breaks_off};
    records.meters = time.meters;
    records.locations = time.locations;
    records.frame_rate = time.frame_rate;
    records.extended_timecode = time.extended_timecode;
    records.audio_format = time.audio_format;
    records.bit_depth = time.bit_depth;
    records.pan_depth = time.pan_depth;
    records.grid_and_nudge = time.grid;
    return plan_project_head(records, options.tempo_ramps, tallies);
}

VideoInput video_input(const PlanningRecords& records) {
    VideoInput input;
    input.video = records.video.clips;
    input.info = records.video.info;
    input.regions = records.video.regions;
    input.rows = records.strips.strips.rows;
    input.displays = records.strips.displays;
    input.rate_hz = records.rate_hz;
    return input;
}

AssemblyInput assembly_input(const RunOptions& options, const PlanningRecords& records,
                             std::vector<TimelineTrack> channels) {
    const StripRecords& strips = records.strips;
    AssemblyInput assembly;
    assembly.channels = std::move(channels);
    assembly.track_rows = records.clips.track_rows;
    assembly.strips = strips.strips;
    assembly.strip_table = strips.table;
    assembly.inactive_names = strips.inactive_names;
    assembly.voice_off_names = strips.voice_off_names;
    assembly.keep_alt_takes = options.keep_alt_takes;
    return assembly;
}

MasterInput master_input(const RunOptions& options, const StripRecords& strips) {
    MasterInput input;
    input.masters = strips.masters;
    input.insert_count = insert_count(strips, strips.masters.row);
    input.plain_master = options.plain_master;
    const std::size_t row = strips.masters.row;
    input.automation_off =
        row < strips.displays.size() && strips.displays[row].automation_mode == AutomationMode::off;
    return input;
}

MixInput mix_input(const RunOptions& options, PlanningRecords& records,
                   std::vector<TimelineTrack> channels, const HeadPlan& head,
                   MidiTallies& tallies) {
    const StripRecords& strips = records.strips;
    MixInput input;
    input.assembly = assembly_input(options, records, std::move(channels));
    input.groups = strips.groups;
    input.vca_slots = strips.vca_slots;
    input.folder_table = strips.folder_table;
    input.strips = std::move(records.mixer);
    input.displays = strips.displays;
    input.routing = std::move(records.routing);
    input.routing.carries_keys = !options.no_sidechain;
    input.master = master_input(options, strips);
    input.click = {strips.strip_inserts, strips.click_is_on, options.no_click};
    input.leave_out = leave_out_options(options);
    input.comment_place = comment_place(options);
    input.video = video_input(records);
    input.tempo_map = records.time.tempo_map;
    input.tempo_bpm = records.time.tempo_bpm;
    input.rate_hz = records.rate_hz;
    input.colours =
        colour_input(options, records.theme, records.clips, strips, records.midi, head.markers);
    input.midi = plan_midi(std::move(records.midi), records.clips, records.time, records.rate_hz,
                           options, tallies);
    return input;
}

void note_unmatched_tracks(const TrackTallies& tallies) {
    const int unmatched = tallies.tracks_without_strip_row;
    if (unmatched <= 0) return;
    record_problem("unmatched-tracks", formatted("%d track(s) matched no strip row", unmatched));
}

}  // namespace

ProjectPlan plan_project(const RunOptions& options, PlanningRecords records, RunTallies& tallies) {
    report_stage(stage_clips, "clips");
    std::vector<TimelineTrack> channels = place_clips(options, records, tallies.timeline);

    report_stage(stage_tracks, "tracks");
    ProjectPlan project;
    project.head = plan_head(options, records.time, records.rate_hz, tallies.head);
    project.mix =
        plan_mix(mix_input(options, records, std::move(channels), project.head, tallies.mix.midi),
                 tallies.mix);
    project.head.master = project.mix.master;
    project.head.notes = notes_lines(project.mix.comments);
    const auto marker_notes = marker_notes_lines(records.time.locations, tallies.head.markers);
    if (comment_place(options) != CommentPlace::nowhere) {
        project.head.notes.insert(project.head.notes.end(), marker_notes.begin(),
                                  marker_notes.end());
    }
    if (environment_value("TANROVE_DEBUG_FOLD")) {
        std::fputs(fold_text(records.strips.table, project.mix.tracks).c_str(), stderr);
    }
    if (environment_value("TANROVE_DUMP_CLIPCOL")) {
        std::fputs(clip_colours_text(project.mix.tracks).c_str(), stderr);
    }
    if (environment_value("TANROVE_DEBUG_SURR")) {
        std::fputs(panner_tries_text(project.mix.panner_tries).c_str(), stderr);
    }
    note_unmatched_tracks(tallies.mix.tracks);
    return project;
}

void plan_freezes(ProjectPlan& project, const BlockIndex& index, const ClipRecords& clips,
                  const TimeRecords& time, bool keep_frozen, MediaSearch& media,
                  FrozenTallies& tallies) {
    if (!has_freeze_files(clips.files)) return;
    FrozenInput input;
    input.renders = readFreezeRenders(index, names_of_renders(project.mix.tracks));
    input.regions = clips.lists.regions;
    input.files = clips.files;
    input.find_render = [&media](const std::string& file) { return find_render(media, file); };
    input.rate_hz = static_cast<double>(project.head.sample_rate);
    input.keep_frozen = keep_frozen;
    plan_frozen(project.mix.tracks, input, TempoClock(time.tempo_map, time.tempo_bpm), tallies);
}

}  // namespace tanrove
