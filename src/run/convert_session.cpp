// The spine of a conversion: reads the session, plans the project, writes it in one forward pass
// and gives the account. What each stage computes lives in the folders below; here stand their
// order and the words that end a run early.
#include "run/convert_session.hpp"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string_view>
#include <utility>

#include "base/c_locale.hpp"
#include "base/formatted_text.hpp"
#include "base/paths.hpp"
#include "base/platform.hpp"
#include "project/media_search.hpp"
#include "project/movie_search.hpp"
#include "report/console_account.hpp"
#include "report/conversion_report.hpp"
#include "report/summary_line.hpp"
#include "report/usage_summary.hpp"
#include "run/colour_theme.hpp"
#include "run/media_folders.hpp"
#include "run/not_carried.hpp"
#include "run/open_session.hpp"
#include "run/output_path.hpp"
#include "run/plan_chains.hpp"
#include "run/plan_clip_effects.hpp"
#include "run/plan_project.hpp"
#include "run/plugin_knowledge.hpp"
#include "run/routing_records.hpp"
#include "run/run_files.hpp"
#include "run/session_listing.hpp"
#include "run/session_records.hpp"
#include "run/write_project.hpp"
#include "session/block_types.hpp"
#include "session/buses.hpp"
#include "session/midi_chunk_dump.hpp"
#include "session/strip_lanes.hpp"

namespace tanrove {

namespace {

constexpr std::int32_t converted = 0;
constexpr std::int32_t not_converted = 1;

// Pro Tools keeps tempos between these two.
constexpr double tempo_above_bpm = 5;
constexpr double tempo_below_bpm = 500;

/// The tempo that was asked for, 0 for the session's own.
double usable_tempo(double asked_bpm) {
    if (asked_bpm == 0 || (asked_bpm > tempo_above_bpm && asked_bpm < tempo_below_bpm)) {
        return asked_bpm;
    }
    console_print(
        "  NOTE: --tempo takes a number above 5 and below 500. The one given is not,\n"
        "      so it counts as not given: the session's own tempo is used.\n");
    return 0;
}

// Of a session that does not say who saved it, the container tells this version or a later one.
constexpr int least_open_version = 12;

/// How often the account warns: of the state of the session's file, or of what is lost.
int count_warnings(const std::string& account) {
    int warnings = 0;
    for (const std::string_view begin : {" WARNING: ", "*** THIS SESSION FILE"}) {
        for (std::size_t at = 0; (at = account.find(begin, at)) != std::string::npos; ++at) {
            ++warnings;
        }
    }
    return warnings;
}

/// The opened session and the records that most stages want.
struct Session {
    const PTFFormat& file;
    const SessionImage& image;
    const BlockIndex& index;
    const SessionVersion& version;
    const ClipRecords& clips;
    const StripRecords& strips;
};

void dump_lanes_on_demand(const Session& session) {
    if (!environment_value("TANROVE_DUMP_LANES")) return;
    std::fputs(strip_lanes_text(read_mixer(session.index, session.strips)).c_str(), stderr);
}

/// Everything between the opened session and the end of the account.
class Conversion {
public:
    Conversion(const RunOptions& options, bool wants_report, ConversionResult& result)
        : options_(options),
          folders_(media_folders(options)),
          wants_report_(wants_report),
          result_(result) {}

    std::int32_t run();

private:
    std::int32_t convert(const Session& session);
    void plan(const Session& session, const VideoRecords& video);
    void plan_plugins(const Session& session, const PluginKnowledge& plugins);
    void count_what_stays_behind(const Session& session);
    AccountFacts account_facts(const Session& session) const;
    ReportFacts report_facts_of(const Session& session) const;
    void give_account(const AccountFacts& facts, MediaSearch& media, const ClipRecords& clips,
                      ReportFacts report);
    void give_report(const ReportFacts& facts);

    const RunOptions& options_;
    MediaFolders folders_;
    bool wants_report_;
    ConversionResult& result_;
    TimeRecords time_;
    ProjectPlan project_;
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
    const BlockIndex index(opened->image.bytes);
    const ClipRecords clips = read_clips(*opened->file, index);
    const SessionVersion version = scanSessionVersion(index);
    tell_damage(scanDamage(index), options_.check_only);
    time_ = read_time(index, usable_tempo(options_.tempo_override));
    if (options_.dump_cc) console_write(midi_chunk_dump(readMidiChunks(index)));
    const StripRecords strips = read_strip_records(index, clips);
    if (options_.list_only) {
        console_write(session_listing(*opened->file, strips.track_table, readBuses(index),
                                      opened->image.rate, time_.tempo_bpm));
        return converted;
    }
    return convert({*opened->file, opened->image, index, version, clips, strips});
}

std::int32_t Conversion::convert(const Session& session) {
    dump_lanes_on_demand(session);
    const PluginKnowledge plugins =
        load_plugin_knowledge(options_, session.index, session.strips.inserts);
    const VideoRecords video = read_video(session.index);
    plan(session, video);
    MediaSearch media(folders_.media_dir, folders_.media_parent, session.clips.folders);
    plan_freezes(project_, session.index, session.clips, time_, options_.keep_frozen, media,
                 tallies_.frozen);
    plan_plugins(session, plugins);
    count_what_stays_behind(session);
    MovieSearch movies({folders_.media_parent, folders_.session_folder, video.paths});
    project_path_ = choose_output_path(options_);
    if (!write_project(project_, options_, project_path_, media, movies, tallies_)) {
        return not_converted;
    }
    console_state().project_path = options_.check_only ? "" : project_path_;
    give_account(account_facts(session), media, session.clips, report_facts_of(session));
    console_state().usage_body = usage_body(
        usage_facts(project_, session.strips, time_, session.image.rate, session.version.version),
        tallies_);
    return converted;
}

/// The project but for its plug-ins and its frozen tracks.
void Conversion::plan(const Session& session, const VideoRecords& video) {
    tallies_.track_table = session.strips.track_table;
    note_unroutable(session.index, session.strips.strips.rows, session.strips.hardware_inserts,
                    tallies_.mix.routing);
    project_ = plan_project(options_,
                            {.clips = session.clips,
                             .time = time_,
                             .strips = session.strips,
                             .video = video,
                             .mixer = read_mixer(session.index, session.strips),
                             .routing = read_routing_records(session.index, session.strips),
                             .midi = read_midi(session.index, session.strips),
                             .theme = colour_theme(options_, session.version),
                             .rate_hz = static_cast<double>(session.image.rate)},
                            tallies_);
}

void Conversion::plan_plugins(const Session& session, const PluginKnowledge& plugins) {
    plan_chains(project_, options_,
                {.image = session.image.bytes,
                 .strips = session.strips,
                 .time = time_,
                 .identities = plugins.identities,
                 .parameter_names = plugins.parameter_names},
                tallies_.chains);
    plan_clip_effects(project_, readClipEffects(session.index), tallies_.clip_effects);
    tallies_.builds = plugins.identities.findings();
    tallies_.chains.plugin_list_missing = !plugins.identities.knows_what_is_installed();
}

void Conversion::count_what_stays_behind(const Session& session) {
    tallies_.not_carried = count_not_carried(session.index, session.clips);
    tallies_.not_carried.melodyne_edits =
        !options_.no_ara && has_melodyne_edits(folders_.session_folder);
}

ReportFacts Conversion::report_facts_of(const Session& session) const {
    const SessionVersion& version = session.version;
    ReportFacts report = report_facts(options_, version, time_);
    report.project_path = project_path_;
    report.session_is_or_later = version.major < 0 &&
                                 session.file.version() >= least_open_version &&
                                 !session.index.of_type(block_type::tempo_map).all().empty();
    if (version.major < 0) report.session_major = session.file.version();
    report.instrument_tracks = count_instrument_tracks(project_, session.strips);
    return report;
}

/// Seconds of each audio file, as far as the session states its length.
FileSeconds file_seconds(const PTFFormat& file, std::int64_t session_rate) {
    FileSeconds seconds;
    for (const auto& audio : file.audio_files()) {
        const std::int64_t rate = audio.rate_hz > 0 ? audio.rate_hz : session_rate;
        seconds[audio.name] = static_cast<double>(audio.length) / static_cast<double>(rate);
    }
    return seconds;
}

AccountFacts Conversion::account_facts(const Session& session) const {
    AccountFacts facts;
    facts.product = session.version.product;
    facts.product_version = session.version.version;
    facts.sample_rate_hz = session.image.rate;
    facts.tempo_bpm = time_.tempo_bpm;
    facts.project_path = project_path_;
    facts.media_dir = folders_.media_dir;
    facts.long_media =
        find_long_media(project_.mix.tracks, file_seconds(session.file, session.image.rate));
    facts.check_only = options_.check_only;
    facts.usage_shared = options_.usage_shared;
    return facts;
}

/// The report of the run so far, as text and as a file, and the numbers for the application.
void Conversion::give_report(const ReportFacts& facts) {
    report_stage(stage_report, "report");
    ConversionReport report = conversion_report(facts, tallies_);
    if (options_.write_report) {
        result_.report_path = write_report_file(options_, project_path_, report.text);
    }
    result_.report_text = std::move(report.text);
    SummaryLine line;
    line.tracks = tallies_.written.tracks;
    line.clips = tallies_.written.clips;
    line.notes = tallies_.written.notes;
    line.plugins = static_cast<int>(tallies_.chains.outcomes.size());
    line.plugins_with_settings = static_cast<int>(
        std::ranges::count(tallies_.chains.outcomes, OutcomeKind::carried, &PluginOutcome::kind));
    line.needs_look = report.needs_look;
    line.problem_recorded = !console_state().problem_kind.empty();
    console_state().summary_line = summary_line(line);
}

void Conversion::give_account(const AccountFacts& facts, MediaSearch& media,
                              const ClipRecords& clips, ReportFacts report) {
    console_write(console_account(facts, tallies_));

    report_stage(stage_media, "media");
    tallies_.media = count_listed_files(media, clips.files);
    console_write(media_account(tallies_));

    const std::string closing = closing_notes(facts, tallies_);
    if (wants_report_) {
        const std::string& said = *console_state().console_capture;
        report.console_warnings = count_warnings(said) + count_warnings(closing);
        report.sample_rate_hz = facts.sample_rate_hz;
        report.tempo_bpm = facts.tempo_bpm;
        give_report(report);
    }
    console_write(closing);
    write_want_list(options_, project_path_, tallies_.chains.wanted_parameters);
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
        console.project_path.clear();
        console.usage_body.clear();
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
    ConversionResult told;
    const bool wants_report = result != nullptr || progress != nullptr || options.write_report;
    std::int32_t code = not_converted;
    {
        const ConsoleOfThisRun console(captured, progress);
        code = Conversion(options, wants_report, told).run();
    }
    told.console_text = std::move(captured);
    if (result != nullptr) *result = std::move(told);
    return code;
}

}  // namespace tanrove
