// The likeliest place of a state that no tag tells: every sign that bytes were written as one piece
// has a weight, and the heaviest wins.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "plugins/state_span.hpp"

namespace tanrove {

struct ScoredState {
    std::size_t at = 0;
    std::size_t size = 0;
    std::string_view how;      ///< the sign that won, a literal
    std::uint32_t copies = 1;  ///< 2: the state stands there twice
    int score = 0;
};

/// The winner; nullopt if nothing weighs 3 or more, or if it has fewer than 32 bytes.
std::optional<ScoredState> score_state(const StateSpan& span);

}  // namespace tanrove
