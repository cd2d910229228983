// What a fuzzing target asserts: a promise of the code under test, broken by an input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "base/byte_view.hpp"

namespace tanrove {

/// Ends the run with the promise's words if it was not kept.
inline void promise(bool kept, const char* words) {
    if (kept) return;
    std::fprintf(stderr, "ERROR: promise broken: %s\n", words);
    std::abort();
}

/// The input of a target.
inline ByteView input_view(const std::uint8_t* data, std::size_t size) {
    return ByteView(std::span<const std::uint8_t>(data, size));
}

}  // namespace tanrove

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
