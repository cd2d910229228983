// Project lines, gathered in a buffer and handed on in large pieces.
#include "base/text_sink.hpp"

#include <cstdarg>
#include <cstdio>

#include "base/c_locale_print.hpp"
#include "base/formatted_text.hpp"

namespace tanrove {

void TextSink::append_formatted(const char* format, std::va_list values) {
    std::va_list again;
    va_copy(again, values);
    if (!append_plain(buffer_, format, values))
        append_parts(buffer_, formatted_list(format, again));
    va_end(again);
}

void TextSink::line(int level, const char* format, ...) {
    append_parts(buffer_, Indent{level});
    std::va_list values;
    va_start(values, format);
    append_formatted(format, values);
    va_end(values);
    append_parts(buffer_, "\n");
    hand_on_if_full();
}

void TextSink::text(const char* format, ...) {
    std::va_list values;
    va_start(values, format);
    append_formatted(format, values);
    va_end(values);
    hand_on_if_full();
}

void TextSink::raw(const std::string& bytes) {
    put(bytes);
}

void TextSink::hand_on() {
    const std::string_view text = buffer_.text();
    if (memory_ != nullptr) {
        *memory_ += text;
    } else {
        if (std::fwrite(text.data(), 1, text.size(), stream_) != text.size()) failed_ = true;
        if (std::fflush(stream_) != 0) failed_ = true;
    }
    buffer_.shorten(0);
}

void TextSink::flush() {
    if (buffer_.size() > 0) hand_on();
}

}  // namespace tanrove
