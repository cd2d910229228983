// Encrypts session images as the session file does, for tests, the demo and the fuzzing seeds.
#pragma once

#include "support/byte_writer.hpp"

namespace tanrove::builder {

enum class Cipher : std::uint8_t {
    old_sessions = 1,  ///< before .ptx: the key runs with each byte
    ptx = 5,           ///< the key moves on every 4096 bytes
};

/// Encrypts everything behind the first 20 bytes, and writes the cipher's type and value into
/// offsets 18 and 19. Applied to its own result with the same arguments it decrypts. An image of
/// fewer than 20 bytes stays as it is.
Bytes encrypted(Bytes image, Cipher cipher, std::uint8_t key_step);

}  // namespace tanrove::builder
