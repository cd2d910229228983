// The account and the report whole, in their order, with another number for each counter of a
// record, so that a sentence with the wrong one shows; and the forms of its head.
#include "report/console_account.hpp"

#include <gtest/gtest.h>

#include <tuple>

#include "report/conversion_report.hpp"
#include "support/golden_text.hpp"

namespace tanrove {
namespace {

AccountFacts facts_of_a_run() {
    AccountFacts facts;
    facts.product = "Pro Tools Ultimate";
    facts.product_version = "2019.6.0";
    facts.sample_rate_hz = 44100;
    facts.tempo_bpm = 97.5;
    facts.project_path = "/song/song.rpp";
    facts.media_dir = "/song/Audio Files";
    return facts;
}

/// What the head of a project tells where the session says nothing out of the ordinary.
HeadTallies plain_head() {
    HeadTallies head;
    head.meters.has_map = true;
    head.pan_law.known = true;
    return head;
}

/// A plug-in of each fate, each told with its reason.
ChainTallies chains_with_everything() {
    ChainTallies chains;
    for (const OutcomeKind kind :
         {OutcomeKind::carried, OutcomeKind::without_settings, OutcomeKind::aax_only,
          OutcomeKind::not_recognized, OutcomeKind::left_out_unheard,
          OutcomeKind::left_out_without_settings, OutcomeKind::left_out_not_installed}) {
        PluginOutcome outcome;
        outcome.key = "MakePrd1";
        outcome.display_name = "Fate " + std::to_string(static_cast<int>(kind));
        outcome.kind = kind;
        outcome.reason = "its reason";
        outcome.not_installed = kind == OutcomeKind::carried;
        chains.outcomes.push_back(outcome);
    }
    chains.outcomes_on_master = 1;
    chains.outcomes_a_track = {2, 4, 0};
    chains.plugin_list_missing = true;
    std::tie(chains.without_strip, chains.carried_bypassed, chains.inactive_offline) =
        std::tuple(11, 12, 13);
    std::tie(chains.written_offline, chains.master_slots, chains.master_keys) =
        std::tuple(21, 22, 23);
    chains.multi_mono = {"Voice / One"};
    chains.midi_switched_off = {"Voice / Two"};
    chains.misled_claps = {"Voice / Three"};
    chains.lanes = {1, 2, 3, 4, 5, 6, 7};
    chains.trims = {.instances = 31,
                    .gains_carried = 32,
                    .below_measured = {"Voice: -14.50 dB"},
                    .different_gains = 33,
                    .on_wide_tracks = 34,
                    .inverted_tracks = 35,
                    .cancelled = {"Voice"},
                    .mixed_wide = {"Ambience"},
                    .one_sided = 36,
                    .one_sided_declined = 37,
                    .switched_off = 38,
                    .without_switch = 39};
    chains.stand_ins.none_wanted = true;
    chains.stand_ins.declined = 40;
    chains.stand_ins.written = 41;
    chains.stand_ins.notes = {{"EQ3 7-Band: this is approximated", 42}};
    chains.stand_ins.eq_fits = {.fitted_bands = 43, .extra_sections = 44, .worst_db = 0.61};
    chains.stand_ins.one_pole_filters = 45;
    return chains;
}

HeadTallies head_with_everything() {
    HeadTallies head = plain_head();
    head.tempo = {
        .changes = 1,
        .first_point_refused = true,
        .breaks_off = {.event = 3, .stored = 23},
        .bpm = 97.5,
        .last_bpm = 51,
        .last_seconds = 1.25,
        .ramps_wanted = true,
        .ramps = {.written = 2, .left_as_steps = 3, .greatest_difference_seconds = 0.001}};
    head.meters.changes = {{.bar = 5, .numerator = 3, .denominator = 4}};
    head.meters.measure_offset = -3;
    head.meters.repeated = {{.bar = 9, .numerator = 3, .denominator = 4}};
    head.markers = {.markers = 1,
                    .regions = 2,
                    .comments = 3,
                    .without_time = 4,
                    .coloured = 5,
                    .unknown_colours = 6,
                    .unknown_colour_slots = {7}};
    head.pan_law.depth_db = -4.5;
    head.pan_law.worst_error_db = 0.6;
    head.recording = {.bits = 32, .is_float = true, .is_aiff = false, .written = true};
    head.timecode.written = true;
    head.timecode.rate = "30 drop";
    head.timecode.start = "01:00:00;00";
    head.timecode.offset_seconds = 3600;
    head.timecode.runs_at = "30";
    head.grid.quarter_notes = 0.25;
    head.grid.other_unit = GridSetting{.unit = CountUnit::samples, .text = "10000"};
    head.grid.nudge = GridSetting{.bars = 0, .beats = 1, .ticks = 60};
    return head;
}

RunTallies every_counter_counted() {
    RunTallies tallies;
    tallies.head = head_with_everything();
    auto& timeline = tallies.timeline;
    timeline = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    timeline.fades = {1, 2, 3, 4, 5, 6, 7, 8, 9, 2.42, true};
    timeline.covering = {1, 2, 3};
    timeline.clip_groups = {1, 2, 3, 4, 5, 6, 7, 8, {"Choir"}};
    timeline.gain = {.clips = 1,
                     .in_groups_with_gain = 2,
                     .in_groups_with_line = 3,
                     .groups_with_line = {"Chorus"},
                     .lines_past_limit = 4,
                     .count_disagreements = 5};
    timeline.stretch = {1, 2, 3, 4, 5, 6, 7, 8, 9, {{"Vox", 1.1}}};
    timeline.loops = {1, 2,
                      3, 4,
                      5, {{"Vox", "beat", 2, 4, 3}},
                      6, {{LoopRefusal::unknown_mode, "Vox", "beat", 1.5}}};
    timeline.loops.listed.push_back(
        {.refusal = LoopRefusal::no_clip, .stored_position = 96000, .placement_type = 0x1056});
    tallies.takes = {1, 2, 3, 4, 5, 6};
    auto& mix = tallies.mix;
    mix.tracks = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    mix.click = {{"Click"}, {"Click 2"}, "Click 2"};
    mix.leave_out = {{"Old"}, {"Off"}, {"Verb (Vox needs it)"}};
    mix.comments = {{"Vox", "Bass"}, CommentPlace::items, 1};
    mix.levels = {1, 2, 3, 4, 5, 6, 7, {"Off"}, {"Side"}, {"Wide"}, {8, 9, 10, 11}};
    mix.solos = {{"Solo"}, {"Safe"}, 1, 2, 3};
    mix.views = {1, 2};
    tallies.written = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    const std::vector<std::string> many(13, "Cue");  // only some lists end at twelve
    mix.master = {.master_faders = 2,
                  .insert_count = 3,
                  .is_moved_before_plugins = true,
                  .track_failed = true,
                  .name = "Print",
                  .tracks_through_master = 4};
    auto& r = mix.routing;
    std::tie(r.sends, r.return_tracks, r.panned_sends, r.sends_off) = std::tuple(1, 2, 3, 4);
    std::tie(r.sends_into_surround, r.sends_left_out, r.send_pan_lanes) = std::tuple(5, 18, 6);
    std::tie(r.outputs_into_buses, r.outputs_by_input, r.outputs_by_pair) = std::tuple(7, 8, 9);
    std::tie(r.outputs_by_part, r.parted_legs, r.wide_auxes) = std::tuple(19, 10, 11);
    std::tie(r.master_channels, r.keys_left_out, r.keys_on_first_pair) = std::tuple(12, true, 13);
    std::tie(r.keys_on_further_pairs, r.tracks_passing_first_pair) = std::tuple(14, 15);
    std::tie(r.unresolved_keys, r.misled_keys) = std::tuple(16, 17);
    r.tracks_of_sends_left_out = {"Vox"};
    r.two_knob_tracks = {"Pad"};
    r.taken_from_hardware = {"Stem"};
    r.without_output = r.unmuted_sources = many;
    r.leading_astray = {"Amb"};
    r.tracks_of_misled_keys = {"Bass"};
    r.silent_sources = {"Click"};
    r.hardware_inserts = {"Vox: Insert 1-2"};
    r.tracks_of_instruments = {"Keys"};
    mix.panners = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, many};
    mix.groups = {.listed = {{"Drums", std::nullopt, {"Kick", "Snare"}}, {"Band", "VCA 1", {}}},
                  .written = 1,
                  .vca_written = {{"VCA 1", -6.5}},
                  .vca_without_master = {"Lost"},
                  .past_last_bit = 2,
                  .in_one_list = {"Old"},
                  .with_master_fader = 3,
                  .unlinked_attributes = {{"Drums", {2, 31}}},
                  .strips_differ = StripCounts{5, 4},
                  .edit_groups = {"Cuts"},
                  .of_unknown_kind = {"New"}};
    mix.folders = {
        1, 2, 3, 4, {"Keys"}, 5, {"Room out of Drums"}, {"Far out of Drums"}, {"Near (in Drums)"},
        6, 7};
    auto& c = mix.colours;
    c = {.schemes = {4, 5}, .theme = {.dark = true, .chosen = true, .session_older = true}};
    c.own_places = {60};
    c.unmeasured_places = {2, 4};
    std::tie(c.tracks_own, c.tracks_off_palette, c.tracks_by_scheme, c.tracks_without) =
        std::tuple(1, 2, 3, 4);
    std::tie(c.instrument_feeds, c.tracks_without_output, c.groups_without_slot) =
        std::tuple(5, 6, 7);
    std::tie(c.tracks_without_row, c.tracks_past_rows, c.clips_own, c.clips_hand_picked) =
        std::tuple(8, 9, 10, 11);
    std::tie(c.clips_off_palette, c.clips_not_measured, c.coloured_rows_left, c.lane_clips) =
        std::tuple(12, 13, 14, 15);
    std::tie(c.clips_by_scheme, c.scheme_not_measured, c.clips_left, c.midi_clips_as_listed) =
        std::tuple(16, 17, 18, 19);
    std::tie(c.video_clips_own, c.video_clips_coded, c.dark_measured, c.dark_derived) =
        std::tuple(20, 21, 22, 23);
    mix.midi = {1,  2,  3,  4,  5,  6,  7,  8,        9,  10, 11, 12, true, 13,
                14, 15, 16, 17, 18, 19, 20, {"Keys"}, 21, 22, 23, 24, 25,   {"Keys"}};
    mix.video = {1, 2, 25, true, true, {"Reel 1.mov"}, {"/old/Reel 2.mov"}, 3, 4};
    tallies.track_facts = {{"Vox", 1, 2}, {"Bass", 3, 4}, {"Verb"}};
    tallies.bare_strip_tracks = 1;
    tallies.frozen.frozen_tracks = 9;
    tallies.frozen.delivered = 1;
    for (auto reason = FreezeRefusal::several_renders; reason <= FreezeRefusal::no_temporary_file;
         reason = static_cast<FreezeRefusal>(static_cast<int>(reason) + 1)) {
        tallies.frozen.refused.push_back({"Gtr", reason, "Gtr-FZ.wav"});
    }
    tallies.track_table = {.names = {"A", "B"}, .from_strip_rows = true, .scanned_count = 1};
    tallies.not_carried = {true, 1, {"Long"}};
    tallies.clip_effects = {.inverted = 51,
                            .carried = 52,
                            .parts = {{"EQ", 53}, {"gate", 54}},
                            .notes = {{"this is left out", 55}},
                            .of_groups = 56};
    tallies.chains = chains_with_everything();
    tallies.builds.kept_on_vst3 = {{"MakePrd1", {"One", 1}}};
    tallies.builds.without_class = {"MakePrd1"};
    tallies.builds.kontakt = {.name = "Kontakt 7", .instances = 1, .predicted = true};
    tallies.builds.moved_to_clap = {"MakePrd2"};
    tallies.builds.kept_from_clap = {"MakePrd3"};
    tallies.written.untold_paths = {"/song/\"a'b`.wav"};
    tallies.media = {1, {{"Takes", 2}}, {"gone.wav"}, 3};
    return tallies;
}

std::string whole_account(const AccountFacts& facts, const RunTallies& tallies) {
    return console_account(facts, tallies) + media_account(tallies) + closing_notes(facts, tallies);
}

TEST(ConsoleAccount, PrintsEveryMessageInItsOrder) {
    AccountFacts facts = facts_of_a_run();
    facts.long_media = {.clips = 1, .longest_clip_seconds = 630, .longest_source_seconds = 3600};
    facts.usage_shared = true;
    const std::string account = whole_account(facts, every_counter_counted());
    builder::expect_golden(TANROVE_REPORT_TESTS_FOLDER "/whole_account.txt", account);
}

TEST(ConversionReport, PrintsEverySectionInItsOrder) {
    ReportFacts facts;
    facts.session_path = "/song/song.ptx";
    facts.project_path = "/song/song.rpp";
    facts.session_major = 2019;
    facts.bit_depth.bits = 24;
    facts.audio_format = AudioFormat::wav;
    facts.has_session_start = facts.no_stand_ins = facts.usage_shared = true;
    facts.instrument_tracks = 1;
    facts.console_warnings = 40;
    const auto report = conversion_report(facts, every_counter_counted());
    builder::expect_golden(TANROVE_REPORT_TESTS_FOLDER "/whole_report.txt", report.text);
    EXPECT_EQ(report.needs_look, 12) << "each item of its list once";
}

}  // namespace
}  // namespace tanrove
