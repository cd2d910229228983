// Elastic pitch: the shift of each clip that has one.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// Semitones by clip name.
using PitchShifts = std::map<std::string, double, std::less<>>;

/// Never 0, at most 48 either way.
PitchShifts readPitchShifts(const BlockIndex& index);

}  // namespace tanrove
