// Numbers of Pro Tools' sessions that the library and the program both hold them against.
#pragma once

#include <cstdint>

namespace tanrove {

/// Ticks count from here.
constexpr std::uint64_t tick_origin = 1000000000000ULL;

/// Pro Tools has no session of another rate.
constexpr std::int64_t lowest_rate_hz = 44100;
constexpr std::int64_t highest_rate_hz = 192000;

}  // namespace tanrove
