// Base64 with padding, three bytes at a time.
#include "base/base64.hpp"

#include <array>

namespace tanrove {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t no_digit = 0xff;

constexpr std::array<std::uint8_t, 256> digit_values() {
    std::array<std::uint8_t, 256> values = {};
    values.fill(no_digit);
    std::uint8_t value = 0;
    for (const char digit : alphabet) values[static_cast<std::uint8_t>(digit)] = value++;
    return values;
}

}  // namespace

std::string base64(std::span<const std::uint8_t> bytes) {
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

std::optional<std::vector<std::uint8_t>> decoded_base64(std::string_view text) {
    constexpr auto values = digit_values();
    constexpr std::size_t most_padding = 2;
    for (std::size_t i = 0; i < most_padding && text.ends_with('='); ++i) text.remove_suffix(1);
    if (text.size() % 4 == 1) return std::nullopt;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3 + most_padding);
    std::uint32_t bits = 0;
    int bit_count = 0;
    for (const char digit : text) {
        const std::uint8_t value = values[static_cast<std::uint8_t>(digit)];
        if (value == no_digit) return std::nullopt;
        bits = bits << 6 | value;
        bit_count += 6;
        if (bit_count < 8) continue;
        bit_count -= 8;
        bytes.push_back(static_cast<std::uint8_t>(bits >> bit_count & 0xff));
    }
    return bytes;
}

}  // namespace tanrove
