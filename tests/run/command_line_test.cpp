// Every option of the command line and what it sets, what it does not set, and who wins.
#include "run/command_line.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tanrove {
namespace {

CommandLine read(const std::vector<const char*>& arguments) {
    std::vector<const char*> all{"/opt/tanrove"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return read_command_line(static_cast<int>(all.size()), all.data());
}

struct OptionCase {
    std::vector<const char*> arguments;
    void (*expect)(RunOptions&);
};

/// Each row: arguments, and all that they change in the options of a bare run.
void expect_changes(const std::vector<OptionCase>& cases) {
    for (const OptionCase& c : cases) {
        std::string shown;
        for (const char* argument : c.arguments) shown += std::string(argument) + " ";
        SCOPED_TRACE(shown);
        const CommandLine line = read(c.arguments);
        RunOptions expected;
        expected.program_path = "/opt/tanrove";
        c.expect(expected);
        EXPECT_TRUE(line.options == expected);
        EXPECT_EQ(line.command, Command::convert);
        EXPECT_TRUE(line.path_pieces.empty());
    }
}

TEST(CommandLine, EachSwitchSetsItsFieldAndNothingElse) {
    using O = RunOptions;
    const struct {
        std::string option;
        bool O::*field;
        bool value = true;
    } switches[] = {{"--drop-alt-takes", &O::keep_alt_takes, false},
                    {"--no-alt-takes", &O::keep_alt_takes, false},
                    {"--no-alt-takes --keep-alt-takes", &O::keep_alt_takes},
                    {"--no-placeholders", &O::placeholders, false},
                    {"--no-aax-slots", &O::aax_slots, false},
                    {"--prefer-vst2", &O::prefer_vst3, false},
                    {"--prefer-vst2 --prefer-vst3", &O::prefer_vst3},
                    {"--no-kontakt-state", &O::kontakt_state, false},
                    {"--no-kontakt-state --kontakt-state", &O::kontakt_state},
                    {"--report --check", &O::check_only},
                    {"--list", &O::list_only},
                    {"--no-stretch", &O::no_stretch},
                    {"--no-ara", &O::no_ara},
                    {"--no-fades", &O::no_fades},
                    {"--dump-cache", &O::dump_cache},
                    {"--report", &O::write_report},
                    {"--dump-cc", &O::dump_cc},
                    {"--no-click", &O::no_click},
                    {"--overwrite", &O::overwrite},
                    {"--predict", &O::predict},
                    {"--prefer-clap", &O::prefer_clap},
                    {"--keep-fade-clips", &O::keep_fade_clips},
                    {"--skip-missing-fx", &O::skip_missing_fx},
                    {"--skip-hidden-tracks", &O::skip_hidden_tracks},
                    {"--no-sidechain", &O::no_sidechain},
                    {"--skip-inactive-tracks", &O::skip_inactive_tracks},
                    {"--usage-shared", &O::usage_shared},
                    {"--keep-frozen", &O::keep_frozen},
                    {"--keep-inaudible-midi", &O::keep_inaudible_midi},
                    {"--truncate-midi-to-clip", &O::truncate_midi_to_clip},
                    {"--plain-fades", &O::plain_fades},
                    {"--no-track-colors", &O::no_track_colors},
                    {"--no-clip-colors", &O::no_clip_colors},
                    {"--plain-master", &O::plain_master},
                    {"--no-stand-ins", &O::no_stand_ins},
                    {"--keep-plugin-midi", &O::keep_plugin_midi}};
    for (const auto& c : switches) {
        SCOPED_TRACE(c.option);
        const std::string first = c.option.substr(0, c.option.find(' '));
        const std::string second = c.option.substr(c.option.rfind(' ') + 1);
        RunOptions expected;
        expected.program_path = "/opt/tanrove";
        expected.*c.field = c.value;
        EXPECT_TRUE(read({first.c_str(), second.c_str()}).options == expected);
    }
    expect_changes({
        {{"", "--recover-deleted", "--ghost-clips"}, [](RunOptions&) {}},
        {{"--check", "--report"}, [](RunOptions& o) { o.check_only = o.write_report = true; }},
    });
}

TEST(CommandLine, OptionsTakeTheirValuesWhateverTheseLookLike) {
    expect_changes({
        {{"-o", "a.rpp", "-o", "--list"}, [](RunOptions& o) { o.output_path = "--list"; }},
        {{"--audio-dir", ""},
         [](RunOptions& o) {
             o.audio_dir.clear();
             o.audio_dir_given = true;
         }},
        {{"--vstini", "a.ini"}, [](RunOptions& o) { o.vstini_path = "a.ini"; }},
        {{"--params", "b", "--params", "a"},
         [](RunOptions& o) {
             o.params_paths = {"b", "a"};
         }},
        {{"--want-params", "w"}, [](RunOptions& o) { o.want_params_path = "w"; }},
        {{"--dump-corpus", "dir"}, [](RunOptions& o) { o.corpus_dir = "dir"; }},
        {{"--usage-json", "u.json"}, [](RunOptions& o) { o.usage_json_path = "u.json"; }},
        {{"--pt-theme", "light"}, [](RunOptions& o) { o.theme_mode = 1; }},
        {{"--pt-theme", "classic"}, [](RunOptions& o) { o.theme_mode = 1; }},
        {{"--pt-theme", "dark"}, [](RunOptions& o) { o.theme_mode = 2; }},
        {{"--pt-theme", "dark", "--pt-theme", "Dark"}, [](RunOptions&) {}},
        {{"--comments", "item"}, [](RunOptions& o) { o.comments_mode = 0; }},
        {{"--comments", "none"}, [](RunOptions& o) { o.comments_mode = 2; }},
        {{"--comments", "none", "--comments", "anything"}, [](RunOptions&) {}},
        {{"--skip-muted-fx", "--offline-bypassed-fx"},
         [](RunOptions& o) {
             o.bypass_mode = 1;
             o.skip_bypassed_fx = true;
         }},
        {{"--offline-bypassed-fx", "--skip-bypassed-fx"},
         [](RunOptions& o) {
             o.bypass_mode = 2;
             o.skip_bypassed_fx = true;
         }},
    });
}

TEST(CommandLine, ATempoIsAsMuchOfTheTextAsIsANumber) {
    const struct {
        const char* text;
        double tempo;
    } cases[] = {{"97.5", 97.5},     {" 120bpm", 120},   {"1e2", 100}, {"-3", -3},
                 {"fast", no_tempo}, {"", no_tempo},     {"12,5", 12}, {"inf", no_tempo},
                 {"0", no_tempo},    {"1e999", no_tempo}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(read({"--tempo", c.text}).options.tempo_override, c.tempo);
    }
}

TEST(CommandLine, TempoRampsTakesOnlyItsOwnTwoWords) {
    const struct {
        std::vector<const char*> arguments;
        bool ramps;
        std::vector<std::string> pieces;
    } cases[] = {
        {{"--tempo-ramps"}, true, {}},
        {{"--tempo-ramps", "ramps", "x"}, true, {"x"}},
        {{"--tempo-ramps", "steps", "x"}, false, {"x"}},
        {{"--tempo-ramps", "--tempo-ramps", "steps"}, false, {}},
        {{"--tempo-ramps", "x", "steps"}, true, {"x", "steps"}},
    };
    for (const auto& c : cases) {
        const CommandLine line = read(c.arguments);
        EXPECT_EQ(line.options.tempo_ramps, c.ramps);
        EXPECT_EQ(line.path_pieces, c.pieces);
    }
}

TEST(CommandLine, AnOptionWithoutItsValuesIsUnknown) {
    for (const char* option : {"-o", "--tempo", "--audio-dir", "--vstini", "--params", "--learn",
                               "--want-params", "--dump-corpus", "--pt-theme", "--usage-json",
                               "--comments", "-", "--tempo=120", "--lis", "-H"}) {
        SCOPED_TRACE(option);
        const CommandLine line = read({"x.ptx", option});
        EXPECT_EQ(line.command, Command::refuse);
        EXPECT_EQ(line.unknown_option, option);
    }
    EXPECT_EQ(read({"--learn", "chain"}).unknown_option, "--learn");
}

TEST(CommandLine, TheFirstOfHelpVersionAndUnknownEndsTheReading) {
    EXPECT_EQ(read({"a", "-h", "--bogus"}).command, Command::show_help);
    EXPECT_EQ(read({"--help", "--version"}).command, Command::show_help);
    EXPECT_EQ(read({"--version", "--help"}).command, Command::show_version);
    const CommandLine refused = read({"--pause", "--bogus", "--version", "--no-pause"});
    EXPECT_EQ(refused.command, Command::refuse);
    EXPECT_EQ(refused.unknown_option, "--bogus");
    EXPECT_EQ(refused.pause_at_end, 1);
}

TEST(CommandLine, KeepsWhatConcernsTheRunAndNotTheConversion) {
    const CommandLine line = read({"My", "--learn", "a.RfxChain", "ABCDefgh", "--progress",
                                   "Song.ptx", "--convert-twice", "--pause", "--no-pause"});
    EXPECT_EQ(line.command, Command::learn);
    EXPECT_EQ(line.learn_chain_path, "a.RfxChain");
    EXPECT_EQ(line.learn_signature, "ABCDefgh");
    EXPECT_TRUE(line.progress_wanted);
    EXPECT_TRUE(line.convert_twice);
    EXPECT_EQ(line.pause_at_end, 0);
    EXPECT_EQ(line.path_pieces, (std::vector<std::string>{"My", "Song.ptx"}));
    EXPECT_TRUE(read_command_line(0, nullptr).options.program_path.empty());
}

}  // namespace
}  // namespace tanrove
