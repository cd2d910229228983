// The track list of the clip data: the current names of the tracks that hold audio clips.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// One audio track. Its clips lie on one mono row a channel; `channels` are the rows' ids.
struct TrackName {
    std::string name;
    std::vector<std::uint16_t> channels;  ///< as many as the track is wide; at most 64
    std::uint64_t identity = 0;           ///< 0 if the record has none
};

/// Every record with a name, in order; empty where the session has none.
std::vector<TrackName> read_track_names(const BlockIndex& index);

}  // namespace tanrove
