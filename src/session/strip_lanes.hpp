// The lanes of the strips: which of a row's lanes moves what.
#pragma once

#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/strips.hpp"

namespace tanrove {

/// Fills the lanes of every present strip. A fader whose lane has no points takes the lane's
/// initial value, which is the later word.
void readStripLanes(const BlockIndex& index, std::vector<Strip>& strips);

/// Fills the lanes that stand in one strip row. A lane that another owner has is left to it; where
/// that is the first of them, the strip is left without lanes. `is_master`: the row is a master
/// fader's, or stands in one.
void read_lanes_of_row(const BlockIndex& index, const Block& row, bool is_master,
                       LaneReader& reader, std::size_t owner, Strip& strip);

/// The lanes of the strips that move, as text for a developer: one line a strip, and one for each
/// point of its volume.
std::string strip_lanes_text(const std::vector<Strip>& strips);

}  // namespace tanrove
