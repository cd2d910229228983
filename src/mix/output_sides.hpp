// Which tracks play to one channel of a stereo output.
#pragma once

#include <vector>

#include "mix/track_levels.hpp"
#include "session/io_paths.hpp"
#include "session/routing.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// The side of each track whose output is a path of one channel that a stereo output path holds as
/// well. REAPER's master is that stereo output.
OutputSides output_sides(const std::vector<RoutingRow>& routing, const std::vector<StripRow>& rows,
                         const std::vector<IoPath>& paths);

}  // namespace tanrove
