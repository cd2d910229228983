// Quoting of names, and numbers made safe to print.
#include "project/quoted_text.hpp"

#include <algorithm>
#include <cmath>

namespace tanrove {

namespace {

constexpr std::string_view quote_characters = "\"'`";

bool ends_a_line(char c) {
    return c == '\t' || c == '\n' || c == '\r' || c == '\0';
}

/// True if nothing in the text is anything to quoting: no quote of the usual kind, and nothing that
/// could end a line. Asks every byte the same, so that the compiler asks many at a time.
bool is_plain(std::string_view text) {
    constexpr unsigned char first_printed = ' ';
    bool plain = true;
    for (const char c : text) {
        plain &= static_cast<unsigned char>(c) >= first_printed;
        plain &= c != quote_characters.front();
    }
    return plain;
}

/// The first quote character that the text does not hold; the end if it holds all.
const char* unused_quote(std::string_view text) {
    return std::find_if(quote_characters.begin(), quote_characters.end(),
                        [&](char c) { return text.find(c) == text.npos; });
}

}  // namespace

void append_part(LineBuffer& target, const Quoted& quoted) {
    const std::string_view text = quoted.text;
    if (is_plain(text)) {
        target.append(1, quote_characters.front());
        target.append(text);
        target.append(1, quote_characters.front());
        return;
    }
    const char* unused = unused_quote(text);
    const bool none_unused = unused == quote_characters.end();
    const char quote = none_unused ? quote_characters.front() : *unused;

    char* at = target.room(text.size() + 2);
    *at++ = quote;
    for (const char c : text) {
        const bool is_quote = none_unused && c == quote;
        *at++ = ends_a_line(c) ? ' ' : is_quote ? '_' : c;
    }
    *at++ = quote;
    target.end_at(at);
}

std::string quoted(std::string_view text) {
    LineBuffer line;
    append_part(line, Quoted{text});
    return std::string(line.text());
}

bool is_kept_by_quotes(std::string_view text) {
    if (is_plain(text)) return true;
    return unused_quote(text) != quote_characters.end() && std::ranges::none_of(text, ends_a_line);
}

double printable(double number) {
    return std::isfinite(number) ? number + 0.0 : 0.0;
}

}  // namespace tanrove
