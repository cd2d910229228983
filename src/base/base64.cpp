// Base64 with padding, three bytes at a time.
#include "base/base64.hpp"

#include <string_view>

namespace tanrove {

std::string base64(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t left = bytes.size() - i;
        const std::uint32_t second = left > 1 ? bytes[i + 1] : 0U;
        const std::uint32_t third = left > 2 ? bytes[i + 2] : 0U;
        const std::uint32_t three =
            static_cast<std::uint32_t>(bytes[i]) << 16 | second << 8 | third;
        text += alphabet[three >> 18];
        text += alphabet[three >> 12 & 63];
        text += left > 1 ? alphabet[three >> 6 & 63] : '=';
        text += left > 2 ? alphabet[three & 63] : '=';
    }
    return text;
}

}  // namespace tanrove
