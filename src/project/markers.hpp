// Markers and regions of the project, made from the session's memory locations.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "base/text_sink.hpp"
#include "session/memory_locations.hpp"
#include "session/tempo_map.hpp"

namespace tanrove {

struct MarkerPlan {
    int number = 1;
    double start_seconds = 0;
    std::optional<double> end_seconds;  ///< set on a region
    std::string name;
    std::uint32_t colour = 0;  ///< 0x1BBGGRR, or 0 for REAPER's default
};

struct MarkerTallies {
    int markers = 0;
    int regions = 0;
    int comments = 0;         ///< locations that have one
    int without_time = 0;     ///< locations with no place on the timeline, not written
    int coloured = 0;         ///< of markers and regions
    int unknown_colours = 0;  ///< of markers and regions
    std::set<int> unknown_colour_slots = {};  ///< their places on Pro Tools' palette
};

/// In session order, numbered from 1. A selection that does not end behind its start is a marker; a
/// location with no time property is counted and left out.
std::vector<MarkerPlan> plan_markers(std::span<const MemoryLocation> locations,
                                     const TempoClock& clock, std::int64_t sample_rate,
                                     MarkerTallies& tallies);

void write_markers(TextSink& out, std::span<const MarkerPlan> markers);

}  // namespace tanrove
