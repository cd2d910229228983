// The writer of project text: lines with their indentation over a C stream, or into memory.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

#include "base/line_buffer.hpp"
#include "base/number_text.hpp"
#include "base/printf_check.hpp"

namespace tanrove {

/// Writes project lines: two blanks a level, "\n" ends, printf formats. It does not own the stream.
/// A failed write is remembered and told by `failed`.
class TextSink {
public:
    /// Writes to `stream`, opened in binary mode by the caller. Buffers what it is given.
    explicit TextSink(std::FILE* stream) : stream_(stream) {}
    /// Writes to a string that the caller keeps. It has each line as soon as that is written.
    explicit TextSink(std::string& memory) : memory_(&memory) {}
    ~TextSink() { flush(); }
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;

    /// One line: `level` times two blanks, the formatted text, a line end.
    void line(int level, const char* format, ...) TANROVE_PRINTF(3, 4);

    /// The same of texts and numbers one after the other, with no format to read: for the lines
    /// that a project has hundreds of thousands of.
    template <typename... Parts>
    void row(int level, const Parts&... parts) {
        append_parts(buffer_, Indent{level}, parts..., "\n");
        hand_on_if_full();
    }

    /// Texts and numbers as they stand.
    template <typename... Parts>
    void put(const Parts&... parts) {
        append_parts(buffer_, parts...);
        hand_on_if_full();
    }

    /// Formatted text as it stands, without indentation or line end.
    void text(const char* format, ...) TANROVE_PRINTF(2, 3);

    /// Bytes as they stand.
    void raw(const std::string& bytes);

    /// Hands what is buffered to the stream.
    void flush();

    /// True once any write has failed; it stays true.
    bool failed() const { return failed_; }

private:
    static constexpr std::size_t flush_bytes = 1 << 18;

    void append_formatted(const char* format, std::va_list values) TANROVE_PRINTF(2, 0);
    void hand_on_if_full() {
        if (buffer_.size() >= flush_bytes || memory_ != nullptr) hand_on();
    }
    void hand_on();

    std::FILE* stream_ = nullptr;
    std::string* memory_ = nullptr;
    LineBuffer buffer_;
    bool failed_ = false;
};

}  // namespace tanrove
