// Numbers as project lines have them: the bytes that printf writes in the "C" locale, in a fraction
// of the time.
#pragma once

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

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

inline void append_part(std::string& target, std::string_view text) {
    target.append(text);
}

void append_part(std::string& target, const Fixed& number);
void append_part(std::string& target, const General& number);
void append_part(std::string& target, const HexByte& number);

/// A whole number: "%d", "%u" and their wider forms.
template <std::integral Whole>
void append_part(std::string& target, Whole value) {
    constexpr std::size_t longest = 24;
    char text[longest];
    target.append(text, std::to_chars(text, text + longest, value).ptr);
}

}  // namespace tanrove
