// The lanes of a send: which of the lanes in its slot moves what.
#pragma once

#include "session/automation_lanes.hpp"
#include "session/block_index.hpp"
#include "session/routing.hpp"

namespace tanrove {

/// Fills the lanes of the send in this slot. A pan knob that has a lane takes the lane's initial
/// value. `pan_kind` counts the pan lanes; a stereo send that stays hard left and hard right is not
/// panned.
void read_send_lanes(const BlockIndex& index, const Block& slot, LaneReader& reader,
                     RoutingSend& send);

}  // namespace tanrove
