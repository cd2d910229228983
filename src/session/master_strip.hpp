// The strip of the session's first master fader: its fader, its mute and their automation.
#pragma once

#include <cstddef>
#include <span>

#include "session/block_index.hpp"
#include "session/strip_rows.hpp"
#include "session/strips.hpp"

namespace tanrove {

struct MasterStrips {
    std::size_t count = 0;  ///< master faders of the session
    std::size_t row = 0;    ///< the first one's row, if there is any
    Strip first;            ///< named as it is shown; not `present` without a channel record
};

/// The master faders among `rows`; the first of them with its lanes.
MasterStrips read_master_strips(const BlockIndex& index, std::span<const StripRow> rows);

}  // namespace tanrove
