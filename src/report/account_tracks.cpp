// The account's sentences about tracks, their timebases and their playlists.
#include "report/account_tracks.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

void print_unpaired_tracks(TextBuffer& out, const TimelineTallies& tallies) {
    if (tallies.unpaired_tracks > 0) {
        out.print(
            "      %d of them could not be paired with their own timebase record.\n"
            "      Every record in this session says %s, so they are\n"
            "      read that way too.\n",
            tallies.unpaired_tracks,
            tallies.unpaired_are_tick_based != 0 ? "tick-based" : "sample-based");
    }
    print_count(out, tallies.judged_between_records,
                "      %d of them could not be paired with their own timebase record,\n"
                "      and this session's records do not agree, so each was judged by\n"
                "      the size of its clip positions. Please check where their clips\n"
                "      start.\n");
    print_count(out, tallies.judged_without_records,
                "      %d of them: this session holds no timebase records at all, so each\n"
                "      was judged by the size of its clip positions. Please check where\n"
                "      their clips start.\n");
}

}  // namespace

void print_track_list_source(TextBuffer& out, const SessionTrackTable& table) {
    if (!table.from_strip_rows) return;
    out.print("  track list taken from the strip rows (name scan found %d of %d)\n",
              static_cast<int>(table.scanned_count), count_of(table.names));
}

void print_unmatched_alternates(TextBuffer& out, const TrackTallies& tallies) {
    print_count(out, tallies.alternates_unmatched,
                "  %d alternate playlist(s) could not be matched to a parent track by\n"
                "      name and arrive as their own tracks, MUTED -- Pro Tools plays one\n"
                "      playlist per track, so these never sounded there either. Unmute\n"
                "      one in REAPER to audition it.\n");
}

void print_comments(TextBuffer& out, const CommentTallies& tallies) {
    if (tallies.tracks.empty()) return;
    out.print("  %d track(s) carry a COMMENT in Pro Tools:%s\n", count_of(tallies.tracks),
              quoted_names(tallies.tracks, no_cap).c_str());
    switch (tallies.place) {
        case CommentPlace::project_notes:
            return out.append(
                "      Each is a \"Track: comment\" line in the project notes\n"
                "      (--comments item puts it on its track).\n");
        case CommentPlace::nowhere:
            return out.append("      NOT WRITTEN (--comments none).\n");
        case CommentPlace::items:
            out.append(
                "      Each arrives as the notes of a small empty item at the\n"
                "      start of its track.\n");
            print_count(out, tallies.without_item,
                        "      %d of them, of master faders and video tracks, are in the\n"
                        "      project notes instead.\n");
            return;
    }
}

void print_marker_comments(TextBuffer& out, const MarkerTallies& tallies, CommentPlace place) {
    if (place == CommentPlace::nowhere) {
        print_count(
            out, tallies.comments,
            "  %d marker(s) carry a COMMENT in Pro Tools: NOT WRITTEN (--comments none).\n");
        return;
    }
    print_count(out, tallies.comments,
                "  %d marker(s) carry a COMMENT in Pro Tools: each is a \"Marker N {name}:\n"
                "      comment\" line in the project notes.\n");
}

void print_surround_folds(TextBuffer& out, const TrackTallies& tallies) {
    print_count(out, tallies.surround_folds,
                "  %d surround track(s) folded from their Pro Tools legs into one\n"
                "      multichannel track each, the way a stereo pair is folded: one\n"
                "      track, one item, one insert chain, channels in the file's order.\n"
                "      A wide strip's own panner is not carried; a mono or stereo\n"
                "      source panned into a surround bus gets ReaSurroundPan (below).\n");
}

void print_timebases(TextBuffer& out, const TimelineTallies& tallies) {
    if (tallies.tick_based_tracks > 0 || tallies.sample_based_tracks > 0) {
        out.print("  %d tick-based tracks, %d sample-based\n", tallies.tick_based_tracks,
                  tallies.sample_based_tracks);
        print_unpaired_tracks(out, tallies);
    }
    print_count(out, tallies.sync_points,
                "  %d clip(s) carry a sync point and are placed by it, as Pro Tools\n"
                "      places them: the clip starts that far before its stored position\n");
    if (tallies.sync_table_refused > 0) {
        out.print(
            "  WARNING: this session has clips with sync points that could not be\n"
            "      told apart, so each of them stands with its head where its sync\n"
            "      point belongs, later than in Pro Tools. Please send the session\n"
            "      in.\n");
    }
}

void print_matched_alternates_and_merges(TextBuffer& out, const TrackTallies& tallies) {
    print_count(out, tallies.alternates_matched,
                "  %d alternate playlists matched to their parent track\n");
    print_count(out, tallies.alternates_folded_into_empty_parent,
                "  %d alternate playlist(s) folded into a parent that has no clips of its own\n");
    print_count(out, tallies.stereo_merges,
                "  %d Pro Tools stereo track(s) merged from split mono\n");
}

void print_lanes_and_empty_tracks(TextBuffer& out, const TrackTallies& tallies) {
    print_count(out, tallies.alternates_kept_as_lanes, "  %d written as REAPER fixed lanes\n");
    print_count(out, tallies.tracks_written_empty,
                "  %d track(s) had no clips and were written empty, mixer state intact\n");
}

void print_tracks_without_strip_row(TextBuffer& out, const TrackTallies& tallies) {
    print_count(out, tallies.tracks_without_strip_row,
                "  %d track(s) matched no strip row and were appended at the end --\n"
                "      please send this session file, that should not happen\n");
}

void print_silent_tracks_and_names(TextBuffer& out, const TrackTallies& tallies) {
    print_count(out, tallies.inactive_tracks,
                "  %d track(s) were INACTIVE in Pro Tools and are written MUTED --\n"
                "      silent, as they were, with clips and plug-ins intact. Unmute\n"
                "      in REAPER to bring one back.\n");
    print_count(out, tallies.voice_off_tracks,
                "  %d track(s) had VOICE set to OFF in Pro Tools and are\n"
                "      written MUTED -- silent, as they were, with clips and\n"
                "      plug-ins intact. REAPER has no voice limit, so unmute\n"
                "      to bring one back.\n");
    if (tallies.names_not_bound > 0) {
        out.print(
            "  WARNING: this session holds a track type this build does not\n"
            "      recognize, so CURRENT track names could not be bound and the\n"
            "      ORIGINAL names were kept instead. Track names and playlist\n"
            "      matching in this conversion may be wrong. Please send the\n"
            "      session in -- this is a gap in the tool, not in your session.\n");
    }
}

void print_dropped_fade_references(TextBuffer& out, const TimelineTallies& tallies) {
    print_count(out, tallies.fade_references_dropped, "  %d fade references dropped as clips\n");
}

void print_left_out_playlists(TextBuffer& out, const TimelineTallies& timeline,
                              const TrackTallies& tracks) {
    print_count(out, timeline.deleted_placements,
                "  %d deleted clip placement(s) are still in this session: edits or takes\n"
                "      removed from a track that Pro Tools keeps in the file for its undo\n"
                "      queue and cannot show after a reopen. Left out, as the author removed\n"
                "      them.\n");
    print_count(out, timeline.stacked_placements,
                "  NOTE: %d clip placement(s) stood at the same moment as another clip of\n"
                "      their track, where the edit list does not tell which one Pro Tools\n"
                "      plays. The one that fits its place best was kept and the others are\n"
                "      left out. If a clip is missing, please send the session in.\n");
    print_count(out, tracks.alternates_kept_as_lanes,
                "  %d alternate playlists kept as lanes (--drop-alt-takes to leave them out)\n");
    print_count(out, tracks.alternates_set_aside,
                "  %d alternate playlists set aside (--drop-alt-takes was given)\n");
}

}  // namespace tanrove
