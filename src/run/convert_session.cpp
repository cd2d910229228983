// The spine of a conversion: reads the session, plans the project, writes it in one forward pass
// and gives the account. What each stage computes lives in the folders below; here stand their
// order and the words that end a run early.
#include "run/convert_session.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <utility>

#include "base/c_locale.hpp"
#include "base/formatted_text.hpp"
#include "base/paths.hpp"
#include "mix/fold_dump.hpp"
#include "mix/plan_mix.hpp"
#include "project/extra_tracks.hpp"
#include "project/frozen_track.hpp"
#include "project/master_pass.hpp"
#include "project/media_search.hpp"
#include "project/project_head.hpp"
#include "project/track_block.hpp"
#include "project/video_pass.hpp"
#include "project/video_track.hpp"
#include "report/console_summary.hpp"
#include "report/summary_line.hpp"
#include "run/colour_input.hpp"
#include "run/media_folders.hpp"
#include "run/not_carried.hpp"
#include "run/open_session.hpp"
#include "run/output_path.hpp"
#include "run/plan_midi.hpp"
#include "run/routing_records.hpp"
#include "run/session_listing.hpp"
#include "run/session_records.hpp"
#include "session/buses.hpp"
#include "session/midi_chunk_dump.hpp"
#include "session/strip_lanes.hpp"
#include "timeline/lay_out_timeline.hpp"

namespace tanrove {

namespace {

constexpr std::int32_t converted = 0;
constexpr std::int32_t not_converted = 1;

#if defined(_WIN32)
constexpr const char* null_device = "NUL";
#else
constexpr const char* null_device = "/dev/null";
#endif

/// Everything between the opened session and the end of the account.
class Conversion {
public:
    Conversion(const RunOptions& options, bool wants_report)
        : options_(options), folders_(media_folders(options)), wants_report_(wants_report) {}

    std::int32_t run();

private:
    void plan(const SessionImage& image, const ClipRecords& clips, const StripRecords& strips,
              std::vector<Strip> mixer, RoutingRecords routing, MidiRecords midi);
    std::vector<TimelineTrack> place(const SessionImage& image, const ClipRecords& clips);
    void plan_head(const SessionImage& image);
    void plan_picture(const VideoRecords& video, const ClipRecords& clips,
                      const StripRecords& strips, const TempoClock& clock);
    void plan_freezes(const BlockIndex& index, const ClipRecords& clips, MediaSearch& media,
                      const TempoClock& clock);
    bool write_project(MediaSearch& media, MovieSearch& movies);
    void write_all_tracks(TextSink& out, MediaSearch& media, MovieSearch& movies);
    void run_post_passes();
    void give_account(const PTFFormat& file, const SessionVersion& version,
                      const SessionImage& image, MediaSearch& media, const ClipRecords& clips);

    const RunOptions& options_;
    MediaFolders folders_;
    bool wants_report_;
    TimeRecords time_;
    HeadPlan head_;
    ColourTheme theme_;
    MixPlan mix_;
    VideoPlan video_;
    std::string project_path_;
    RunTallies tallies_;
};

std::int32_t Conversion::run() {
    if (options_.session_path.empty()) {
        console_print("tanrove: drag a .ptx file onto this program.\n");
        return not_converted;
    }
    const auto opened = openSession(options_);
    if (!opened) return not_converted;
    const SessionImage& image = opened->image;
    const BlockIndex index(image.bytes);
    const ClipRecords clips = read_clips(*opened->file, index);
    const SessionVersion version = scanSessionVersion(index);
    tell_damage(scanDamage(index), options_.check_only);
    time_ = read_time(index, options_.tempo_override);
    if (options_.dump_cc) console_write(midi_chunk_dump(readMidiChunks(index)));
    const StripRecords strips = read_strips(index, clips);
    if (options_.list_only) {
        console_write(session_listing(*opened->file, strips.track_table, readBuses(index),
                                      image.rate, time_.tempo_bpm));
        return converted;
    }
    if (std::getenv("TANROVE_DUMP_LANES") != nullptr) {
        std::fputs(strip_lanes_text(read_mixer(index, strips)).c_str(), stderr);
    }
    tallies_.track_table = strips.track_table;
    tallies_.not_carried = count_not_carried(index, clips, strips);
    note_unroutable(index, strips.strips.rows, tallies_.mix.routing);
    theme_ = colour_theme(options_, version);
    plan(image, clips, strips, read_mixer(index, strips),
         read_routing(index, strips.strips.rows, strips.inserts), read_midi(index, strips));
    if (std::getenv("TANROVE_DUMP_CLIPCOL") != nullptr) {
        std::fputs(clip_colours_text(mix_.tracks).c_str(), stderr);
    }
    MediaSearch media(folders_.media_dir, folders_.media_parent, clips.folders);
    const TempoClock clock(time_.tempo_map, time_.tempo_bpm);
    const VideoRecords video = read_video(index);
    plan_picture(video, clips, strips, clock);
    plan_freezes(index, clips, media, clock);
    MovieSearch movies({folders_.media_parent, folder_of(options_.session_path), video.paths});
    if (!write_project(media, movies)) return not_converted;
    if (!options_.check_only) run_post_passes();
    give_account(*opened->file, version, image, media, clips);
    return converted;
}

LeaveOutOptions leave_out_options(const RunOptions& options) {
    const char* hidden_names = std::getenv("TANROVE_DEBUG_HIDE");
    return {.skip_hidden_tracks = options.skip_hidden_tracks,
            .skip_inactive_tracks = options.skip_inactive_tracks,
            .hidden_names = hidden_names == nullptr ? "" : hidden_names};
}

CommentPlace comment_place(const RunOptions& options) {
    if (options.comments_mode == comments_in_items) return CommentPlace::items;
    if (options.comments_mode == comments_nowhere) return CommentPlace::nowhere;
    return CommentPlace::project_notes;
}

void Conversion::plan(const SessionImage& image, const ClipRecords& clips,
                      const StripRecords& strips, std::vector<Strip> mixer, RoutingRecords routing,
                      MidiRecords midi) {
    report_stage(stage_clips, "clips");
    std::vector<TimelineTrack> channels = place(image, clips);

    report_stage(stage_tracks, "tracks");
    MixInput input;
    AssemblyInput& assembly = input.assembly;
    assembly.channels = std::move(channels);
    assembly.track_rows = clips.track_rows;
    assembly.strips = strips.strips;
    assembly.strip_table = strips.table;
    assembly.inactive_names = strips.inactive_names;
    assembly.voice_off_names = strips.voice_off_names;
    assembly.keep_alt_takes = options_.keep_alt_takes;
    input.groups = strips.groups;
    input.vca_slots = strips.vca_slots;
    input.folder_table = strips.folder_table;
    input.strips = std::move(mixer);
    input.displays = strips.displays;
    input.routing = std::move(routing);
    input.routing.carries_keys = !options_.no_sidechain;
    input.master = {.masters = strips.masters,
                    .insert_count = insert_count(strips, strips.masters.row),
                    .plain_master = options_.plain_master};
    input.click = {strips.strip_inserts, strips.click_is_on, options_.no_click};
    input.leave_out = leave_out_options(options_);
    input.comment_place = comment_place(options_);
    input.tempo_map = time_.tempo_map;
    input.tempo_bpm = time_.tempo_bpm;
    input.rate_hz = static_cast<double>(image.rate);
    plan_head(image);
    input.colours = colour_input(options_, theme_, clips, strips, midi, head_.markers);
    input.midi =
        plan_midi(std::move(midi), clips, time_, input.rate_hz, options_, tallies_.mix.midi);
    mix_ = plan_mix(std::move(input), tallies_.mix);
    if (std::getenv("TANROVE_DEBUG_FOLD") != nullptr) {
        std::fputs(fold_text(strips.table, mix_.tracks).c_str(), stderr);
    }
    const int unmatched = tallies_.mix.tracks.tracks_without_strip_row;
    if (unmatched > 0) {
        record_problem("unmatched-tracks",
                       formatted("%d track(s) matched no strip row", unmatched));
    }
    head_.master = mix_.master;
    head_.notes = notes_lines(mix_.comments);
}

std::vector<TimelineTrack> Conversion::place(const SessionImage& image, const ClipRecords& clips) {
    TimelineInput timeline;
    timeline.track_rows = clips.track_rows;
    timeline.placements = clips.lists.tracks;
    timeline.regions = clips.lists.regions;
    timeline.files = clips.files;
    timeline.records = clips.playlists.records;
    timeline.clip_counts = clips.playlists.clip_counts;
    timeline.edit_lists = clips.details;
    timeline.fades = clips.fades;
    timeline.clip_groups = &clips.clip_groups;
    timeline.sync_points = clips.region_starts;
    timeline.gains = &clips.gains;
    timeline.tempo_map = time_.tempo_map;
    timeline.default_tempo = time_.tempo_bpm;
    timeline.rate_hz = static_cast<double>(image.rate);
    timeline.keep_fade_clips = options_.keep_fade_clips;
    timeline.warp_maps = &clips.warp_maps;
    timeline.pitch_shifts = &clips.pitch_shifts;
    timeline.loops = clips.loops;
    timeline.no_stretch = options_.no_stretch;
    timeline.no_fades = options_.no_fades;
    timeline.plain_fades = options_.plain_fades;
    return lay_out_timeline(timeline, tallies_.timeline);
}

void Conversion::plan_head(const SessionImage& image) {
    HeadRecords records;
    records.sample_rate = image.rate;
    records.tempo = {time_.tempo_map, time_.tempo_bpm, time_.first_tempo_refused,
                     time_.tempo_breaks_off};
    records.meters = time_.meters;
    records.locations = time_.locations;
    records.frame_rate = time_.frame_rate;
    records.extended_timecode = time_.extended_timecode;
    records.audio_format = time_.audio_format;
    records.bit_depth = time_.bit_depth;
    records.pan_depth = time_.pan_depth;
    records.grid_and_nudge = time_.grid;
    head_ = plan_project_head(records, options_.tempo_ramps, tallies_.head);
}

void Conversion::plan_picture(const VideoRecords& video, const ClipRecords& clips,
                              const StripRecords& strips, const TempoClock& clock) {
    VideoInput input;
    input.video = video.clips;
    input.info = video.info;
    input.regions = clips.lists.regions;
    input.rows = strips.strips.rows;
    input.displays = strips.displays;
    input.rate_hz = static_cast<double>(head_.sample_rate);
    video_ = plan_video(input, clock, tallies_.video);
}

void Conversion::plan_freezes(const BlockIndex& index, const ClipRecords& clips, MediaSearch& media,
                              const TempoClock& clock) {
    FrozenInput input;
    input.renders = readFreezeRenders(index, names_of_renders(mix_.tracks));
    input.regions = clips.lists.regions;
    input.files = clips.files;
    input.find_render = [&media](const std::string& file) { return find_render(media, file); };
    input.rate_hz = static_cast<double>(head_.sample_rate);
    input.keep_frozen = options_.keep_frozen;
    plan_frozen(mix_.tracks, input, clock, tallies_.frozen);
}

/// True if writing `path` would write over the session.
bool is_session_itself(const std::string& path, const std::string& session_path) {
    std::error_code error;
    return std::filesystem::equivalent(path, session_path, error) && !error;
}

/// Takes back what was written of a project that did not come out whole. A device stays.
void remove_unfinished(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error)) std::filesystem::remove(path, error);
}

void Conversion::write_all_tracks(TextSink& out, MediaSearch& media, MovieSearch& movies) {
    TakePlanner takes(static_cast<double>(head_.sample_rate), tallies_.takes);
    const std::string frozen = options_.check_only ? null_device : project_path_ + ".freeze.tmp";
    FreezeWriter freezer(frozen, options_.check_only, real_disk(), tallies_.frozen);
    const auto progress = [](std::size_t track, std::size_t count) {
        report_track_stage(track, count);
    };
    write_tracks(out, mix_.tracks, media, takes, tallies_.written, progress, &freezer);
    write_video_tracks(out, video_.tracks, movies, tallies_.video, tallies_.written);
    write_strip_tracks(out, mix_.strip_tracks, tallies_.written);
    if (mix_.has_solo_track) write_solo_track(out);
}

bool Conversion::write_project(MediaSearch& media, MovieSearch& movies) {
    report_stage(stage_writing, "writing");
    project_path_ = choose_output_path(options_);
    const std::string target = options_.check_only ? null_device : project_path_;
    std::FILE* stream = nullptr;
    if (!is_session_itself(target, options_.session_path))
        stream = std::fopen(target.c_str(), "wb");
    if (stream == nullptr) {
        console_print("\nCould not write %s\n", project_path_.c_str());
        return false;
    }
    bool failed = false;
    {
        TextSink out(stream);
        write_project_head(out, head_);
        write_all_tracks(out, media, movies);
        write_project_end(out);
        out.flush();
        failed = out.failed();
    }
    if (std::fclose(stream) != 0) failed = true;
    if (failed) {
        remove_unfinished(target);
        console_print("\nCould not write %s\n", project_path_.c_str());
    }
    return !failed;
}

/// What can only be decided on the whole text. A pass that fails leaves the project as it is.
void Conversion::run_post_passes() {
    const bool video_behind_others = !video_.tracks.empty() && !mix_.tracks.empty();
    if (video_.stands_first && video_behind_others) {
        tallies_.video.at_top =
            move_video_tracks_first(project_path_, video_.tracks.size(), real_disk());
    }
    if (!mix_.master.wants_own_track) return;
    MasterTrackPlan track;
    track.name = mix_.master.name + " (Pro Tools master fader)";
    track.fader_db = mix_.master.fader_db;
    track.colour = mix_.master.colour;
    track.in_front_of = mix_.master.track_in_front_of;
    tallies_.mix.master.tracks_through_master =
        static_cast<int>(give_master_its_track(project_path_, track, real_disk()));
}

/// Seconds of each audio file, as far as the session states its length.
std::map<std::string, double> file_seconds(const PTFFormat& file, std::int64_t session_rate) {
    std::map<std::string, double> seconds;
    for (const auto& audio : file.audio_files()) {
        const std::int64_t rate = audio.rate_hz > 0 ? audio.rate_hz : session_rate;
        seconds[audio.name] = static_cast<double>(audio.length) / static_cast<double>(rate);
    }
    return seconds;
}

void Conversion::give_account(const PTFFormat& file, const SessionVersion& version,
                              const SessionImage& image, MediaSearch& media,
                              const ClipRecords& clips) {
    SummaryFacts facts;
    facts.product = version.product;
    facts.product_version = version.version;
    facts.sample_rate_hz = image.rate;
    facts.tempo_bpm = time_.tempo_bpm;
    facts.project_path = project_path_;
    facts.media_dir = folders_.media_dir;
    facts.long_media = find_long_media(mix_.tracks, file_seconds(file, image.rate));
    facts.check_only = options_.check_only;
    facts.usage_shared = options_.usage_shared;
    console_write(console_summary(facts, tallies_));

    report_stage(stage_media, "media");
    tallies_.media = count_listed_files(media, clips.files);
    console_write(media_summary(tallies_));

    if (wants_report_) {
        report_stage(stage_report, "report");
        SummaryLine line;
        line.tracks = tallies_.written.tracks;
        line.clips = tallies_.written.clips;
        line.notes = tallies_.written.notes;
        line.problem_recorded = !console_state().problem_kind.empty();
        console_state().summary_line = summary_line(line);
    }
    console_write(closing_notes(facts, tallies_));
    tell_files_not_made(options_);
    if (options_.check_only) {
        console_print(
            "\n  --check: nothing was written. The lines above are what a real\n"
            "      conversion of this session would produce.\n");
    }
}

/// Console text goes to the capture, and stages to the listener, until the object goes: neither
/// outlives the run, whatever ends it.
class ConsoleOfThisRun {
public:
    ConsoleOfThisRun(std::string& capture, tanrovegui::Progress* progress) {
        ConsoleState& console = console_state();
        console.problem_kind.clear();
        console.problem_detail.clear();
        console.summary_line.clear();
        console.console_capture = &capture;
        console.progress = progress;
    }
    ~ConsoleOfThisRun() {
        console_state().console_capture = nullptr;
        console_state().progress = nullptr;
    }
    ConsoleOfThisRun(const ConsoleOfThisRun&) = delete;
    ConsoleOfThisRun& operator=(const ConsoleOfThisRun&) = delete;
};

}  // namespace

std::int32_t convert_session(const RunOptions& options, ConversionResult* result,
                             tanrovegui::Progress* progress) {
    const CLocaleScope plain_numbers;
    std::string captured;
    if (result != nullptr) *result = {};
    const bool wants_report = result != nullptr || progress != nullptr || options.write_report;
    std::int32_t code = not_converted;
    {
        const ConsoleOfThisRun console(captured, progress);
        code = Conversion(options, wants_report).run();
    }
    if (result != nullptr) result->console_text = std::move(captured);
    return code;
}

}  // namespace tanrove
