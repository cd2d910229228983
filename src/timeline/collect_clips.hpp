// Gathers the placements of the session under the tracks they lie on.
#pragma once

#include <cstddef>
#include <vector>

#include "timeline/timeline_input.hpp"
#include "timeline/timeline_tallies.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

/// Tracks whose clips hold everything but their start, and how many placements each track has,
/// those that make no clip included: the number by which tracks find their records.
struct CollectedTracks {
    std::vector<TimelineTrack> tracks;
    std::vector<std::size_t> placement_counts;
};

/// True if the region plays a file of the session's list.
bool has_file(const Region& region, const TimelineInput& input);

/// Gives a clip what its region says: name, file, and what of the file it plays.
void take_region(ClipItem& clip, std::uint32_t number, const Region& region,
                 const TimelineInput& input);

/// True if the table of sync points names every region in turn: only then is it told whose sync
/// point an entry is.
bool sync_table_lines_up(const TimelineInput& input);

/// A placement without length or without an audio file makes no clip, a clip group neither. Sync
/// points are used only when their table names every region in turn.
CollectedTracks collect_clips(const TimelineInput& input, TimelineTallies& tallies);

}  // namespace tanrove
