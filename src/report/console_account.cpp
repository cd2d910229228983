// The table of contents of the account: every group of messages, in the order of the console. The
// order is part of what users and wrapping applications know, so a new group joins at its place
// under its heading and moves no other. A group with nothing to say prints nothing.
#include "report/console_account.hpp"

#include "report/account_automation.hpp"
#include "report/account_clip_gain.hpp"
#include "report/account_clip_groups.hpp"
#include "report/account_colours.hpp"
#include "report/account_covering.hpp"
#include "report/account_fades.hpp"
#include "report/account_folders.hpp"
#include "report/account_frozen.hpp"
#include "report/account_groups.hpp"
#include "report/account_head.hpp"
#include "report/account_items.hpp"
#include "report/account_left_out.hpp"
#include "report/account_levels.hpp"
#include "report/account_master.hpp"
#include "report/account_media.hpp"
#include "report/account_midi.hpp"
#include "report/account_not_carried.hpp"
#include "report/account_panners.hpp"
#include "report/account_plugins.hpp"
#include "report/account_routing.hpp"
#include "report/account_stretch.hpp"
#include "report/account_time.hpp"
#include "report/account_tracks.hpp"
#include "report/account_trims.hpp"
#include "report/account_video.hpp"

namespace tanrove {

namespace {

void print_head_and_mixer(TextBuffer& out, const AccountFacts& facts, const RunTallies& tallies) {
    // Head
    print_session_read(out, facts);
    print_project_written(out, facts);
    print_version_note(out, facts);

    // What was found
    print_counts(out, tallies.written);
    print_midi_content(out, tallies.mix.midi);

    // Strips, sends, outputs, key inputs
    print_mixer_strips(out, tallies.mix.levels);
    print_track_list_source(out, tallies.track_table);
    print_sends(out, tallies.mix.routing);
    print_midi_mutes(out, tallies.mix.midi);
    print_tracks_without_output(out, tallies.mix.routing);
    print_click_player(out, tallies.mix.click);
    print_send_details_and_outputs(out, tallies.mix.routing);
    print_bypassed_plugins(out, tallies.chains);
    print_master_order(out, tallies.mix.master);
    print_offline_plugins(out, tallies.chains);
    print_key_inputs(out, tallies.mix.routing);
    print_midi_triggers(out, tallies.chains);
    print_keys_left_out(out, tallies.mix.routing);
    print_misled_keys(out, tallies.chains);
    print_send_points(out, tallies.written);
    print_master_place(out, tallies.mix.master);

    // Automation and MIDI edges
    print_automation_points(out, tallies.written);
    print_midi_edges(out, tallies.mix.midi);
    print_dual_pan_points(out, tallies.mix.levels);
    print_plugin_automation(out, tallies.chains);
    print_modes_and_parked_faders(out, tallies.mix.levels);
}

void print_time_and_colours(TextBuffer& out, const AccountFacts& facts, const RunTallies& tallies) {
    // Tempo, stretch, fades, clip gain, loops
    print_tempo_lines(out, tallies.head.tempo, facts.sample_rate_hz);
    print_stretch(out, tallies.timeline.stretch);
    print_fade_counts(out, tallies.timeline.fades);
    print_clip_gain(out, tallies.timeline.gain);
    print_loops(out, tallies.timeline.loops);

    // Options in force, plug-in builds, track colours
    print_stand_in_options(out, tallies.chains);
    print_colour_options(out, tallies.mix.colours);
    print_plugin_builds(out, tallies.builds);
    print_track_colours(out, tallies.mix.colours);

    // Meter and memory locations
    print_meter_and_locations(out, tallies.head.meters, tallies.head.markers);

    // Colour coding and pan law
    print_colour_coding(out, tallies.mix.colours);
    print_pan_law(out, tallies.head.pan_law);
    print_clip_colours(out, tallies.mix.colours);
    print_clip_gain_envelopes(out, tallies.timeline.gain, tallies.takes);
}

void print_groups_and_tracks(TextBuffer& out, const RunTallies& tallies) {
    // Groups
    print_groups(out, tallies.mix.groups);
    print_further_masters(out, tallies.mix.master);

    // Track properties, comments, Trim, solo, folders
    print_views_and_solos(out, tallies.mix.views, tallies.mix.solos);
    print_midi_faders(out, tallies.mix.midi);
    print_tracks_of_instruments(out, tallies.mix.routing);
    print_automation_modes(out, tallies.mix.levels);
    print_midi_patches(out, tallies.mix.midi);
    print_unmatched_alternates(out, tallies.mix.tracks);
    print_comments(out, tallies.mix.comments);
    print_marker_comments(out, tallies.head.markers, tallies.mix.comments.place);
    print_trims(out, tallies.chains.trims);
    print_surround_folds(out, tallies.mix.tracks);
    print_soloed_and_muted(out, tallies.mix.solos);
    print_folders(out, tallies.mix.folders);
    print_unlinked_attributes(out, tallies.mix.groups);
    print_trims_of_sides(out, tallies.chains.trims);

    // Clip Effects, Melodyne, stand-ins, item timebase, bit depth, timecode, grid, video
    print_clip_effects(out, tallies.clip_effects);
    print_unmeasured_colours(out, tallies.mix.colours);
    print_melodyne_edits(out, tallies.not_carried);
    print_stand_ins(out, tallies.chains.stand_ins);
    print_item_timebase(out, tallies.written);
    print_real_time_properties(out, tallies.mix.midi);
    print_bit_depth(out, tallies.head.recording);
    print_timecode(out, tallies.head.timecode);
    print_clap_builds(out, tallies.builds);
    print_wide_auxes(out, tallies.mix.routing);
    print_panners(out, tallies.mix.panners);
    print_trims_switched_off(out, tallies.chains.trims);
    print_strips_without_switch(out, tallies.chains.trims);
    print_locked_clips(out, tallies.written);
    print_grid(out, tallies.head.grid);
    print_sample_based_midi(out, tallies.mix.midi);
    print_video(out, tallies.mix.video, tallies.mix.colours);
    print_groups_left_alone(out, tallies.mix.groups);
}

void print_edits_and_gaps(TextBuffer& out, const RunTallies& tallies) {
    // Hardware inserts, timebase, clip groups, lanes
    print_hardware_inserts(out, tallies.mix.routing);
    print_timebases(out, tallies.timeline);
    print_midi_clip_groups(out, tallies.mix.midi);
    print_clip_groups(out, tallies.timeline.clip_groups, tallies.written);
    print_inferred_tracks(out, tallies.timeline.stretch);
    print_matched_alternates_and_merges(out, tallies.mix.tracks);
    print_sides_and_wide_strips(out, tallies.mix.levels);
    print_lanes_and_empty_tracks(out, tallies.mix.tracks);

    // Tracks left out or kept
    print_left_out_tracks(out, tallies.mix.click, tallies.mix.leave_out);
    print_tracks_without_strip_row(out, tallies.mix.tracks);
    print_frozen_tracks(out, tallies.frozen);
    print_silent_tracks_and_names(out, tallies.mix.tracks);

    // Covering, fades, alternates
    print_covering(out, tallies.timeline.covering);
    print_dropped_fade_references(out, tallies.timeline);
    print_fade_shapes(out, tallies.timeline.fades, tallies.takes);
    print_followed_ramps(out, tallies.mix.levels.envelopes);
    print_stretch_across_tempo_changes(out, tallies.timeline.stretch);
    print_neutral_s_curves(out, tallies.timeline.fades);
    print_left_out_playlists(out, tallies.timeline, tallies.mix.tracks);

    // Plug-ins
    print_plugins(out, tallies.chains, tallies.builds);

    // What this build does not carry yet
    print_not_carried(out, tallies.not_carried);
}

}  // namespace

std::string console_account(const AccountFacts& facts, const RunTallies& tallies) {
    TextBuffer out;
    print_head_and_mixer(out, facts, tallies);
    print_time_and_colours(out, facts, tallies);
    print_groups_and_tracks(out, tallies);
    print_edits_and_gaps(out, tallies);
    return out.text();
}

std::string media_account(const RunTallies& tallies) {
    TextBuffer out;
    print_sibling_files(out, tallies.media, tallies.written);
    print_missing_files(out, tallies.media);
    print_untold_paths(out, tallies.written);
    return out.text();
}

std::string closing_notes(const AccountFacts& facts, const RunTallies& tallies) {
    TextBuffer out;
    print_long_media(out, facts.long_media);
    print_session_depth_note(out, tallies.head.recording);
    print_media_folder(out, facts, tallies.written);
    print_privacy(out, facts.usage_shared);
    return out.text();
}

}  // namespace tanrove
