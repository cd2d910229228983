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
    expect_changes({
        {{""}, [](RunOptions&) {}},
        {{"--recover-deleted", "--ghost-clips"}, [](RunOptions&) {}},
        {{"--drop-alt-takes"}, [](RunOptions& o) { o.keep_alt_takes = false; }},
        {{"--no-alt-takes"}, [](RunOptions& o) { o.keep_alt_takes = false; }},
        {{"--no-alt-takes", "--keep-alt-takes"}, [](RunOptions&) {}},
        {{"--list"}, [](RunOptions& o) { o.list_only = true; }},
        {{"--no-stretch"}, [](RunOptions& o) { o.no_stretch = true; }},
        {{"--keep-fade-clips"}, [](RunOptions& o) { o.keep_fade_clips = true; }},
        {{"--no-fades"}, [](RunOptions& o) { o.no_fades = true; }},
        {{"--dump-cache"}, [](RunOptions& o) { o.dump_cache = true; }},
        {{"--dump-cc"}, [](RunOptions& o) { o.dump_cc = true; }},
        {{"--no-placeholders"}, [](RunOptions& o) { o.placeholders = false; }},
        {{"--no-aax-slots"}, [](RunOptions& o) { o.aax_slots = false; }},
        {{"--skip-missing-fx"}, [](RunOptions& o) { o.skip_missing_fx = true; }},
        {{"--no-click"}, [](RunOptions& o) { o.no_click = true; }},
        {{"--skip-hidden-tracks"}, [](RunOptions& o) { o.skip_hidden_tracks = true; }},
        {{"--skip-inactive-tracks"}, [](RunOptions& o) { o.skip_inactive_tracks = true; }},
        {{"--no-sidechain"}, [](RunOptions& o) { o.no_sidechain = true; }},
        {{"--prefer-vst2"}, [](RunOptions& o) { o.prefer_vst3 = false; }},
        {{"--prefer-vst2", "--prefer-vst3"}, [](RunOptions&) {}},
        {{"--prefer-clap"}, [](RunOptions& o) { o.prefer_clap = true; }},
        {{"--usage-shared"}, [](RunOptions& o) { o.usage_shared = true; }},
        {{"--keep-frozen"}, [](RunOptions& o) { o.keep_frozen = true; }},
        {{"--keep-inaudible-midi"}, [](RunOptions& o) { o.keep_inaudible_midi = true; }},
        {{"--truncate-midi-to-clip"}, [](RunOptions& o) { o.truncate_midi_to_clip = true; }},
        {{"--no-track-colors"}, [](RunOptions& o) { o.no_track_colors = true; }},
        {{"--no-clip-colors"}, [](RunOptions& o) { o.no_clip_colors = true; }},
        {{"--plain-fades"}, [](RunOptions& o) { o.plain_fades = true; }},
        {{"--plain-master"}, [](RunOptions& o) { o.plain_master = true; }},
        {{"--no-stand-ins"}, [](RunOptions& o) { o.no_stand_ins = true; }},
        {{"--no-ara"}, [](RunOptions& o) { o.no_ara = true; }},
        {{"--no-kontakt-state"}, [](RunOptions& o) { o.kontakt_state = false; }},
        {{"--no-kontakt-state", "--kontakt-state"}, [](RunOptions&) {}},
        {{"--predict"}, [](RunOptions& o) { o.predict = true; }},
        {{"--keep-plugin-midi"}, [](RunOptions& o) { o.keep_plugin_midi = true; }},
        {{"--report"}, [](RunOptions& o) { o.write_report = true; }},
        {{"--overwrite"}, [](RunOptions& o) { o.overwrite = true; }},
        {{"--report", "--check"}, [](RunOptions& o) { o.check_only = true; }},
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
    } cases[] = {{"97.5", 97.5}, {" 120bpm", 120}, {"1e2", 100}, {"-3", -3}, {"fast", 0},
                 {"", 0},        {"12,5", 12},     {"inf", 0},   {"nan", 0}, {"1e999", 0}};
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
