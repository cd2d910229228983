// The session's track names in session order, as `--list` prints them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// True if the text can be the name of a track: not a path, nor the name of a folder or file that
/// session folders have.
bool is_track_name(std::string_view name);

/// One name a strip row; or, as far as it comes from the scan, each name once.
struct SessionTrackTable {
    std::vector<std::string> names;
    /// The scan found fewer names than the mixer has rows, whose names took their place.
    bool from_strip_rows = false;
    std::size_t scanned_count = 0;  ///< names that the scan found
};

/// The rows' current names, where any are bound; else what a scan of the first 400000 bytes gives,
/// for the run of names that opens with one of `clip_track_names`.
SessionTrackTable readTrackTable(const BlockIndex& index,
                                 std::span<const std::string> clip_track_names,
                                 const StripRows& rows);

}  // namespace tanrove
