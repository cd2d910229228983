// Quoting of names, and numbers made safe to print.
#include "project/quoted_text.hpp"

#include <algorithm>
#include <cmath>
#include <span>

namespace tanrove {

namespace {

constexpr std::string_view quote_characters = "\"'`";

bool ends_a_line(char c) {
    return c == '\t' || c == '\n' || c == '\r' || c == '\0';
}

/// The first quote character that the text does not hold; the end if it holds all.
const char* unused_quote(std::string_view text) {
    return std::find_if(quote_characters.begin(), quote_characters.end(),
                        [&](char c) { return text.find(c) == text.npos; });
}

}  // namespace

void append_part(std::string& target, const Quoted& quoted) {
    const std::string_view text = quoted.text;
    const char* unused = unused_quote(text);
    const bool none_unused = unused == quote_characters.end();
    const char quote = none_unused ? quote_characters.front() : *unused;

    target += quote;
    const std::size_t begin = target.size();
    target += text;
    for (char& c : std::span(target).subspan(begin)) {
        if (ends_a_line(c)) c = ' ';
        if (none_unused && c == quote) c = '_';
    }
    target += quote;
}

std::string quoted(std::string_view text) {
    std::string line;
    line.reserve(text.size() + 2);
    append_part(line, Quoted{text});
    return line;
}

bool is_kept_by_quotes(std::string_view text) {
    return unused_quote(text) != quote_characters.end() && std::ranges::none_of(text, ends_a_line);
}

double printable(double number) {
    return std::isfinite(number) ? number + 0.0 : 0.0;
}

}  // namespace tanrove
