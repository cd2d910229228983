// Which of a list of spans is the first to hold a position: for many positions at once, in one
// sweep, however the spans nest or overlap.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Stands for "no span holds the position".
constexpr std::size_t no_span = static_cast<std::size_t>(-1);

/// For each position the index of the first span that encloses it, or `no_span`. The spans ascend
/// by their starts, the positions ascend.
std::vector<std::size_t> first_enclosing(std::span<const BlockSpan> spans,
                                         std::span<const std::size_t> positions);

}  // namespace tanrove
