// The edit grid and the nudge value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// Units of the time line, by their numbers in the session.
enum class CountUnit : std::uint8_t { bars, minutes, timecode, feet, samples };

/// A value as bars, beats and ticks, and the unit that it was chosen in.
struct GridSetting {
    std::uint32_t bars = 0;
    std::uint32_t beats = 0;
    std::uint32_t ticks = 0;  ///< 960 to a quarter note
    CountUnit unit = CountUnit::bars;
    std::string text = {};  ///< in that unit, as Pro Tools shows it; empty where it cannot be read
};

struct GridAndNudge {
    GridSetting nudge;
    GridSetting grid;
};

/// nullopt unless both are stored.
std::optional<GridAndNudge> readGridAndNudge(const BlockIndex& index);

/// Length of a grid in quarter notes under a meter; nullopt unless above 0 and below 1000.
std::optional<double> grid_quarter_notes(const GridSetting& grid, std::uint32_t numerator,
                                         std::uint32_t denominator);

}  // namespace tanrove
