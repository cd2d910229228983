// How a project file holds text and numbers: the quoting of names and what may be printed as a
// position. Every writer of project text uses these.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tanrove {

/// The text between quotes, as it stands in a project line. The quote is the first of " ' ` that
/// the text does not hold; if it holds all three it is ", and every " in the text becomes _. Tabs,
/// line ends and zero bytes become blanks, so that a name can never leave its line.
std::string quoted(std::string_view text);

/// A text that a row of the project shows in quotes.
struct Quoted {
    std::string_view text;
};

// What rows ask of their parts.
char* put_part(char* at, const Quoted& quoted);

inline std::size_t part_room(const Quoted& quoted) {
    return quoted.text.size() + 2;
}

/// True if `quoted` keeps the text to the byte. A path that it changes leads to no file.
bool is_kept_by_quotes(std::string_view text);

/// The number as it can be printed: 0 for what is not finite, and no negative zero.
double printable(double number);

}  // namespace tanrove
