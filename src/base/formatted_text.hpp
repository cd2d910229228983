// printf-style formatting into strings: what every sentence and every project line is made with.
#pragma once

#include <cstdarg>
#include <string>

#include "base/printf_check.hpp"

namespace tanrove {

/// Longest text that one call formats; a longer one is cut to what the first buffer held.
constexpr std::size_t max_formatted_bytes = 0x1000000;

/// The formatted text. Numbers follow the process's C locale, see `base/c_locale.hpp`.
std::string formatted(const char* format, ...) TANROVE_PRINTF(1, 2);

/// The same from an argument list.
std::string formatted_list(const char* format, std::va_list values) TANROVE_PRINTF(1, 0);

/// Text that grows sentence by sentence; it can be pointed at the console or a report at the end.
class TextBuffer {
public:
    /// Appends the formatted text as it stands, with no line end of its own.
    void print(const char* format, ...) TANROVE_PRINTF(2, 3);

    /// Appends text as it stands.
    void append(const std::string& text) { text_ += text; }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

}  // namespace tanrove
