// Quoting of names, and numbers made safe to print.
#include "project/quoted_text.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/number_text.hpp"

namespace tanrove {

namespace {

constexpr std::string_view quote_characters = "\"'`";

bool ends_a_line(char c) {
    return c == '\t' || c == '\n' || c == '\r' || c == '\0';
}

/// 1 for a byte that quoting may change: the usual quote, and what could end a line.
std::uint8_t is_odd(char c) {
    constexpr unsigned char first_printed = ' ';
    const bool is_printed = static_cast<unsigned char>(c) >= first_printed;
    return static_cast<std::uint8_t>(!is_printed | (c == quote_characters.front()));
}

/// True if the text is the same between quotes of the usual kind. Asks sixteen bytes at a time,
/// all the same, so that the compiler makes one step of them.
bool is_plain(std::string_view text) {
    constexpr std::size_t step = 16;
    std::uint8_t odd = 0;
    for (; text.size() >= step; text.remove_prefix(step)) {
        for (std::size_t i = 0; i < step; ++i) odd |= is_odd(text[i]);
    }
    for (const char c : text) odd |= is_odd(c);
    return odd == 0;
}

/// The first quote character that the text does not hold; the end if it holds all.
const char* unused_quote(std::string_view text) {
    return std::find_if(quote_characters.begin(), quote_characters.end(),
                        [&](char c) { return text.find(c) == text.npos; });
}

}  // namespace

char* put_part(char* at, const Quoted& quoted) {
    const std::string_view text = quoted.text;
    const bool plain = is_plain(text);
    const char* unused = plain ? quote_characters.begin() : unused_quote(text);
    const bool none_unused = unused == quote_characters.end();
    const char quote = none_unused ? quote_characters.front() : *unused;

    *at++ = quote;
    char* const begin = at;
    at = put_part(at, text);
    *at = quote;
    if (plain) return at + 1;
    for (char& c : std::span(begin, at)) {
        if (ends_a_line(c)) c = ' ';
        if (none_unused && c == quote) c = '_';
    }
    return at + 1;
}

std::string quoted(std::string_view text) {
    std::string line(part_room(Quoted{text}), ' ');
    put_part(line.data(), Quoted{text});
    return line;
}

bool is_kept_by_quotes(std::string_view text) {
    if (is_plain(text)) return true;
    return unused_quote(text) != quote_characters.end() && std::ranges::none_of(text, ends_a_line);
}

double printable(double number) {
    return std::isfinite(number) ? number + 0.0 : 0.0;
}

}  // namespace tanrove
