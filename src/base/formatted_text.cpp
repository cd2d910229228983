// printf-style formatting into strings: a stack buffer first, a heap buffer of the exact size where
// the text is longer.
#include "base/formatted_text.hpp"

#include <array>
#include <cstdio>

namespace tanrove {

namespace {

constexpr std::size_t stack_bytes = 4096;

}  // namespace

std::string formatted_list(const char* format, std::va_list values) {
    std::array<char, stack_bytes> stack;
    stack[0] = 0;
    std::va_list again;
    va_copy(again, values);
    const int needed = std::vsnprintf(stack.data(), stack.size(), format, values);
    std::string text;
    if (needed >= 0 && static_cast<std::size_t>(needed) < stack.size()) {
        text.assign(stack.data(), static_cast<std::size_t>(needed));
    } else if (needed > 0 && static_cast<std::size_t>(needed) < max_formatted_bytes) {
        text.resize(static_cast<std::size_t>(needed));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    } else {
        text = stack.data();
    }
    va_end(again);
    return text;
}

std::string formatted(const char* format, ...) {
    std::va_list values;
    va_start(values, format);
    std::string text = formatted_list(format, values);
    va_end(values);
    return text;
}

void TextBuffer::print(const char* format, ...) {
    std::va_list values;
    va_start(values, format);
    text_ += formatted_list(format, values);
    va_end(values);
}

}  // namespace tanrove
