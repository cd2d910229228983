// The rare step of a growing text: a new place of at least twice the size.
#include "base/line_buffer.hpp"

#include <algorithm>
#include <cstring>

namespace tanrove {

namespace {

constexpr std::size_t first_bytes = 4096;

}  // namespace

LineBuffer::LineBuffer()
    : bytes_(new char[first_bytes]), end_(bytes_.get()), limit_(end_ + first_bytes) {}

void LineBuffer::grow(std::size_t count) {
    const std::size_t held = size();
    const std::size_t bytes = std::max(2 * held, held + count);
    std::unique_ptr<char[]> larger(new char[bytes]);
    std::memcpy(larger.get(), bytes_.get(), held);
    bytes_ = std::move(larger);
    end_ = bytes_.get() + held;
    limit_ = bytes_.get() + bytes;
}

}  // namespace tanrove
