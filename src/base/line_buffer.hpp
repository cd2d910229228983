// Text that grows at its end: project lines on their way to a file. A line is a dozen short pieces,
// so a piece costs its bytes and one comparison, and nothing is set to zero first.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace tanrove {

class LineBuffer {
public:
    LineBuffer();

    /// Room for at least `count` bytes behind the text. What is written there joins the text by
    /// `end_at`; the room is good until the next call.
    char* room(std::size_t count) {
        if (static_cast<std::size_t>(limit_ - end_) < count) grow(count);
        return end_;
    }

    /// Ends the text at a place in the room that was asked for last.
    void end_at(char* end) { end_ = end; }

    std::string_view text() const { return {bytes_.get(), size()}; }
    std::size_t size() const { return static_cast<std::size_t>(end_ - bytes_.get()); }

    /// Drops what stands behind the first `size` bytes, of which there are as many.
    void shorten(std::size_t size) { end_ = bytes_.get() + size; }

private:
    void grow(std::size_t count);

    std::unique_ptr<char[]> bytes_;
    char* end_ = nullptr;    // of the text
    char* limit_ = nullptr;  // of the room
};

}  // namespace tanrove
