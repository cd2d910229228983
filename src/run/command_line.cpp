// One table holds every option: its name, how many values it needs, and what it does. An option
// whose values are missing matches nothing, so it ends as an unknown one.
#include "run/command_line.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "base/c_locale.hpp"

namespace tanrove {

namespace {

/// The arguments that are still to be read.
class ArgumentReader {
public:
    ArgumentReader(int count, const char* const* arguments)
        : end_(arguments + std::max(count, 0)), next_(arguments) {}

    std::size_t left() const { return static_cast<std::size_t>(end_ - next_); }
    std::string_view next() const { return left() > 0 ? *next_ : std::string_view(); }
    /// Only while something is left.
    const char* take() { return *next_++; }

private:
    const char* const* end_;
    const char* const* next_;
};

using Action = void (*)(CommandLine&, ArgumentReader&);

struct OptionRow {
    std::string_view name;
    std::size_t value_count;
    Action act;
};

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
    {"-h", 0, set<&Line::command, Command::show_help>},
    {"--help", 0, set<&Line::command, Command::show_help>},
    {"--version", 0, set<&Line::command, Command::show_version>},
    {"-o", 1, take_text<&Opt::output_path>},
    {"--tempo", 1, take_tempo},
    {"--audio-dir", 1, take_audio_dir},
    {"--drop-alt-takes", 0, turn_off<&Opt::keep_alt_takes>},
    {"--no-alt-takes", 0, turn_off<&Opt::keep_alt_takes>},
    {"--keep-alt-takes", 0, turn_on<&Opt::keep_alt_takes>},
    {"--recover-deleted", 0, accept_only},
    {"--ghost-clips", 0, accept_only},
    {"--list", 0, turn_on<&Opt::list_only>},
    {"--check", 0, check_only},
    {"--no-stretch", 0, turn_on<&Opt::no_stretch>},
    {"--keep-fade-clips", 0, turn_on<&Opt::keep_fade_clips>},
    {"--no-fades", 0, turn_on<&Opt::no_fades>},
    {"--vstini", 1, take_text<&Opt::vstini_path>},
    {"--params", 1, add_params_path},
    {"--want-params", 1, take_text<&Opt::want_params_path>},
    {"--dump-cache", 0, turn_on<&Opt::dump_cache>},
    {"--dump-cc", 0, turn_on<&Opt::dump_cc>},
    {"--dump-corpus", 1, take_text<&Opt::corpus_dir>},
    {"--skip-bypassed-fx", 0, skip_bypassed},
    {"--skip-muted-fx", 0, skip_bypassed},
    {"--offline-bypassed-fx", 0, set<&Opt::bypass_mode, bypass_offline>},
    {"--pt-theme", 1, take_theme},
    {"--learn", 2, take_learn},
    {"--no-placeholders", 0, turn_off<&Opt::placeholders>},
    {"--no-aax-slots", 0, turn_off<&Opt::aax_slots>},
    {"--skip-missing-fx", 0, turn_on<&Opt::skip_missing_fx>},
    {"--no-click", 0, turn_on<&Opt::no_click>},
    {"--skip-hidden-tracks", 0, turn_on<&Opt::skip_hidden_tracks>},
    {"--skip-inactive-tracks", 0, turn_on<&Opt::skip_inactive_tracks>},
    {"--no-sidechain", 0, turn_on<&Opt::no_sidechain>},
    {"--prefer-vst3", 0, turn_on<&Opt::prefer_vst3>},
    {"--prefer-vst2", 0, turn_off<&Opt::prefer_vst3>},
    {"--prefer-clap", 0, turn_on<&Opt::prefer_clap>},
    {"--usage-json", 1, take_text<&Opt::usage_json_path>},
    {"--usage-shared", 0, turn_on<&Opt::usage_shared>},
    {"--keep-frozen", 0, turn_on<&Opt::keep_frozen>},
    {"--keep-inaudible-midi", 0, turn_on<&Opt::keep_inaudible_midi>},
    {"--truncate-midi-to-clip", 0, turn_on<&Opt::truncate_midi_to_clip>},
    {"--no-track-colors", 0, turn_on<&Opt::no_track_colors>},
    {"--no-clip-colors", 0, turn_on<&Opt::no_clip_colors>},
    {"--plain-fades", 0, turn_on<&Opt::plain_fades>},
    {"--plain-master", 0, turn_on<&Opt::plain_master>},
    {"--no-stand-ins", 0, turn_on<&Opt::no_stand_ins>},
    {"--no-ara", 0, turn_on<&Opt::no_ara>},
    {"--progress", 0, turn_on<&Line::progress_wanted>},
    {"--tempo-ramps", 0, take_tempo_ramps},
    {"--no-kontakt-state", 0, turn_off<&Opt::kontakt_state>},
    {"--kontakt-state", 0, turn_on<&Opt::kontakt_state>},
    {"--predict", 0, turn_on<&Opt::predict>},
    {"--keep-plugin-midi", 0, turn_on<&Opt::keep_plugin_midi>},
    {"--report", 0, turn_on<&Opt::write_report>},
    {"--pause", 0, set<&Line::pause_at_end, 1>},
    {"--no-pause", 0, set<&Line::pause_at_end, 0>},
    {"--overwrite", 0, turn_on<&Opt::overwrite>},
    {"--convert-twice", 0, turn_on<&Line::convert_twice>},
    {"--comments", 1, take_comments},
};

/// The option of that name, if as many values as it needs are left; else null.
const OptionRow* matching_row(std::string_view name, const ArgumentReader& values) {
    const auto* row = std::find_if(std::begin(option_rows), std::end(option_rows),
                                   [&](const OptionRow& r) { return r.name == name; });
    if (row == std::end(option_rows) || row->value_count > values.left()) return nullptr;
    return row;
}

bool ends_the_reading(Command command) {
    return command != Command::convert && command != Command::learn;
}

void read_argument(CommandLine& line, ArgumentReader& arguments) {
    const std::string_view argument = arguments.take();
    if (argument.empty()) return;
    if (const OptionRow* row = matching_row(argument, arguments)) {
        row->act(line, arguments);
    } else if (argument.front() == '-') {
        line.command = Command::refuse;
        line.unknown_option = argument;
    } else {
        line.path_pieces.emplace_back(argument);
    }
}

}  // namespace

CommandLine read_command_line(int argument_count, const char* const* arguments) {
    CommandLine line;
    ArgumentReader reader(argument_count, arguments);
    if (reader.left() > 0) line.options.program_path = reader.take();
    while (reader.left() > 0 && !ends_the_reading(line.command)) read_argument(line, reader);
    return line;
}

}  // namespace tanrove
