// The account's sentences about tracks, their timebases and their playlists. Each function prints
// what stands together in the summary; what lies between them is other groups' to print.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/track_comments.hpp"
#include "mix/track_tallies.hpp"
#include "project/markers.hpp"
#include "session/track_table.hpp"
#include "timeline/timeline_tallies.hpp"

namespace tanrove {

/// Behind the mixer strips, in front of the sends.
void print_track_list_source(TextBuffer& out, const SessionTrackTable& table);

/// Among the track properties: behind the tracks with a patch, in front of the comments.
void print_unmatched_alternates(TextBuffer& out, const TrackTallies& tallies);

/// Behind the alternates without a track, in front of the Trims.
void print_comments(TextBuffer& out, const CommentTallies& tallies);

/// Behind the comments of tracks.
void print_marker_comments(TextBuffer& out, const MarkerTallies& tallies, CommentPlace place);

/// Behind the Trims, in front of the tracks that are soloed and muted.
void print_surround_folds(TextBuffer& out, const TrackTallies& tallies);

/// Behind the hardware inserts, in front of the clip groups.
void print_timebases(TextBuffer& out, const TimelineTallies& tallies);

/// Behind the stretch rates, in front of the outputs to one channel.
void print_matched_alternates_and_merges(TextBuffer& out, const TrackTallies& tallies);

/// Behind the wide strips, in front of the Click tracks.
void print_lanes_and_empty_tracks(TextBuffer& out, const TrackTallies& tallies);

/// Behind what the leave-out options did, in front of the frozen tracks.
void print_tracks_without_strip_row(TextBuffer& out, const TrackTallies& tallies);

/// Behind the frozen tracks, in front of the covered clips.
void print_silent_tracks_and_names(TextBuffer& out, const TrackTallies& tallies);

/// Behind the covered clips, in front of the fades.
void print_dropped_fade_references(TextBuffer& out, const TimelineTallies& tallies);

/// Behind the fades, in front of the plug-ins.
void print_left_out_playlists(TextBuffer& out, const TimelineTallies& timeline,
                              const TrackTallies& tracks);

}  // namespace tanrove
