// Whether the session file is whole: a copy that was cut short, or a structure that breaks midway.
#pragma once

#include <cstdint>

#include "session/block_index.hpp"

namespace tanrove {

enum class DamageVerdict { none, damaged, incomplete };

/// The verdict and the numbers that its sentence needs.
struct DamageReport {
    DamageVerdict verdict = DamageVerdict::none;
    std::uint64_t trailing_bytes = 0;  ///< of an incomplete file: behind its last complete block
    std::uint64_t break_at = 0;        ///< of a damaged file: where the chain of blocks breaks
    double break_percent = 0;          ///< the same as a share of the file
};

/// The word that `--check` prints.
const char* damage_word(DamageVerdict verdict);

/// Judges the image by where its blocks end.
DamageReport scanDamage(const BlockIndex& index);

}  // namespace tanrove
