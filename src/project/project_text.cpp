// Quoting of names, and numbers made safe to print.
#include "project/project_text.hpp"

#include <algorithm>
#include <cmath>
#include <span>

namespace tanrove {

namespace {

constexpr std::string_view quote_characters = "\"'`";

bool ends_a_line(char c) {
    return c == '\t' || c == '\n' || c == '\r' || c == '\0';
}

}  // namespace

std::string quoted(std::string_view text) {
    const auto unused = std::find_if(quote_characters.begin(), quote_characters.end(),
                                     [&](char c) { return text.find(c) == text.npos; });
    const bool none_unused = unused == quote_characters.end();
    const char quote = none_unused ? quote_characters.front() : *unused;

    std::string line;
    line.reserve(text.size() + 2);
    line += quote;
    line += text;
    for (char& c : std::span(line).subspan(1)) {
        if (ends_a_line(c)) c = ' ';
        if (none_unused && c == quote) c = '_';
    }
    line += quote;
    return line;
}

double printable(double number) {
    return std::isfinite(number) ? number + 0.0 : 0.0;
}

}  // namespace tanrove
