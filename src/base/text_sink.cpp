// Project lines, gathered in a buffer and handed on in large pieces.
#include "base/text_sink.hpp"

#include <cstdarg>
#include <cstdio>

#include "base/c_locale_print.hpp"
#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

constexpr std::size_t flush_bytes = 1 << 16;
constexpr std::size_t indent_width = 2;

}  // namespace

void TextSink::keep(const char* bytes, std::size_t count) {
    if (memory_ != nullptr) {
        memory_->append(bytes, count);
        return;
    }
    buffer_.append(bytes, count);
    if (buffer_.size() >= flush_bytes) flush();
}

void TextSink::line(int level, const char* format, ...) {
    std::string& target = memory_ != nullptr ? *memory_ : buffer_;
    target.append(static_cast<std::size_t>(level) * indent_width, ' ');
    std::va_list values;
    va_start(values, format);
    const bool is_plain = append_plain(target, format, values);
    va_end(values);
    if (!is_plain) {
        va_start(values, format);
        target += formatted_list(format, values);
        va_end(values);
    }
    keep("\n", 1);
}

void TextSink::text(const char* format, ...) {
    std::string& target = memory_ != nullptr ? *memory_ : buffer_;
    std::va_list values;
    va_start(values, format);
    const bool is_plain = append_plain(target, format, values);
    va_end(values);
    if (!is_plain) {
        va_start(values, format);
        target += formatted_list(format, values);
        va_end(values);
    }
    keep("", 0);
}

void TextSink::raw(const std::string& bytes) {
    keep(bytes.data(), bytes.size());
}

void TextSink::flush() {
    if (stream_ == nullptr || buffer_.empty()) return;
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), stream_) != buffer_.size()) failed_ = true;
    if (std::fflush(stream_) != 0) failed_ = true;
    buffer_.clear();
}

}  // namespace tanrove
