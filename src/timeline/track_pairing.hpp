// Finds for each track the playlist record that is its own. Nothing in the session joins the two:
// both lists run in the same order, names may be older on one side, and what is left is the number
// of placements.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "timeline/place_clips.hpp"

namespace tanrove {

/// What pairing asks of a track.
struct PairingTrack {
    std::string_view name;
    std::size_t placement_count = 0;
};

/// The record of each track, in the order of the tracks; no record is given twice, and a later
/// track never gets an earlier record. Costs n log n, however little matches.
std::vector<std::optional<std::size_t>> pair_with_records(const std::vector<PairingTrack>& tracks,
                                                          const TimelineInput& input);

/// True if edit lists stand beside the records one to one, so that a record's number finds its
/// list.
bool edit_lists_match_records(const TimelineInput& input);

}  // namespace tanrove
