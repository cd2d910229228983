// Numbers as project lines have them: the bytes that printf writes in the "C" locale, in a fraction
// of the time.
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
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

constexpr std::size_t longest_number_bytes = 400;  // 309 digits, sign, point and precision

// Write a number where there is room for the longest, and give the end of what was written.
char* put_number(char* at, const Fixed& number);
char* put_number(char* at, const General& number);
char* put_number(char* at, const HexByte& number);

/// A whole number: "%d", "%u" and their wider forms.
template <std::integral Whole>
char* put_number(char* at, Whole value) {
    return std::to_chars(at, at + longest_number_bytes, value).ptr;
}

inline void append_part(LineBuffer& target, std::string_view text) {
    target.append(text);
}

template <typename Number>
requires(!std::convertible_to<Number, std::string_view>) void append_part(LineBuffer& target,
                                                                          const Number& number) {
    target.end_at(put_number(target.room(longest_number_bytes), number));
}

}  // namespace tanrove
