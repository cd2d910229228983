// Text files that other programs and people write: read up to a limit, taken apart into lines of a
// limited length, fields and numbers. Every text is a window on the file's bytes, never a copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tanrove {

/// The file's bytes, cut behind `most_bytes`; nullopt if it is none or cannot be read.
std::optional<std::string> read_text_file(const std::string& path, std::size_t most_bytes);

/// Hands a text out line by line.
class LineReader {
public:
    LineReader(std::string_view text, std::size_t most_line_bytes)
        : left_(text), most_line_bytes_(most_line_bytes) {}

    /// The next line without its end, cut at a zero byte; a line past the limit comes as several.
    /// nullopt behind the last.
    std::optional<std::string_view> next();

private:
    std::string_view left_;
    std::size_t most_line_bytes_;
};

/// The text without the blanks and tabs around it.
std::string_view trimmed(std::string_view text);

/// The text up to the first `mark`, which `rest` then begins behind; all of it, with nothing left,
/// where there is none.
std::string_view take_field(std::string_view& rest, char mark);

bool is_digit(char c);
bool is_hex_digit(char c);

/// True for one digit or more and nothing else.
bool is_number(std::string_view text);

/// The decimal number that the text begins with; 0 where it begins with none or passes 32 bits.
std::uint32_t leading_number(std::string_view text);

}  // namespace tanrove
