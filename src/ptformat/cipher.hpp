// The session file's header and the xor cipher behind it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "base/byte_view.hpp"

namespace tanrove::ptformat {

/// Bytes of the header; they stand plain in front of what is encrypted.
constexpr std::size_t header_bytes = 20;

/// What the header says about the bytes behind it.
struct Cipher {
    bool moves_by_page = false;  ///< the key moves on every 4096 bytes, not with each byte
    std::uint8_t step = 0;       ///< what each place of the key adds to the one before
};

/// The cipher that the header names; nullopt if the marker text is missing or the type is unknown.
std::optional<Cipher> read_cipher(ByteView header);

/// True if the header says that the numbers of the session have their high byte first, as old
/// Macintosh sessions do.
bool is_big_endian(ByteView header);

/// Decrypts a whole file in place; its header stays as it is.
void decrypt(std::span<std::uint8_t> file, const Cipher& cipher);

}  // namespace tanrove::ptformat
