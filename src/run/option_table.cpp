// What each option does to the record of the command line, and what is said of it. An option whose
// values are missing matches nothing, so it ends as an unknown one.
#include "run/option_table.hpp"

#include <cmath>
#include <cstdlib>

#include "base/c_locale.hpp"

namespace tanrove {

namespace {

template <typename Value>
Value& field_of(CommandLine& line, Value RunOptions::*field) {
    return line.options.*field;
}

template <typename Value>
Value& field_of(CommandLine& line, Value CommandLine::*field) {
    return line.*field;
}

template <auto field, auto value>
void set(CommandLine& line, ArgumentReader& /*values*/) {
    field_of(line, field) = value;
}

template <auto field>
void turn_on(CommandLine& line, ArgumentReader& values) {
    set<field, true>(line, values);
}

template <auto field>
void turn_off(CommandLine& line, ArgumentReader& values) {
    set<field, false>(line, values);
}

template <auto field>
void take_text(CommandLine& line, ArgumentReader& values) {
    field_of(line, field) = values.take();
}

void accept_only(CommandLine& /*line*/, ArgumentReader& /*values*/) {}

/// Reads as much of the text as is a number.
void take_tempo(CommandLine& line, ArgumentReader& values) {
    const CLocaleScope plain_numbers;
    const double tempo = std::strtod(values.take(), nullptr);
    line.options.tempo_override = std::isfinite(tempo) && tempo != 0 ? tempo : no_tempo;
}

void take_audio_dir(CommandLine& line, ArgumentReader& values) {
    line.options.audio_dir = values.take();
    line.options.audio_dir_given = true;
}

void add_params_path(CommandLine& line, ArgumentReader& values) {
    line.options.params_paths.emplace_back(values.take());
}

/// A check writes no file, so a report asked for further left is dropped.
void check_only(CommandLine& line, ArgumentReader& /*values*/) {
    line.options.check_only = true;
    line.options.write_report = false;
}

void skip_bypassed(CommandLine& line, ArgumentReader& /*values*/) {
    line.options.skip_bypassed_fx = true;
    line.options.bypass_mode = bypass_left_out;
}

void take_theme(CommandLine& line, ArgumentReader& values) {
    const std::string_view word = values.take();
    const bool classic = word == "classic" || word == "light";
    line.options.theme_mode = classic          ? theme_classic
                              : word == "dark" ? theme_dark
                                               : theme_of_session;
}

void take_comments(CommandLine& line, ArgumentReader& values) {
    const std::string_view word = values.take();
    line.options.comments_mode = word == "item"   ? comments_in_items
                                 : word == "none" ? comments_nowhere
                                                  : comments_in_project;
}

void take_tempo_ramps(CommandLine& line, ArgumentReader& values) {
    const bool steps = values.next() == "steps";
    if (steps || values.next() == "ramps") values.take();
    line.options.tempo_ramps = !steps;
}

void take_learn(CommandLine& line, ArgumentReader& values) {
    line.command = Command::learn;
    line.learn_chain_path = values.take();
    line.learn_signature = values.take();
}

using Opt = RunOptions;
using Line = CommandLine;

constexpr OptionRow option_rows[] = {
    {.name = "-o",
     .values = "FILE",
     .kind = ValueKind::file,
     .subject = OptionSubject::files,
     .act = take_text<&Opt::output_path>,
     .text = R"(write the project there. Without it the project is written beside
the session, under its name.)"},
    {.name = "--overwrite",
     .subject = OptionSubject::files,
     .act = turn_on<&Opt::overwrite>,
     .text = R"(replace an existing project. Without it the new one gets a number
behind its name.)"},
    {.name = "--audio-dir",
     .values = "FOLDER",
     .kind = ValueKind::folder,
     .subject = OptionSubject::files,
     .act = take_audio_dir,
     .text = R"(the folder of the audio files, if it is not "Audio Files" beside
the session.)"},
    {.name = "--tempo",
     .values = "BPM",
     .kind = ValueKind::other,
     .subject = OptionSubject::tracks,
     .act = take_tempo,
     .text = R"(a tempo in place of the session's, for a session without a tempo
map.)"},
    {.name = "--no-alt-takes",
     .subject = OptionSubject::clips,
     .act = turn_off<&Opt::keep_alt_takes>},
    {.name = "--drop-alt-takes",
     .subject = OptionSubject::clips,
     .act = turn_off<&Opt::keep_alt_takes>,
     .text = R"(leave alternate playlists out. Without it they come along as fixed
lanes.)"},
    {.name = "--keep-alt-takes",
     .subject = OptionSubject::clips,
     .act = turn_on<&Opt::keep_alt_takes>,
     .text = R"(carry alternate playlists, which is also what you get without this
option.)"},
    {.name = "--no-fades",
     .subject = OptionSubject::clips,
     .act = turn_on<&Opt::no_fades>,
     .text = "leave all fades out."},
    {.name = "--keep-fade-clips",
     .subject = OptionSubject::clips,
     .act = turn_on<&Opt::keep_fade_clips>,
     .text = "keep rendered fade files as clips, in place of those fades."},
    {.name = "--recover-deleted", .subject = OptionSubject::program, .act = accept_only},
    {.name = "--ghost-clips",
     .subject = OptionSubject::program,
     .act = accept_only,
     .text = "accepted and ignored: deleted clips are never recovered."},
    {.name = "--vstini",
     .values = "FILE",
     .kind = ValueKind::file,
     .subject = OptionSubject::plugins,
     .act = take_text<&Opt::vstini_path>,
     .text = R"(the list of VSTs that REAPER has found, if it is not where REAPER
keeps it.)"},
    {.name = "--dump-cache",
     .subject = OptionSubject::reports,
     .act = turn_on<&Opt::dump_cache>,
     .text = R"(also print the plug-ins that REAPER has found, under the names a
project gives them.)"},
    {.name = "--params",
     .values = "FILE",
     .kind = ValueKind::file,
     .subject = OptionSubject::plugins,
     .act = add_params_path,
     .text = R"(a table of parameter names, in place of those beside the program.
May be given several times.)"},
    {.name = "--want-params",
     .values = "FILE",
     .kind = ValueKind::file,
     .subject = OptionSubject::plugins,
     .act = take_text<&Opt::want_params_path>,
     .text = "write the names of the plug-ins whose parameters no table names."},
    {.name = "--check",
     .subject = OptionSubject::files,
     .act = check_only,
     .help = "--check",
     .text = R"(answer "will this session convert?" and write
NOTHING. Same reading, same report, no files.
Use it before converting, or to see exactly
which plug-ins you are missing.)"},
    {.name = "--skip-muted-fx", .subject = OptionSubject::plugins, .act = skip_bypassed},
    {.name = "--skip-bypassed-fx",
     .subject = OptionSubject::plugins,
     .act = skip_bypassed,
     .help = "--skip-bypassed-fx",
     .text = R"(leave out every plug-in that was bypassed or
made inactive in Pro Tools. Without it they
come along as bypassed slots.)"},
    {.name = "--prefer-vst2",
     .subject = OptionSubject::plugins,
     .act = turn_off<&Opt::prefer_vst3>,
     .help = "--prefer-vst2",
     .text = R"(where REAPER has both the VST2 and the VST3
build of a plug-in, load the VST2. Without
it the VST3 is loaded.)"},
    {.name = "--prefer-vst3",
     .subject = OptionSubject::plugins,
     .act = turn_on<&Opt::prefer_vst3>,
     .text = R"(load the VST3 where REAPER has both, which is also what you get
without this option.)"},
    {.name = "--offline-bypassed-fx",
     .subject = OptionSubject::plugins,
     .act = set<&Opt::bypass_mode, bypass_offline>,
     .help = "--offline-bypassed-fx",
     .text = R"(keep plug-ins that were bypassed or inactive
in the chain, but offline, so that they load
nothing until you bring them online.)"},
    {.name = "--pt-theme",
     .values = "auto|classic|dark",
     .kind = ValueKind::words,
     .subject = OptionSubject::colours,
     .act = take_theme,
     .help = "--pt-theme classic",
     .text = R"(the Pro Tools theme whose default colors you
want: classic (or light), dark, or auto.
A session does not say which one it was seen
in; auto goes by the version that saved it.)"},
    {.name = "--no-placeholders",
     .subject = OptionSubject::plugins,
     .act = turn_off<&Opt::placeholders>,
     .help = "--no-placeholders",
     .text = R"(leave out a plug-in whose settings could not
be read. Without it the plug-in goes in
offline, so that you see where it sat.)"},
    {.name = "--no-aax-slots",
     .subject = OptionSubject::plugins,
     .act = turn_off<&Opt::aax_slots>,
     .help = "--no-aax-slots",
     .text = R"(leave nothing where a plug-in sat that exists
as an AAX only. Without it a bypassed slot
with its name keeps the place.)"},
    {.name = "--skip-missing-fx",
     .subject = OptionSubject::plugins,
     .act = turn_on<&Opt::skip_missing_fx>,
     .help = "--skip-missing-fx",
     .text = R"(leave out a plug-in that is not installed for
REAPER on this machine. Without it its slot is
written all the same.)"},
    {.name = "--no-click",
     .subject = OptionSubject::tracks,
     .act = turn_on<&Opt::no_click>,
     .help = "--no-click",
     .text = "leave out Click tracks."},
    {.name = "--skip-hidden-tracks",
     .subject = OptionSubject::tracks,
     .act = turn_on<&Opt::skip_hidden_tracks>,
     .help = "--skip-hidden-tracks",
     .text = R"(leave out tracks that are hidden in Pro Tools.
One that a written track needs is kept.)"},
    {.name = "--skip-inactive-tracks",
     .subject = OptionSubject::tracks,
     .act = turn_on<&Opt::skip_inactive_tracks>,
     .help = "--skip-inactive-tracks",
     .text = R"(leave out inactive tracks. One that a written
track needs is kept. Without it they come
along muted.)"},
    {.name = "--comments",
     .values = "project|item|none",
     .kind = ValueKind::words,
     .subject = OptionSubject::tracks,
     .act = take_comments,
     .help = "--comments MODE",
     .text = R"(where track comments go: project (the project
notes, which is also what you get without
this option), item (an item with notes on
each track), or none.)"},
    {.name = "--keep-frozen",
     .subject = OptionSubject::tracks,
     .act = turn_on<&Opt::keep_frozen>,
     .help = "--keep-frozen",
     .text = R"(deliver a track that was frozen in Pro Tools
frozen in REAPER, where you can unfreeze it.
Without it frozen tracks arrive unfrozen.)"},
    {.name = "--keep-inaudible-midi",
     .subject = OptionSubject::midi,
     .act = turn_on<&Opt::keep_inaudible_midi>,
     .help = "--keep-inaudible-midi",
     .text = R"(write notes and controllers that lie outside
their clip's boundary unmuted. Pro Tools does
not play them; without it they arrive muted.)"},
    {.name = "--truncate-midi-to-clip",
     .subject = OptionSubject::midi,
     .act = turn_on<&Opt::truncate_midi_to_clip>,
     .help = "--truncate-midi-to-clip",
     .text = R"(cut notes at the edge of their clip. Without
it a note that Pro Tools lets ring past the
edge rings on in REAPER as well.)"},
    {.name = "--no-stand-ins",
     .subject = OptionSubject::plugins,
     .act = turn_on<&Opt::no_stand_ins>,
     .help = "--no-stand-ins",
     .text = R"(leave Avid's own plug-ins (EQ3, Dyn3, Channel
Strip, Trim) as named, switched-off slots.
Without it they are rebuilt on REAPER's own
plug-ins.)"},
    {.name = "--progress",
     .subject = OptionSubject::reports,
     .act = turn_on<&Line::progress_wanted>,
     .help = "--progress",
     .text = R"(for the app: on stderr, one line per stage
("progress 2/6 tracks") while converting, then
"progress 6/6 done" and one summary line
("summary tracks=.. clips=.. notes=.. fx=..
written=.. needs_look=.."). Stdout is unchanged.
When something went wrong on this tool's side,
"problem kind=<kind> <detail>" comes just before
the summary, which then ends "problem=1".)"},
    {.name = "--no-track-colors",
     .subject = OptionSubject::colours,
     .act = turn_on<&Opt::no_track_colors>,
     .help = "--no-track-colors",
     .text = "leave every track in REAPER's default color."},
    {.name = "--plain-master",
     .subject = OptionSubject::tracks,
     .act = turn_on<&Opt::plain_master>,
     .help = "--plain-master",
     .text = R"(keep the master fader on REAPER's master. There
the master's plug-ins run before the fader; in
Pro Tools they run after it.)"},
    {.name = "--plain-fades",
     .subject = OptionSubject::clips,
     .act = turn_on<&Opt::plain_fades>,
     .help = "--plain-fades",
     .text = R"(write every fade as an ordinary REAPER fade.
Without it a shape that REAPER's fades cannot
make becomes a volume envelope on the item.)"},
    {.name = "--no-clip-colors",
     .subject = OptionSubject::colours,
     .act = turn_on<&Opt::no_clip_colors>,
     .help = "--no-clip-colors",
     .text = "leave clips in the color of their track."},
    {.name = "--tempo-ramps",
     .values = "[ramps|steps]",
     .kind = ValueKind::words,
     .subject = OptionSubject::tracks,
     .act = take_tempo_ramps,
     .help = "--tempo-ramps [ramps|steps]",
     .text = R"(write a tempo ramp drawn in Pro Tools as a
ramp you can grab in REAPER, instead of the
run of small steps that Pro Tools stores.
"steps" keeps the steps, as without it.)"},
    {.name = "--prefer-clap",
     .subject = OptionSubject::plugins,
     .act = turn_on<&Opt::prefer_clap>,
     .help = "--prefer-clap",
     .text = R"(use the CLAP build of a plug-in where REAPER
has one and its settings can be carried.)"},
    {.name = "--usage-json",
     .values = "FILE",
     .kind = ValueKind::file,
     .subject = OptionSubject::reports,
     .act = take_text<&Opt::usage_json_path>,
     .help = "--usage-json FILE",
     .text = R"(also write an anonymous summary of this run to
FILE (counts, plug-in names and how each one
converted; no names of yours, no paths). This
program sends nothing; the app sends the file
only for people who switched usage summaries on.)"},
    {.name = "--usage-shared",
     .subject = OptionSubject::reports,
     .act = turn_on<&Opt::usage_shared>,
     .help = "--usage-shared",
     .text = R"(for the app: the PRIVACY paragraph of the
report says that the summary is being shared.
Nothing else changes.)"},
    {.name = "--predict",
     .subject = OptionSubject::program,
     .act = turn_on<&Opt::predict>,
     .help = "--predict",
     .text = R"(accepted and ignored: since v194 every plug-in
the converter can name is tried, including ones
no rule was written for, and the report names
every one whose settings were predicted.)"},
    {.name = "--kontakt-state",
     .subject = OptionSubject::plugins,
     .act = turn_on<&Opt::kontakt_state>},
    {.name = "--no-kontakt-state",
     .subject = OptionSubject::plugins,
     .act = turn_off<&Opt::kontakt_state>,
     .help = "--no-kontakt-state",
     .text = R"(insert Kontakt without its settings. With
--kontakt-state, which is what you get without
either, its settings go in.)"},
    {.name = "--keep-plugin-midi",
     .subject = OptionSubject::plugins,
     .act = turn_on<&Opt::keep_plugin_midi>,
     .help = "--keep-plugin-midi",
     .text = R"(leave the MIDI trigger of FabFilter Pro-C 2 and
Saturn 2 as the session saved it. Without it
one that is on is switched off where the track
carries MIDI: Pro Tools routes no MIDI to it,
REAPER would.)"},
    {.name = "--no-ara",
     .subject = OptionSubject::plugins,
     .act = turn_on<&Opt::no_ara>,
     .text = R"(do not warn of edits that Melodyne keeps beside the session, which
are not carried.)"},
    {.name = "--no-sidechain",
     .subject = OptionSubject::tracks,
     .act = turn_on<&Opt::no_sidechain>,
     .help = "--no-sidechain",
     .text = R"(leave out key inputs: no side-chain routing is
written.)"},
    {.name = "--no-stretch",
     .subject = OptionSubject::clips,
     .act = turn_on<&Opt::no_stretch>,
     .help = "--no-stretch",
     .text = R"(ignore elastic audio: clips play unstretched.
Pitch shifts are kept.)"},
    {.name = "--list",
     .subject = OptionSubject::files,
     .act = turn_on<&Opt::list_only>,
     .help = "--list",
     .text = R"(print the session's tempo, sample rate, tracks
and buses, and write nothing.)"},
    {.name = "--dump-cc",
     .subject = OptionSubject::reports,
     .act = turn_on<&Opt::dump_cc>,
     .help = "--dump-cc",
     .text = R"(print the decoded MIDI controller streams, for
bug reports, and go on with the conversion.)"},
    {.name = "--dump-corpus",
     .values = "FOLDER",
     .kind = ValueKind::folder,
     .subject = OptionSubject::reports,
     .act = take_text<&Opt::corpus_dir>,
     .text = R"(add the session's plug-in settings to the samples in an existing
folder: the block of the session, what became of it, and a line in
index.tsv.)"},
    {.name = "--convert-twice",
     .subject = OptionSubject::reports,
     .act = turn_on<&Line::convert_twice>,
     .text = "convert twice, for comparing the two projects. Needs -o."},
    {.name = "--no-pause", .subject = OptionSubject::program, .act = set<&Line::pause_at_end, 0>},
    {.name = "--pause",
     .subject = OptionSubject::program,
     .act = set<&Line::pause_at_end, 1>,
     .help = "--pause / --no-pause",
     .text = R"(wait for Enter before the window closes, or do
not. It waits by itself only on Windows.)"},
    {.name = "--report",
     .subject = OptionSubject::files,
     .act = turn_on<&Opt::write_report>,
     .help = "--report",
     .text = R"(also write the conversion report, a text file,
next to the project.)"},
    {.name = "--learn",
     .values = "CHAIN CODE",
     .kind = ValueKind::file,
     .subject = OptionSubject::plugins,
     .act = take_learn,
     .help = "--learn",
     .text = R"(teach the converter a plug-in it does not know.
In REAPER, put the plug-in on a track and save
the FX chain as an .RfxChain. Give that file and
the 8-character signature by which the converter
names the plug-in. Nothing is converted.)"},
    {.name = "-h",
     .subject = OptionSubject::program,
     .act = set<&Line::command, Command::show_help>},
    {.name = "--help",
     .subject = OptionSubject::program,
     .act = set<&Line::command, Command::show_help>,
     .text = "print the options and exit."},
    {.name = "--version",
     .subject = OptionSubject::program,
     .act = set<&Line::command, Command::show_version>,
     .text = "print the version and exit."},
};

}  // namespace

std::span<const OptionRow> option_table() {
    return option_rows;
}

}  // namespace tanrove
