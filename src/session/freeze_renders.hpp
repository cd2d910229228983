// The renders that stand in for frozen tracks.
#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// A clip that carries a track's name, alone or with a number behind it. Samples or ticks, as
/// stored; all 0 where a number is wider than this reader believes.
struct FreezeRender {
    std::string name;
    double source_offset = 0;
    double length = 0;
    double start = 0;
};

/// Track name to its renders, in image order.
using FreezeRenders = std::map<std::string, std::vector<FreezeRender>, std::less<>>;

/// The renders of all these tracks, found in one pass over the clips. A clip counts for track "Gtr"
/// if it is called "Gtr" or "Gtr-" and digits. A track without renders has no entry.
FreezeRenders readFreezeRenders(const BlockIndex& index, std::span<const std::string> track_names);

}  // namespace tanrove
