// The MIDI tracks of a session and the clips on them.
#pragma once

#include <span>
#include <vector>

#include "session/block_index.hpp"
#include "session/block_tree.hpp"
#include "session/session_lists.hpp"

namespace tanrove {

/// One row without a clip for each MIDI and instrument track, in the order of the strip rows,
/// numbered from 0.
std::vector<TrackTableRow> read_midi_track_rows(const BlockIndex& index);

/// One row for each clip on one of `tracks`, in the order of the playlists. Its `region_index` is a
/// place in `regions`, a clip group's number is as stored. `start` is the distance of the stored
/// position from the tick origin: the tick of a clip on a tick-based track. On a sample-based one
/// the position is a plain number of samples, and the playlist's own rows tell it. `regions` ascend
/// by index.
std::vector<ClipTrack> read_midi_clips(ByteView image, std::span<const BlockNode> tree,
                                       std::span<const TrackTableRow> tracks,
                                       std::span<const Region> regions);

}  // namespace tanrove
