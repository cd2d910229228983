// Reading memory that lies far apart can cost more than what is done with it. Who knows what will
// be read a little later has it on its way meanwhile. A compiler may take a function that does
// nothing else for one without any effect and drop the calls: so these are always inlined.
#pragma once

#include <cstddef>

namespace tanrove {

/// Has these bytes brought near where the compiler knows how; nothing else comes of it.
[[gnu::always_inline]] inline void fetch_ahead([[maybe_unused]] const void* bytes,
                                               [[maybe_unused]] std::size_t count) {
#if defined(__GNUC__)
    constexpr std::size_t line_bytes = 64;
    const char* const first = static_cast<const char*>(bytes);
    for (std::size_t at = 0; at < count; at += line_bytes) __builtin_prefetch(first + at);
#endif
}

}  // namespace tanrove
