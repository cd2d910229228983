// Header: u8 3 at 0, the text "0010111100101011" at 1, u8 byte order at 17 (0 low byte first), u8
// cipher type at 18 (5 since Pro Tools 10, 1 before), u8 cipher value at 19. The rest is xored with
// a key of 256 bytes, place k holding k times the step. Type 5 takes the place of the file offset's
// 4096-byte page and the step's negative, type 1 that of the offset itself.
#include "ptformat/cipher.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace tanrove::ptformat {

namespace {

constexpr std::string_view file_marker =
    "\x03"
    "0010111100101011";
constexpr std::size_t byte_order_at = 17;
constexpr std::size_t cipher_type_at = 18;
constexpr std::size_t cipher_value_at = 19;

constexpr std::uint8_t type_by_byte = 1;
constexpr std::uint8_t type_by_page = 5;
constexpr unsigned by_byte_factor = 53;
constexpr unsigned by_page_factor = 11;

constexpr std::size_t page_bytes = 4096;
constexpr std::size_t key_bytes = 256;

/// The number whose product with `factor` has `value` as its low byte. One exists: both factors are
/// odd.
std::uint8_t divided(std::uint8_t value, unsigned factor) {
    unsigned number = 0;
    while ((number * factor & 0xff) != value) ++number;
    return static_cast<std::uint8_t>(number);
}

std::uint8_t key_byte(std::size_t place, std::uint8_t step) {
    return static_cast<std::uint8_t>(place * step & 0xff);
}

void decrypt_by_page(std::span<std::uint8_t> file, std::uint8_t step) {
    for (std::size_t at = header_bytes; at < file.size();) {
        const std::size_t page = at / page_bytes;
        const std::size_t end = std::min(file.size(), (page + 1) * page_bytes);
        const std::uint8_t key = key_byte(page % key_bytes, step);
        for (std::uint8_t& byte : file.subspan(at, end - at)) {
            byte = static_cast<std::uint8_t>(byte ^ key);
        }
        at = end;
    }
}

void decrypt_by_byte(std::span<std::uint8_t> file, std::uint8_t step) {
    std::array<std::uint8_t, key_bytes> key{};
    for (std::size_t place = 0; place < key_bytes; ++place) key[place] = key_byte(place, step);
    for (std::size_t at = header_bytes; at < file.size(); ++at) {
        file[at] = static_cast<std::uint8_t>(file[at] ^ key[at % key_bytes]);
    }
}

}  // namespace

std::optional<Cipher> read_cipher(ByteView header) {
    if (!header.holds(0, header_bytes) || !header.has(0, file_marker)) return std::nullopt;
    const std::uint8_t value = header.u8(cipher_value_at);
    switch (header.u8(cipher_type_at)) {
        case type_by_page:
            return Cipher{
                .moves_by_page = true,
                .step = static_cast<std::uint8_t>(key_bytes - divided(value, by_page_factor)),
            };
        case type_by_byte:
            return Cipher{.moves_by_page = false, .step = divided(value, by_byte_factor)};
        default:
            return std::nullopt;
    }
}

bool is_big_endian(ByteView header) {
    return header.u8(byte_order_at) != 0;
}

void decrypt(std::span<std::uint8_t> file, const Cipher& cipher) {
    if (cipher.moves_by_page) {
        decrypt_by_page(file, cipher.step);
    } else {
        decrypt_by_byte(file, cipher.step);
    }
}

}  // namespace tanrove::ptformat
