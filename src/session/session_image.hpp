// The decrypted session, as every reader sees it.
#pragma once

#include <cstdint>

#include "base/byte_view.hpp"

namespace tanrove {

/// Rate that stands until the session says another, Hz.
constexpr std::int64_t default_session_rate_hz = 48000;

/// The decrypted bytes and the session's rate. The bytes belong to the PTFFormat object, which
/// lives for the whole conversion.
struct SessionImage {
    ByteView bytes;
    std::int64_t rate = default_session_rate_hz;  ///< Hz
};

}  // namespace tanrove
