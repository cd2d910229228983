// What assembling the tracks counts for the account.
#pragma once

namespace tanrove {

struct TrackTallies {
    int stereo_merges = 0;                        ///< pairs of legs that became one stereo track
    int surround_folds = 0;                       ///< runs of legs that became one wide track
    int alternates_matched = 0;                   ///< alternate playlists on their parent's lanes
    int alternates_folded_into_empty_parent = 0;  ///< the same, but the parent has no clips
    int alternates_kept_as_lanes = 0;             ///< all that ended as lanes
    int alternates_set_aside = 0;                 ///< left out because the run was told to
    int alternates_unmatched = 0;                 ///< arrive as muted tracks of their own
    int tracks_written_empty = 0;                 ///< of audio and aux strips, without a clip
    int tracks_without_strip_row = 0;             ///< appended behind all others
    int inactive_tracks = 0;
    int voice_off_tracks = 0;
    int names_not_bound = 0;  ///< 1: the strips bear the names from their creation
};

}  // namespace tanrove
