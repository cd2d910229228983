// Finds for each track the playlist record that is its own: the channels of the track list are
// numbered as the playlists of their list are. Lists that number nothing run in the same order at
// least; names may be older on one side, and what is left is the number of placements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "timeline/timeline_input.hpp"

namespace tanrove {

/// What pairing asks of a track.
struct PairingTrack {
    std::string_view name;
    std::size_t placement_count = 0;
    std::optional<std::uint16_t> playlist = {};  ///< running number of its playlist, where told
};

/// The record of each track, in the order of the tracks; no record is given twice. Where tracks and
/// records are numbered a track gets the record of its number or none, whatever the two hold;
/// elsewhere a later track never gets an earlier record. Costs n log n, however little matches.
std::vector<std::optional<std::size_t>> pair_with_records(const std::vector<PairingTrack>& tracks,
                                                          const TimelineInput& input);

/// True if edit lists stand beside the records one to one, so that a record's number finds its
/// list.
bool edit_lists_match_records(const TimelineInput& input);

}  // namespace tanrove
