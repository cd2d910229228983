// Folds the session's channels into tracks. Pro Tools keeps one mono track for each channel of a
// stereo or surround track, and further ones for alternate playlists.
#pragma once

#include <vector>

#include "mix/strip_names.hpp"
#include "mix/track_plan.hpp"
#include "mix/track_tallies.hpp"
#include "session/track_name_set.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

struct FoldOptions {
    TrackNameSet current_names;  ///< of the session's track list
    bool keep_alt_takes = true;
};

/// One plan for each mono track, merged pair or folded run, in the order of the channels; one for
/// each leg of what cannot be folded; alternates of strips that are known bear `lane_parent`.
std::vector<TrackPlan> fold_channels(std::vector<TimelineTrack> channels, const StripNames& strips,
                                     const FoldOptions& options, TrackTallies& tallies);

}  // namespace tanrove
