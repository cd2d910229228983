// Project lines, gathered in a buffer and handed on in large pieces.
#include "base/text_sink.hpp"

#include <cstdarg>
#include <cstdio>

#include "base/c_locale_print.hpp"
#include "base/formatted_text.hpp"

namespace tanrove {

void TextSink::line(int level, const char* format, ...) {
    std::string& text = target();
    text.append(static_cast<std::size_t>(level) * indent_width, ' ');
    std::va_list values;
    va_start(values, format);
    const bool is_plain = append_plain(text, format, values);
    va_end(values);
    if (!is_plain) {
        va_start(values, format);
        text += formatted_list(format, values);
        va_end(values);
    }
    text += '\n';
    hand_on_if_full();
}

void TextSink::text(const char* format, ...) {
    std::string& text = target();
    std::va_list values;
    va_start(values, format);
    const bool is_plain = append_plain(text, format, values);
    va_end(values);
    if (!is_plain) {
        va_start(values, format);
        text += formatted_list(format, values);
        va_end(values);
    }
    hand_on_if_full();
}

void TextSink::raw(const std::string& bytes) {
    put(bytes);
}

void TextSink::flush() {
    if (stream_ == nullptr || buffer_.empty()) return;
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), stream_) != buffer_.size()) failed_ = true;
    if (std::fflush(stream_) != 0) failed_ = true;
    buffer_.clear();
}

}  // namespace tanrove
