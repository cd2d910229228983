// Tables of messages: one row a counter, one whole sentence a row. A wrong sentence does not
// compile, and no text that is known only at run time is ever used as a format.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/formatted_text.hpp"

namespace tanrove {

/// Position of the one "%d" of a message; npos if it has none, more than one, or another field.
/// "%%" is a percent sign.
constexpr std::size_t only_count_field(std::string_view text) {
    std::size_t field_at = std::string_view::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') continue;
        const char kind = i + 1 < text.size() ? text[i + 1] : '\0';
        if (kind == 'd' && field_at == std::string_view::npos) {
            field_at = i;
        } else if (kind != '%') {
            return std::string_view::npos;
        }
        ++i;
    }
    return field_at;
}

/// A message of one or more lines with exactly one %d in it, checked when it is compiled.
class CountText {
public:
    template <std::size_t Size>
    consteval CountText(const char (&text)[Size])
        : text_(text, Size - 1), field_at_(only_count_field(text_)) {
        if (field_at_ == std::string_view::npos) throw "a count message has exactly one %d";
    }

    /// Appends the message with the count in its place.
    void print(TextBuffer& out, int count) const;

private:
    std::string_view text_;
    std::size_t field_at_;
};

/// How many there are, as messages take it.
template <class List>
int count_of(const List& list) {
    return static_cast<int>(list.size());
}

/// Marks a row that says more about the nearest row above it that does not qualify another.
constexpr bool qualifies_previous = true;

/// A counter of the group `Tallies` and its message.
template <class Tallies>
struct CountRow {
    int Tallies::*counter;
    CountText text;
    bool qualifies = false;
};

/// Prints the message if the count is above 0, and tells whether it did.
bool print_count(TextBuffer& out, int count, CountText text);

/// Prints a table in its order: each row whose counter is above 0, a qualifying row only where the
/// row that it qualifies was printed.
template <class Tallies, std::size_t Size>
void print_rows(TextBuffer& out, const Tallies& tallies, const CountRow<Tallies> (&rows)[Size]) {
    bool subject_printed = false;
    for (const CountRow<Tallies>& row : rows) {
        if (row.qualifies && !subject_printed) continue;
        const bool printed = print_count(out, tallies.*row.counter, row.text);
        if (!row.qualifies) subject_printed = printed;
    }
}

}  // namespace tanrove
