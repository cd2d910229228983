// All that planning the mix counts: a group for each subject.
#pragma once

#include "mix/track_tallies.hpp"

namespace tanrove {

struct MixTallies {
    TrackTallies tracks;
};

}  // namespace tanrove
