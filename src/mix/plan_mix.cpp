// The steps of the mix, in the order in which each finds what it needs: which tracks there are and
// their groups; where they play, and which are left out; then, with the indices final, what they
// receive, their folders and channel counts; at last levels, envelopes and colours.
#include "mix/plan_mix.hpp"

#include <utility>

namespace tanrove {

MixPlan plan_mix(MixInput input, MixTallies& tallies) {
    MixPlan mix;
    mix.tracks = assemble_tracks(std::move(input.assembly), tallies.tracks);
    return mix;
}

}  // namespace tanrove
