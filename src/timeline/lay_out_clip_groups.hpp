// Clip groups on tracks: rows that cover, are covered and fade like clips, and in the end one item
// for each clip that a group plays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "timeline/clip_group_pieces.hpp"
#include "timeline/timeline_input.hpp"
#include "timeline/timeline_tallies.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

/// The groups of one session on their way. What it is made from must outlive it; `looper` is asked
/// for the loops of clips inside groups.
class GroupLayout {
public:
    GroupLayout(const TimelineInput& input, const WarpSlicer& slicer, ClipLooper& looper,
                TimelineTallies& tallies);

    /// Puts the groups of each track's edit list on its `groups`. Those of tracks without an edit
    /// list, and those without a definition, count as unreadable.
    void place(std::vector<TimelineTrack>& tracks);

    /// Adds to each track's clips what is left of its groups: their pieces, or an empty item in
    /// place of a group that holds no audio. The clips are ordered by `start` afterwards. `warp` is
    /// null where clips keep their files' speed.
    void lay_out(std::vector<TimelineTrack>& tracks, const WarpOneClip* warp,
                 StretchTallies& stretch);

private:
    void place_rows(TimelineTrack& track, const PlaylistDetail& list);
    ClipItem group_row(const PlaylistDetail& list, std::size_t number, const TimelineTrack& track);
    bool is_placeholder(std::uint32_t group);
    void lay_out_group(TimelineTrack& track, const ClipItem& group, const WarpOneClip* warp,
                       StretchTallies& stretch);
    void name_if_missing(const TimelineTrack& track, int unreadable_before);

    const TimelineInput& input_;
    ClipGroups groups_;  ///< with the numbers of their lists
    GroupMaterial material_;
    TempoClock clock_;
    GroupBudget budget_;
    ClipGroupTallies& tallies_;
    FadeTallies& fade_tallies_;
    std::map<std::uint16_t, std::size_t> groups_on_;  ///< how many, by the track's id
    std::map<std::uint32_t, bool> placeholders_;      ///< of the definitions that were asked for
    std::set<std::string> incomplete_tracks_;
};

}  // namespace tanrove
