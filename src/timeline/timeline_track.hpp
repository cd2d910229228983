// One channel of the session's track table with all that plays on it: the timeline's result, from
// which the mix assembles the tracks that are written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "timeline/clip_item.hpp"

namespace tanrove {

struct TimelineTrack {
    std::uint16_t id = 0;
    std::string name;              ///< the paired record's name if it has one, else the table's
    std::string listed_name = {};  ///< the track list's
    std::size_t list_entry = 0;    ///< its track's place there; legs share it
    std::optional<std::uint16_t> playlist = {};  ///< running number of its playlist
    std::optional<std::size_t> record;  ///< the timebase record (and edit list) it was paired with
    bool tick_based = false;
    bool row_ordered = false;           ///< it has clips, and all but fade references found rows
    std::vector<ClipItem> clips;        ///< ordered by `start`
    std::vector<ClipItem> groups;       ///< rows of clip groups, in row order, until laid out
    std::vector<ClipItem> ghost_clips;  ///< stacked placements that lost their place
};

}  // namespace tanrove
