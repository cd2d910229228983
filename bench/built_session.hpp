// The sessions that the benchmarks run on: made once a size, of tracks full of short clips.
#pragma once

#include <cstddef>

#include "support/session_builder.hpp"

namespace tanrove::bench {

/// `tracks` mono tracks of `clips_per_track` clips each, one tempo change a bar.
builder::SessionBuilder session_of(std::size_t tracks, std::size_t clips_per_track);

}  // namespace tanrove::bench
