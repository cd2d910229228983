// Identifiers from seeds, by multiplication with odd constants modulo 2^32.
#include "base/guid.hpp"

#include "base/formatted_text.hpp"

namespace tanrove {

std::string guid(std::uint32_t seed) {
    const std::uint32_t a = seed * 0x9E3779B1U + 0x9E3779B9U;
    const std::uint32_t b = a * 0x85EBCA77U;
    const std::uint32_t c = a * 0x218A205BU;
    const std::uint32_t d = a * 0x9C6B79B5U;
    return formatted("{%08X-%04X-%04X-%04X-%04X%08X}", a, b >> 16, b & 0xFFFFU, c >> 16,
                     c & 0xFFFFU, d);
}

}  // namespace tanrove
