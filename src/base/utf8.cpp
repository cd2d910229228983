#include "base/utf8.hpp"

#include <array>

namespace tanrove {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr std::string_view::size_type invalid = 0;
constexpr unsigned surrogates_begin = 0xD800;
constexpr unsigned surrogates_end = 0xE000;

/// What the first byte of a sequence tells: so many bytes, its own bits, and the least code point
/// that needs that many.
struct Lead {
    unsigned mask;
    unsigned mark;
    std::size_t bytes;
    unsigned least;
};
constexpr std::array<Lead, 4> leads = {{
    {0x80, 0x00, 1, 0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
}};
constexpr unsigned last_code_point = 0x10FFFF;
constexpr unsigned follower_mask = 0xC0;
constexpr unsigned follower_mark = 0x80;
constexpr unsigned follower_bits = 6;

unsigned byte_at(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

/// The bytes of the character in front; `invalid` where there is none.
std::size_t whole_character(std::string_view text) {
    for (const Lead& lead : leads) {
        if ((byte_at(text, 0) & lead.mask) != lead.mark) continue;
        if (text.size() < lead.bytes) return invalid;
        unsigned code = byte_at(text, 0) & ~lead.mask;
        for (std::size_t i = 1; i < lead.bytes; ++i) {
            if ((byte_at(text, i) & follower_mask) != follower_mark) return invalid;
            code = code << follower_bits | (byte_at(text, i) & ~follower_mask);
        }
        const bool surrogate = code >= surrogates_begin && code < surrogates_end;
        return code < lead.least || code > last_code_point || surrogate ? invalid : lead.bytes;
    }
    return invalid;
}

}  // namespace

std::size_t character_bytes(std::string_view text) {
    const std::size_t bytes = whole_character(text);
    return bytes == invalid ? 1 : bytes;
}

std::string valid_utf8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t bytes = whole_character(text);
        out += bytes == invalid ? replacement : text.substr(0, bytes);
        text.remove_prefix(bytes == invalid ? 1 : bytes);
    }
    return out;
}

}  // namespace tanrove
