// The session file's xor cipher, from the writing side: a step is chosen, and the value byte that
// leads a reader back to it is computed.
#include "support/session_cipher.hpp"

namespace tanrove::builder {

Bytes encrypted(Bytes image, Cipher cipher, std::uint8_t key_step) {
    constexpr std::size_t plain_bytes = 20;
    if (image.size() < plain_bytes) return image;
    const bool is_ptx = cipher == Cipher::ptx;
    image[18] = static_cast<std::uint8_t>(cipher);
    image[19] = static_cast<std::uint8_t>(key_step * (is_ptx ? 11 : 53));
    const unsigned delta = is_ptx ? 256U - key_step : key_step;
    for (std::size_t i = plain_bytes; i < image.size(); ++i) {
        const unsigned key_index = static_cast<unsigned>((is_ptx ? i >> 12 : i) & 0xff);
        image[i] = static_cast<std::uint8_t>(image[i] ^ (key_index * delta & 0xff));
    }
    return image;
}

}  // namespace tanrove::builder
