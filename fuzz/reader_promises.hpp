// What every reader promises of any image, as the fuzzing targets of the record families ask it.
#pragma once

#include "fuzz/promise.hpp"
#include "tools/all_readers.hpp"

namespace tanrove {

/// Memory that all records of one family take, for each byte of the image, and on any image.
constexpr std::size_t max_record_bytes_per_image_byte = 64;
constexpr std::size_t max_record_bytes_of_nothing = 4096;

inline std::size_t promised_bytes(ByteView image) {
    return image.size() * max_record_bytes_per_image_byte + max_record_bytes_of_nothing;
}

/// Reads one family twice: the same records both times, and no more than the image accounts for.
inline void promise_family(const BlockIndex& index, ReaderFamily family) {
    const auto readings = read_family(index, family);
    for (const Reading& reading : readings) {
        if (reading.bytes > promised_bytes(index.image())) {
            std::fprintf(stderr, "%s: %zu bytes\n", reading.reader.data(), reading.bytes);
            promise(false, "records take a small multiple of the image");
        }
    }
    promise(readings == read_family(index, family), "two runs read the same");
}

}  // namespace tanrove
