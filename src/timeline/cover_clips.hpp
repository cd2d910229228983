// Pro Tools lets clips overlap and plays one at each moment. REAPER plays them all, so what lies
// under another clip is cut away or muted here.
#pragma once

#include <vector>

#include "timeline/timeline_track.hpp"

namespace tanrove {

struct CoveringTallies {
    int later_heads = 0;     ///< clips that start later: their head lies under another clip
    int muted_clips = 0;     ///< covered end to end
    int silenced_tails = 0;  ///< cut where a muted clip covers them
};

/// Leaves each track one clip to play at each moment, crossfades excepted: in the order of the rows
/// where every clip has one, else by the clips' positions. A group is one clip of its window. Fade
/// references lie under nothing and over nothing. The clips are ordered by `start` afterwards.
void cover_clips(std::vector<TimelineTrack>& tracks, double rate_hz, CoveringTallies& tallies);

}  // namespace tanrove
