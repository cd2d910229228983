// The writer of project text: lines with their indentation over a C stream, or into memory.
#pragma once

#include <cstdio>
#include <string>

#include "base/printf_check.hpp"

namespace tanrove {

/// Writes project lines: two blanks a level, "\n" ends, printf formats. It does not own the stream.
/// A failed write is remembered and told by `failed`.
class TextSink {
public:
    /// Writes to `stream`, opened in binary mode by the caller. Buffers what it is given.
    explicit TextSink(std::FILE* stream) : stream_(stream) {}
    /// Writes to a string that the caller keeps.
    explicit TextSink(std::string& memory) : memory_(&memory) {}
    ~TextSink() { flush(); }
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;

    /// One line: `level` times two blanks, the formatted text, a line end.
    void line(int level, const char* format, ...) TANROVE_PRINTF(3, 4);

    /// Formatted text as it stands, without indentation or line end.
    void text(const char* format, ...) TANROVE_PRINTF(2, 3);

    /// Bytes as they stand.
    void raw(const std::string& bytes);

    /// Hands what is buffered to the stream.
    void flush();

    /// True once any write has failed; it stays true.
    bool failed() const { return failed_; }

private:
    void keep(const char* bytes, std::size_t count);

    std::FILE* stream_ = nullptr;
    std::string* memory_ = nullptr;
    std::string buffer_;
    bool failed_ = false;
};

}  // namespace tanrove
