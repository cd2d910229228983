// Sentences that no one run can hold together: of each form of a run, what its account and its
// report say that those of a plain run do not.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <sstream>
#include <tuple>

#include "report/console_account.hpp"
#include "report/conversion_report.hpp"
#include "support/golden_text.hpp"

namespace tanrove {
namespace {

struct ARun {
    AccountFacts account;
    ReportFacts report;
    RunTallies tallies;
};

struct Form {
    const char* what;
    std::function<void(ARun&)> set;
};

PluginOutcome plugin(const std::string& name, OutcomeKind kind, bool bypassed = false) {
    PluginOutcome outcome;
    outcome.display_name = name;
    outcome.kind = kind;
    outcome.bypassed = bypassed;
    return outcome;
}

UnloopedClip unlooped(LoopRefusal refusal) {
    return {.refusal = refusal, .track = "Vox", .clip = "beat", .start_seconds = 1};
}

const Form forms[] = {
    {"a check of a session without a version",
     [](ARun& run) {
         run.account.product_version.clear();
         run.account.check_only = run.report.check_only = true;
         run.report.session_is_or_later = true;
     }},
    {"plain colors",
     [](ARun& run) {
         auto& colours = run.tallies.mix.colours;
         colours.track_colours_off = colours.clip_colours_off = true;
         std::tie(colours.tracks_own, colours.tracks_by_scheme) = std::tuple(1, 20);
         std::tie(colours.clips_own, colours.lane_clips) = std::tuple(1, 20);
         std::tie(colours.clips_by_scheme, colours.midi_clips_as_listed) = std::tuple(300, 4000);
     }},
    {"the Classic theme, and colored clips that are all left out",
     [](ARun& run) {
         auto& colours = run.tallies.mix.colours;
         colours.theme.chosen = true;
         colours.coloured_rows_left = 2;
         colours.tracks_without = 3;
     }},
    {"coding by marker",
     [](ARun& run) {
         auto& colours = run.tallies.mix.colours;
         colours.schemes = {1, 6};
         std::tie(colours.lane_clips, colours.tracks_by_scheme) = std::tuple(1, 2);
         colours.theme.dark = true;
         colours.dark_measured = 3;
     }},
    {"coding by MIDI device",
     [](ARun& run) {
         run.tallies.mix.colours.schemes.track = 2;
         run.tallies.mix.colours.tracks_by_scheme = 1;
     }},
    {"fades at an edit", [](ARun& run) { run.tallies.timeline.fades.approximated = 3; }},
    {"a master that moves",
     [](ARun& run) {
         run.tallies.mix.master = {.master_faders = 1,
                                   .insert_count = 3,
                                   .is_automated = true,
                                   .is_moved_before_plugins = true,
                                   .name = "Print"};
     }},
    {"loops of all kinds",
     [](ARun& run) {
         auto& loops = run.tallies.timeline.loops;
         loops.short_loops = 1;
         loops.listed_short_loops = {{"Vox", "beat", 1, 4, 3}};
         for (const LoopRefusal refusal :
              {LoopRefusal::unknown_shape, LoopRefusal::unreadable_count,
               LoopRefusal::stretched_or_crossfaded, LoopRefusal::not_audio,
               LoopRefusal::too_many_passes, LoopRefusal::no_clip}) {
             loops.listed.push_back(unlooped(refusal));
             ++loops.unlooped;
         }
     }},
    {"comments that are not written",
     [](ARun& run) {
         run.tallies.mix.comments = {{"Vox"}, CommentPlace::nowhere, 0};
         run.tallies.head.markers.comments = 2;
     }},
    {"comments in the notes",
     [](ARun& run) {
         run.tallies.mix.comments = {{"Vox"}, CommentPlace::project_notes, 0};
     }},
    {"no Avid plug-in to replace",
     [](ARun& run) { run.tallies.chains.stand_ins.none_wanted = run.report.no_stand_ins = true; }},
    {"MIDI that rings on", [](ARun& run) { run.tallies.mix.midi.notes_past_edge = 2; }},
    {"nothing rings on", [](ARun& run) { run.tallies.mix.midi.truncation_wanted = true; }},
    {"picture behind the tracks, in samples",
     [](ARun& run) {
         auto& video = run.tallies.mix.video;
         std::tie(video.tracks, video.items, video.at_top) = std::tuple(1, 2, false);
         video.movies_elsewhere = {"/old/Reel 1.mov"};
     }},
    {"a grid of minutes, a nudge of frames",
     [](ARun& run) {
         run.tallies.head.grid.other_unit = {.unit = CountUnit::minutes, .text = "0:01"};
         run.tallies.head.grid.nudge = {.unit = CountUnit::timecode, .text = "00:01"};
     }},
    {"a grid of feet",
     [](ARun& run) {
         run.tallies.head.grid.other_unit = {.unit = CountUnit::feet, .text = "0+01"};
     }},
    {"timebases without their records",
     [](ARun& run) {
         run.tallies.timeline.sample_based_tracks = 4;
         run.tallies.timeline.unpaired_tracks = 2;
     }},
    {"files beside the folder that no clip uses, and a long file",
     [](ARun& run) {
         run.tallies.media.files_in_siblings = 1;
         run.tallies.media.files_by_folder = {{"Takes", 1}};
         run.account.long_media.longest_source_seconds = 660;
     }},
    {"AIFF, a tempo map, a ruler that is not there, a problem",
     [](ARun& run) {
         run.report.application_version = "2.5 beta";
         run.report.problem_kind = "unmatched-tracks";
         run.report.problem_detail = "3 track(s) matched no strip row";
         run.report.bit_depth = {.bits = 32, .is_float = true};
         run.report.audio_format = AudioFormat::aiff;
         run.report.has_tempo_map = run.report.has_session_start = true;
         run.tallies.head.recording = {.bits = 32, .is_float = true, .is_aiff = true};
         run.tallies.head.timecode.label = "59.94 fps drop frame";
         run.tallies.head.timecode.start = "01:00:00;00";
         run.tallies.head.timecode.runs_at = "59.94";
     }},
    {"a version with a line end, a depth that is not written",
     [](ARun& run) {
         run.report.application_version = "2.5\n";
         run.tallies.head.recording = {.bits = 20};
     }},
    {"plug-ins that changed nothing",
     [](ARun& run) {
         run.tallies.chains.outcomes = {plugin("Off", OutcomeKind::aax_only, true)};
         run.tallies.builds.kontakt = {.name = "Kontakt 8", .instances = 2};
     }},
    {"plug-ins of which some were heard, and several are not here",
     [](ARun& run) {
         auto& outcomes = run.tallies.chains.outcomes;
         outcomes = {plugin("Off", OutcomeKind::aax_only, true),
                     plugin("On", OutcomeKind::aax_only),
                     plugin("Here", OutcomeKind::carried),
                     plugin("Gone", OutcomeKind::carried),
                     plugin("Gone", OutcomeKind::carried),
                     plugin("Gone", OutcomeKind::without_settings),
                     plugin("Never", OutcomeKind::left_out_not_installed),
                     plugin("Never", OutcomeKind::left_out_not_installed)};
         for (std::size_t i = 3; i < outcomes.size(); ++i) outcomes[i].not_installed = true;
         outcomes[2].automation_points = 7;
         run.tallies.chains.outcomes_a_track = {static_cast<int>(outcomes.size())};
         run.tallies.track_facts = {{"Vox"}};
     }},
    {"soloed and muted beside tracks that sound",
     [](ARun& run) { run.tallies.mix.solos.dropped = 2; }},
    {"panners of one wide strip", [](ARun& run) { run.tallies.mix.levels.panners_left_still = 1; }},
    {"warnings, and nothing for the list", [](ARun& run) { run.report.console_warnings = 1; }},
    {"a warning that the list tells as well",
     [](ARun& run) {
         run.report.console_warnings = 1;
         run.tallies.media.missing_files = {"gone.wav"};
     }},
    {"a warning beyond the list",
     [](ARun& run) {
         run.report.console_warnings = 2;
         run.tallies.media.missing_files = {"gone.wav"};
     }},
    {"names of many and of no characters",
     [](ARun& run) {
         std::string name = "\n";  // a control character is a blank
         for (int i = 0; i < 40; ++i) name += "\xC3\xA4";
         run.tallies.track_facts = {{name, 1, 2}, {"Bad \xC3", 0, 0}};
     }},
};

ARun plain_run() {
    ARun run;
    run.account.product = "Pro Tools";
    run.account.product_version = "12.5.0";
    run.tallies.head.meters.has_map = true;
    run.tallies.head.pan_law.known = true;
    return run;
}

std::string account_of(const ARun& run) {
    return console_account(run.account, run.tallies) + media_account(run.tallies) +
           closing_notes(run.account, run.tallies);
}

std::string lines_beyond(const std::string& text, const std::string& plain) {
    std::set<std::string> known;
    std::istringstream plain_lines(plain), lines(text);
    for (std::string line; std::getline(plain_lines, line);) known.insert(line);
    std::string beyond;
    for (std::string line; std::getline(lines, line);) {
        if (!known.contains(line)) beyond += line + "\n";
    }
    return beyond;
}

TEST(AccountAndReport, SayOfEachFormOfARunWhatAPlainOneDoesNotHold) {
    const ARun plain = plain_run();
    std::string told;
    for (const Form& form : forms) {
        ARun run = plain_run();
        form.set(run);
        told += std::string("=== ") + form.what + "\n";
        told += lines_beyond(account_of(run), account_of(plain)) + "--- report\n";
        told += lines_beyond(conversion_report(run.report, run.tallies).text,
                             conversion_report(plain.report, plain.tallies).text);
    }
    builder::expect_golden(TANROVE_REPORT_TESTS_FOLDER "/told_forms.txt", told);
}

}  // namespace
}  // namespace tanrove
