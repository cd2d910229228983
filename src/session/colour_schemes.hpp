// How the session colours tracks and clips that have no colour of their own.
#pragma once

#include <cstdint>
#include <optional>

#include "session/block_index.hpp"

namespace tanrove {

/// The colour coding schemes as stored: 0 none, 1 tracks and MIDI channels, 2 tracks and MIDI
/// devices, 3 groups, 4 track type, 5 track colour, 6 marker locations, 7 clip list colour. Not set
/// where the session does not say.
struct ColourSchemes {
    std::optional<std::int32_t> track;
    std::optional<std::int32_t> clip;
};

ColourSchemes readColourSchemes(const BlockIndex& index);

}  // namespace tanrove
