// The steps of the mix, in the order in which each finds what it needs: which tracks there are and
// their groups; where they play, and which are left out; then, with the indices final, what they
// receive, their folders and channel counts; at last levels, envelopes and colours.
#include "mix/plan_mix.hpp"

#include <algorithm>
#include <utility>

#include "mix/channel_counts.hpp"
#include "mix/folder_depths.hpp"
#include "mix/folder_tree.hpp"
#include "mix/key_inputs.hpp"
#include "mix/mute_and_solo.hpp"
#include "mix/panner_envelopes.hpp"
#include "mix/plan_panners.hpp"
#include "mix/plan_routes.hpp"
#include "mix/track_envelopes.hpp"
#include "mix/track_groups.hpp"
#include "mix/track_levels.hpp"
#include "mix/track_strips.hpp"
#include "mix/track_views.hpp"

namespace tanrove {

namespace {

/// MIDI tracks and VCA masters play no sound.
TrackNameSet silent_names(const std::vector<StripRow>& rows) {
    TrackNameSet names;
    for (const StripRow& row : rows) {
        const bool is_silent = row.type == StripRowType::midi || row.type == StripRowType::vca;
        if (is_silent) names.insert(shown_name(row));
    }
    return names;
}

/// The silent ones, and those that play somewhere else.
TrackNameSet names_without_main_send(const std::vector<TrackPlan>& tracks,
                                     const TrackNameSet& silent) {
    TrackNameSet names = silent;
    for (const auto& track : tracks) {
        if (!track.mixer.plays_to_parent) names.insert(track.session_name);
    }
    return names;
}

TrackNameSet names_of(const std::vector<TrackPlan>& tracks) {
    TrackNameSet names;
    for (const auto& track : tracks) {
        if (!track.session_name.empty()) names.insert(track.session_name);
    }
    return names;
}

TrackNameSet folder_names(const FolderInput& folders) {
    const FolderTree tree = read_folder_tree(folders.strip_table, folders.folder_table);
    TrackNameSet names;
    for (std::size_t i = 0; i < tree.rows.size(); ++i) {
        if (tree.rows[i].kind != FolderKind::none) names.insert(folders.strip_table[i].name);
    }
    return names;
}

/// Takes out the tracks that the run leaves out, from the folders as well, and returns their names.
TrackNameSet prune_tracks(std::vector<TrackPlan>& tracks, const MixInput& input,
                          const std::vector<StripRow>& rows, const Routes& routes,
                          const TrackGroups& groups, FolderInput& folders, MixTallies& tallies) {
    TrackNameSet before = names_of(tracks);
    leave_out_click_tracks(tracks, rows, input.routing.rows, folder_names(folders), input.click,
                           tallies.click);
    if (input.leave_out.skip_hidden_tracks || input.leave_out.skip_inactive_tracks) {
        leave_out_tracks(tracks, TrackStrips(tracks, {rows, {}, input.displays}), input.leave_out,
                         track_needs(routes, folders.strip_table, folders.folder_table, groups),
                         tallies.leave_out);
    }
    TrackNameSet left_out = names_left_out(std::move(before), tracks);
    forget_tracks(left_out, folders.strip_table, folders.folder_table);
    count_tracks(tracks, rows, folder_names(folders), tallies.tracks);
    return left_out;
}

}  // namespace

MixPlan plan_mix(MixInput input, MixTallies& tallies) {
    MixPlan mix;
    const std::vector<StripRow> rows = input.assembly.strips.rows;
    const MixerRecords mixer{rows, input.strips, input.displays};
    const TempoClock clock(input.tempo_map, input.tempo_bpm);
    EnvelopePlanner envelopes(clock, input.rate_hz);

    const TrackGroups groups = link_groups(input.groups, rows, input.vca_slots, tallies.groups);
    const std::vector<MidiTrackSettings> midi_settings = input.midi.settings;
    input.assembly.vca_fader_db = groups.vca_fader_db;
    const Routes routes = resolve_routes(rows, input.routing, input.assembly.inactive_names);
    FolderInput folders;
    folders.strip_table = input.assembly.strip_table;
    folders.folder_table = std::move(input.folder_table);
    mix.tracks = assemble_tracks(std::move(input.assembly), tallies.tracks);
    attach_midi(mix.tracks, std::move(input.midi), rows, tallies.tracks, tallies.midi);
    const TrackNameSet left_out =
        prune_tracks(mix.tracks, input, rows, routes, groups, folders, tallies);
    set_group_flags(mix.tracks, groups);

    const TrackStrips strips(mix.tracks, mixer);
    mix.strip_rows = strips.rows();
    const RoutingView routing{strips, routes, input.routing};
    const SendEnvelope send_envelope = [&](const char* block, EnvelopeKind kind, const Lane& lane) {
        return envelopes.plan(block, kind, lane, tallies.levels.envelopes);
    };
    settle_unknown_widths(mix.tracks, routing);
    plan_outputs(mix.tracks, routing, tallies.routing);
    PannerEnvelopePlanner panner_envelopes(clock, input.rate_hz);
    mix.panner_tries = plan_panners(mix.tracks, routing, panner_envelopes, tallies.panners);
    count_panner_lanes_left_out(mix.tracks, strips, tallies.panners);
    plan_key_inputs(mix.tracks, routing, send_envelope, tallies.routing);
    plan_sends(mix.tracks, routing, send_envelope, tallies.routing);
    folders.silent = silent_names(rows);
    folders.without_main_send = names_without_main_send(mix.tracks, folders.silent);
    plan_folders(mix.tracks, folders, tallies.folders);
    settle_channel_counts(mix.tracks, routing, tallies.routing);

    settle_views(mix.tracks, strips, tallies.views);
    mix.comments = place_comments(mix.tracks, strips, input.comment_place, tallies.comments);
    plan_levels(mix.tracks, strips, routes, envelopes, tallies.levels);
    count_midi_tracks(mix.tracks, strips, tallies.midi);
    mix.has_solo_track = settle_solos(mix.tracks, strips, groups, tallies.solos);
    keep_pre_fader_sends(mix.tracks, tallies.routing);
    mix.master = plan_master(input.master, envelopes, tallies.levels, tallies.master);
    mix.master.channels = tallies.routing.master_channels;
    place_master_track(mix.master, input.master.masters.row, strips, mix.tracks);
    mix.strip_tracks = plan_strip_tracks(mix.tracks, left_out, mixer, envelopes, tallies.levels);
    if (!mix.strip_tracks.empty()) {
        const TrackStrips their_strips(mix.strip_tracks, mixer);
        count_panner_lanes_left_out(mix.strip_tracks, their_strips, tallies.panners);
    }
    tallies.levels.mixer_strips =
        static_cast<int>(std::ranges::count(input.strips, true, &Strip::present));
    mix.video = plan_video(input.video, clock, tallies.video);
    const ColourCoding coding(rows, input.displays, midi_settings, input.colours.midi_outputs,
                              groups);
    plan_colours({mix.tracks, mix.strip_tracks, mix.master, mix.video}, input.colours, coding,
                 groups, tallies.colours);
    return mix;
}

}  // namespace tanrove
