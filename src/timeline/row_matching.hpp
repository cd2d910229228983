// Matches a track's placements to the rows of its edit list. The rows say which placements are
// really on the track, which are rendered fades, and how each clip is drawn, locked and muted.
#pragma once

#include <span>

#include "session/fades.hpp"
#include "session/playlists.hpp"
#include "timeline/timeline_tallies.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

/// True if the clip of this row plays to its own end although another begins before it: it is drawn
/// over the next one, or a fade-out stands on its tail.
bool row_keeps_tail(const PlaylistDetail& edit_list, std::span<const FadeRecord> fades,
                    std::size_t row);

/// Drops rendered fades and deleted placements from the track's clips, and gives the others what
/// their rows say. Rendered fades that are kept are marked and get no row. Clips must be ordered
/// by `start`.
void match_rows(TimelineTrack& track, const PlaylistDetail& edit_list,
                std::span<const FadeRecord> fades, bool keep_fade_clips, TimelineTallies& tallies);

}  // namespace tanrove
