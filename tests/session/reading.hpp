// What a reader finds in an image of bytes, in one call.
#pragma once

#include "session/strip_rows.hpp"
#include "support/byte_writer.hpp"

namespace tanrove {

template <typename Read>
auto over(const builder::Bytes& image, Read read) {
    return read(BlockIndex(ByteView(image)));
}

/// The same for a reader that takes the strip rows as well.
template <typename Read>
auto over_rows(const builder::Bytes& image, Read read) {
    const BlockIndex index{ByteView(image)};
    return read(index, readStripRows(index).rows);
}

/// The first `count` bytes.
inline builder::Bytes cut_to(const builder::Bytes& image, std::size_t count) {
    return {image.begin(), image.begin() + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace tanrove
