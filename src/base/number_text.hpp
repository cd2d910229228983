// Numbers as project lines have them: the bytes that printf writes in the "C" locale, in a fraction
// of the time.
#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "base/line_buffer.hpp"

namespace tanrove {

constexpr int usual_precision = 6;

/// "%.<precision>f".
struct Fixed {
    double value = 0;
    int precision = usual_precision;
};

/// "%.<precision>g".
struct General {
    double value = 0;
    int precision = usual_precision;
};

/// "%02x".
struct HexByte {
    unsigned value = 0;
};

/// The blanks in front of a line of this level, two for each.
struct Indent {
    int level = 0;
};

constexpr std::size_t longest_number_bytes = 400;  // 309 digits, sign, point and precision

// A part of a line is written where there is room for it: `put_part` takes no more than `part_room`
// tells, and gives the end of what it wrote.
char* put_part(char* at, const Fixed& number);
char* put_part(char* at, const General& number);
char* put_part(char* at, const HexByte& number);

/// A whole number: "%d", "%u" and their wider forms.
template <std::integral Whole>
char* put_part(char* at, Whole value) {
    return std::to_chars(at, at + longest_number_bytes, value).ptr;
}

template <typename Number>
requires(!std::convertible_to<Number, std::string_view>) constexpr std::size_t
    part_room(const Number&) {
    return longest_number_bytes;
}

inline char* put_part(char* at, std::string_view text) {
    return std::copy(text.begin(), text.end(), at);
}

constexpr std::size_t part_room(const Indent& indent) {
    return 2 * static_cast<std::size_t>(indent.level);
}

inline char* put_part(char* at, const Indent& indent) {
    std::memset(at, ' ', part_room(indent));
    return at + part_room(indent);
}

constexpr std::size_t part_room(std::string_view text) {
    return text.size();
}

// A literal, whose length the compiler knows.
template <std::size_t Size>
constexpr std::size_t part_room(const char (&)[Size]) {
    return Size - 1;
}

template <std::size_t Size>
char* put_part(char* at, const char (&literal)[Size]) {
    std::memcpy(at, literal, Size - 1);
    return at + Size - 1;
}

/// Appends texts and numbers one after the other.
template <typename... Parts>
void append_parts(LineBuffer& target, const Parts&... parts) {
    char* at = target.room((std::size_t{0} + ... + part_room(parts)));
    ((at = put_part(at, parts)), ...);
    target.end_at(at);
}

}  // namespace tanrove
