// The account whole, with every counter at 1, in its order; and the forms of its head.
#include "report/console_summary.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

SummaryFacts facts_of_a_run() {
    SummaryFacts facts;
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
        .ramps = {.written = 1, .left_as_steps = 1, .greatest_difference_seconds = 0.001}};
    head.meters.changes = {{.bar = 5, .numerator = 3, .denominator = 4}};
    head.meters.repeated = {{.bar = 9, .numerator = 3, .denominator = 4}};
    head.markers = {.markers = 1,
                    .regions = 1,
                    .without_time = 1,
                    .coloured = 1,
                    .unknown_colours = 1,
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
    head.grid.nudge = GridSetting{.bars = 0, .beats = 1, .ticks = 60};
    return head;
}

RunTallies every_counter_at_one() {
    RunTallies tallies;
    tallies.head = head_with_everything();
    tallies.timeline = {.tick_based_tracks = 1,
                        .sample_based_tracks = 1,
                        .unpaired_tracks = 1,
                        .unpaired_are_tick_based = 1,
                        .judged_without_records = 1,
                        .judged_between_records = 1,
                        .sync_points = 1,
                        .sync_table_refused = 1,
                        .fade_references_dropped = 1,
                        .deleted_placements = 1,
                        .stacked_placements = 1,
                        .fades = {.fade_ins = 1,
                                  .fade_outs = 1,
                                  .crossfades = 1,
                                  .without_edge = 1,
                                  .not_understood = 1,
                                  .approximated = 1,
                                  .approximated_steps = 1,
                                  .unmeasured = 1,
                                  .neutral_s_curves = 1,
                                  .worst_db = 2.42,
                                  .plain_fades = true},
                        .covering = {1, 1, 1},
                        .clip_groups = {1, 1, 1, 1, 1, 1, 1, {"Choir"}},
                        .gain = {.clips = 1,
                                 .in_groups_with_gain = 1,
                                 .in_groups_with_line = 1,
                                 .groups_with_line = {"Chorus"},
                                 .lines_past_limit = 1,
                                 .count_disagreements = 1},
                        .stretch = {.pitch_shifted = 1,
                                    .with_markers = 1,
                                    .trims_with_markers = 1,
                                    .unsliced = 1,
                                    .by_map = 1,
                                    .inferred = 1,
                                    .barely = 1,
                                    .across_tempo_changes = 1,
                                    .past_marker_limit = 1,
                                    .inferred_tracks = {{"Vox", 1.1}}},
                        .loops = {.looped = 1,
                                  .passes = 4,
                                  .with_fades = 1,
                                  .ended_by_length = 1,
                                  .unlooped = 4,
                                  .listed = {{LoopRefusal::unknown_mode, "Vox", "beat", 1.5},
                                             {.refusal = LoopRefusal::other_length,
                                              .track = "Vox",
                                              .clip = "beat",
                                              .start_seconds = 2,
                                              .loop_seconds = 4,
                                              .written_seconds = 3},
                                             {.refusal = LoopRefusal::no_clip,
                                              .stored_position = 96000,
                                              .placement_type = 0x1056}}}};
    tallies.takes = {.gain_envelopes = 1,
                     .gain_ramps = 1,
                     .gain_ramp_points = 1,
                     .fades_as_envelope = 1,
                     .fades_as_nearest_shape = 1,
                     .steps_as_nearest_shape = 1};
    tallies.mix.tracks = {.stereo_merges = 1,
                          .surround_folds = 1,
                          .alternates_matched = 1,
                          .alternates_folded_into_empty_parent = 1,
                          .alternates_kept_as_lanes = 1,
                          .alternates_set_aside = 1,
                          .alternates_unmatched = 1,
                          .tracks_written_empty = 1,
                          .tracks_without_strip_row = 1,
                          .inactive_tracks = 1,
                          .voice_off_tracks = 1,
                          .names_not_bound = 1};
    tallies.mix.click = {{"Click"}, {"Click 2"}, "Click 2"};
    tallies.mix.leave_out = {{"Old"}, {"Off"}, {"Verb (Vox needs it)"}};
    tallies.mix.comments.tracks = {"Vox", "Bass"};
    tallies.mix.levels = {.mixer_strips = 1,
                          .parked_faders = 1,
                          .set_to_read = 1,
                          .other_modes = 1,
                          .dual_pan_points = 1,
                          .dual_pan_tracks = 1,
                          .panners_left_still = 1,
                          .automation_off = {"Off"},
                          .one_sided = {"Side"},
                          .wide_strips = {"Wide"},
                          .envelopes = {.followed_ramps = 1, .ramp_points = 1}};
    tallies.mix.solos = {.soloed = {"Solo"},
                         .solo_safe = {"Safe"},
                         .dropped = 1,
                         .kept_with_mute_lane = 1,
                         .solo_track = 1};
    tallies.mix.views = {.hidden_tracks = 1, .tracks_with_height = 1};
    tallies.written = {.tracks = 1,
                       .clips = 1,
                       .notes = 1,
                       .clips_in_siblings = 1,
                       .locked_clips = 1,
                       .time_tracks = 1,
                       .beats_tracks = 1,
                       .automation_points = 1,
                       .automated_tracks = 1,
                       .send_points = 1};
    tallies.mix.routing = {.sends = 2,
                           .return_tracks = 1,
                           .panned_sends = 1,
                           .sends_off = 1,
                           .send_pan_lanes = 1,
                           .two_knob_tracks = {"Pad"},
                           .outputs_into_buses = 1,
                           .outputs_by_input = 1,
                           .outputs_by_pair = 1,
                           .parted_legs = 1,
                           .without_output = {"Dry", "Off"},
                           .wide_auxes = 1,
                           .keys_left_out = true,
                           .keys_on_first_pair = 1,
                           .keys_on_further_pairs = 1,
                           .tracks_passing_first_pair = 1,
                           .unresolved_keys = 1,
                           .misled_keys = {"Bass"},
                           .unmuted_sources = {"Cue"},
                           .silent_sources = {"Click"},
                           .hardware_inserts = {"Vox: Insert 1-2"},
                           .tracks_of_instruments = {"Keys"}};
    tallies.mix.groups = {
        .listed = {{"Drums", std::nullopt, {"Kick", "Snare"}}, {"Band", "VCA 1", {}}},
        .written = 1,
        .vca_written = {{"VCA 1", -6.5}},
        .vca_without_master = {"Lost"},
        .past_last_bit = 1,
        .in_one_list = {"Old"},
        .with_master_fader = 1,
        .unlinked_attributes = {{"Drums", {2, 31}}},
        .strips_differ = StripCounts{5, 4},
        .edit_groups = {"Cuts"},
        .of_unknown_kind = {"New"}};
    tallies.mix.folders = {.routing_written = 1,
                           .basic_written = 2,
                           .empty = 1,
                           .all_members_moved_out = 1,
                           .not_written = {"Keys"},
                           .nested = 1,
                           .folders_moved = {"Room out of Drums"},
                           .tracks_moved = {"Far out of Drums"},
                           .could_not_move = {"Near (in Drums)"},
                           .by_order = 1,
                           .maybe_nested = 1};
    tallies.mix.colours = {.schemes = {4, 5},
                           .theme = {.dark = true, .chosen = true, .session_older = true},
                           .tracks_own = 1,
                           .tracks_off_palette = 1,
                           .tracks_by_scheme = 1,
                           .tracks_without = 1,
                           .instrument_feeds = 1,
                           .tracks_without_output = 1,
                           .groups_without_slot = 1,
                           .tracks_without_row = 1,
                           .tracks_past_rows = 1,
                           .clips_own = 1,
                           .own_places = {60},
                           .clips_hand_picked = 1,
                           .clips_off_palette = 1,
                           .clips_not_measured = 1,
                           .unmeasured_places = {2, 4},
                           .coloured_rows_left = 1,
                           .lane_clips = 1,
                           .clips_by_scheme = 1,
                           .scheme_not_measured = 1,
                           .clips_left = 1,
                           .midi_clips_as_listed = 1,
                           .dark_measured = 1,
                           .dark_derived = 1};
    tallies.mix.midi = {.controllers = 1,
                        .sysex = 1,
                        .sysex_outside = 1,
                        .mismatched_regions = 1,
                        .trimmed_clips = 1,
                        .incomplete_clips = 1,
                        .muted_tracks = 1,
                        .mute_lane_tracks = 1,
                        .other_lanes = 1,
                        .too_short_events = 1,
                        .muted_events = 1,
                        .unmuted_events = 1,
                        .truncation_wanted = true,
                        .notes_past_edge = 1,
                        .tail_cuts = 1,
                        .head_cuts = 1,
                        .covered_clips = 1,
                        .offsets_at_other_tempo = 1,
                        .sample_based_clips = 1,
                        .sample_based_overlaps = 1,
                        .fader_tracks = 1,
                        .patch_tracks = {"Keys"},
                        .real_time_tracks = 1,
                        .transposed_past_range = 1,
                        .unapplied_real_time_tracks = 1,
                        .unmatched_real_time_rows = 1,
                        .clip_groups = 1,
                        .clip_group_tracks = {"Keys"}};
    tallies.mix.video = {.tracks = 1,
                     .items = 1,
                     .frame_rate = 25,
                     .reduced_quality = true,
                     .missing_movies = {"Reel 1.mov"},
                     .clips_without_region = 1,
                     .clips_without_movie = 1};
    tallies.frozen.delivered = 1;
    for (auto reason = FreezeRefusal::several_renders; reason <= FreezeRefusal::no_temporary_file;
         reason = static_cast<FreezeRefusal>(static_cast<int>(reason) + 1)) {
        tallies.frozen.refused.push_back({"Gtr", reason, "Gtr-FZ.wav"});
    }
    tallies.track_table = {.names = {"A", "B"}, .from_strip_rows = true, .scanned_count = 1};
    tallies.not_carried = {.unnumbered_clips = 1, .shaped_clips = 1, .plugins = 1};
    tallies.media = {
        .files_in_siblings = 1, .files_by_folder = {{"Takes", 1}}, .missing_files = {"gone.wav"}};
    return tallies;
}

std::string whole_account(const SummaryFacts& facts, const RunTallies& tallies) {
    return console_summary(facts, tallies) + media_summary(tallies) + closing_notes(facts, tallies);
}

TEST(ConsoleSummary, PrintsEveryMessageInItsOrder) {
    SummaryFacts facts = facts_of_a_run();
    facts.long_media = {.clips = 1, .longest_clip_seconds = 630, .longest_source_seconds = 3600};
    facts.usage_shared = true;
    const std::string account = whole_account(facts, every_counter_at_one());

    const std::string golden = TANROVE_REPORT_TESTS_FOLDER "/whole_account.txt";
    if (std::getenv("TANROVE_REFRESH_GOLDENS") != nullptr) {
        ASSERT_TRUE(builder::write_file_text(golden, account));
    }
    EXPECT_EQ(account, builder::file_text(golden));
}

TEST(ConsoleSummary, OfASessionWithNothingToNoteIsHeadCountsAndClosingLines) {
    SummaryFacts facts = facts_of_a_run();
    facts.product = "Pro Tools HD";
    facts.product_version = "12.5.0";
    RunTallies tallies;
    tallies.head = plain_head();
    tallies.mix.midi.truncation_wanted = true;
    EXPECT_EQ(whole_account(facts, tallies),
              "\n"
              "  Read:  Pro Tools HD 12.5.0, 44100 Hz, 97.5 BPM\n"
              "  Wrote: /song/song.rpp\n"
              "\n"
              "  0 tracks, 0 clips, 0 MIDI notes\n"
              "  --truncate-midi-to-clip: no note runs past a clip edge, so nothing is cut.\n"
              "  meter 4/4, read from the session\n"
              "  Pan law: -3.0 dB, read from the session's Pan Depth\n"
              "      and written as the project's pan law.\n"
              "  Media folder written into every FILE line:\n"
              "      /song/Audio Files\n"
              "  If REAPER shows OFFLINE, that path is wrong - re-run with\n"
              "      --audio-dir \"<the folder your .wav files are really in>\"\n"
              "\n"
              "  PRIVACY: this program contains no network code. No information\n"
              "      about this session was transmitted from this computer: no\n"
              "      upload, no telemetry, no usage reporting. A report reaches\n"
              "      vorlane only when it is attached to an email and sent.\n");
}

TEST(ConsoleSummary, OfACheckOfASessionWithoutAVersionSaysSo) {
    SummaryFacts facts = facts_of_a_run();
    facts.product_version.clear();
    facts.check_only = true;
    EXPECT_TRUE(console_summary(facts, {}).starts_with(
        "\n  Read:  Pro Tools (this session does not record which version saved it), 44100 Hz, "
        "97.5 BPM\n"
        "  Not written (--check).\n"
        "\n"
        "  0 tracks"));
}

TEST(ClosingNotes, TellABitDepthThatTheProjectDoesNotHoldAheadOfTheMediaFolder) {
    RunTallies tallies;
    tallies.head.recording.bits = 24;
    const std::string notes = closing_notes(facts_of_a_run(), tallies);
    EXPECT_TRUE(notes.starts_with("  The session records at 24-bit. Existing")) << notes;
    EXPECT_NE(notes.find("overdub.\n  Media folder written into every FILE line:\n"),
              std::string::npos);
}

}  // namespace
}  // namespace tanrove
