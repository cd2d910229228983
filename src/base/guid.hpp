// Identifiers of the project: computed from a seed, never random, so that the same session gives
// the same text on every run. Each kind of object has a range of seeds of its own.
#pragma once

#include <cstdint>
#include <string>

namespace tanrove {

/// The identifier text "{8-4-4-4-12}" made from a 32-bit seed.
std::string guid(std::uint32_t seed);

}  // namespace tanrove
