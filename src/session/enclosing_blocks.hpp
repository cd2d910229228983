// Which block holds a position, and which is the innermost of those that do: for many positions at
// once, in one sweep.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Where the blocks begin.
std::vector<std::size_t> starts_of(std::span<const Block> blocks);

/// For each position the smallest of the blocks whose span encloses it, of equals the earliest;
/// nullptr where none does. Both lists ascend. The pointers are into `blocks`.
std::vector<const Block*> smallest_enclosing(std::span<const Block> blocks,
                                             std::span<const std::size_t> positions);

}  // namespace tanrove
