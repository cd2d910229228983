// The speakers that the channels of a surround bus play to: told by the names of its legs, or by
// the width that the bus was made with.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mix/path_lookup.hpp"

namespace tanrove {

/// A speaker where REAPER's panner has it: -1 left to 1 right, -1 rear to 1 front.
struct Speaker {
    std::string_view name;
    double x = 0;
    double y = 0;
    int flags = 0;
};

/// The speaker that Pro Tools names so; nullptr where its place is not known.
const Speaker* speaker_named(std::string_view name);

struct BusLayout {
    std::vector<std::string> speakers;  ///< one a channel; empty: they cannot be placed
    std::size_t leg_count = 0;          ///< channels that the session lists a leg for
};

BusLayout layout_of(const PathLookup& paths, std::size_t bus);

}  // namespace tanrove
