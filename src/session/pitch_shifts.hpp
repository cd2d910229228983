// Elastic pitch: the shift of each clip that has one.
#pragma once

#include <map>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// Semitones by clip name, never 0, at most 48 either way.
std::map<std::string, double> readPitchShifts(const BlockIndex& index);

}  // namespace tanrove
