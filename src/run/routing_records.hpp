// What the mix's routing is planned from, read from the mixer and from the plug-ins.
#pragma once

#include <vector>

#include "mix/routing_tallies.hpp"
#include "mix/strip_routes.hpp"
#include "run/session_records.hpp"
#include "session/block_index.hpp"
#include "session/hardware_inserts.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// Outputs, sends and inputs of the strips, the paths they run on, and the buses that plug-ins take
/// as their keys.
RoutingRecords read_routing_records(const BlockIndex& index, const StripRecords& strips);

/// Notes for the account what leads out of the project: outboard gear, and MIDI tracks that play
/// the instrument of another track.
void note_unroutable(const BlockIndex& index, const std::vector<StripRow>& strips,
                     const std::vector<HardwareInsert>& hardware, RoutingTallies& tallies);

}  // namespace tanrove
