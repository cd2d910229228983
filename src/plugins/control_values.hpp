// The values of a plug-in's controls, for plug-ins that store nothing else.
#pragma once

#include <cstddef>
#include <vector>

#include "plugins/state_span.hpp"

namespace tanrove {

struct ControlList {
    std::size_t at = 0;  ///< the first record
    std::vector<float> values;
};

/// The list that begins at the first "d_" or "l_" of the block, read in the spacing that gives most
/// values; without values where there is none, or where it begins more than 81 bytes into the
/// block.
ControlList read_control_list(const StateSpan& span);

}  // namespace tanrove
