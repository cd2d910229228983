// Binds the fade rows of a track's edit list to the clip edges they lie on, and opens crossfades:
// Pro Tools stores a cut with handles, REAPER lets two items overlap.
#pragma once

#include <span>

#include "session/fades.hpp"
#include "session/playlists.hpp"
#include "session/tempo_map.hpp"
#include "timeline/fade_shapes.hpp"
#include "timeline/fade_tallies.hpp"
#include "timeline/timeline_track.hpp"
#include "timeline/warp_slice.hpp"

namespace tanrove {

/// What all tracks share when their fades are bound.
struct FadeBinding {
    std::span<const FadeRecord> fades;
    double rate_hz = 48000;  ///< above 0
    const TempoClock& clock;
    FadeForm form = FadeForm::exact;
    const WarpSlicer& warps;
    bool no_stretch = false;  ///< clips play at their file's speed, whatever their maps say
};

/// Gives the track's clips and groups the fades of its rows, in the order of the rows, but for
/// those whose rendered files were kept. Clips must stand as they were matched to the rows: not
/// covered yet, and with `warped_length` set. Costs n log n.
void bind_fades(TimelineTrack& track, const PlaylistDetail& edit_list, const FadeBinding& binding,
                FadeTallies& tallies);

}  // namespace tanrove
