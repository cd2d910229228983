// Damages a good image in every way that a reader must survive: cut at each block, each block's
// size a lie, each byte flipped.
#pragma once

#include <cstring>

#include "session/block_index.hpp"
#include "support/byte_writer.hpp"

namespace tanrove::builder {

/// Calls `check` with the image itself and with each damaged one. `stride` leaves out flipped bytes
/// where the image is long.
template <typename Check>
void for_each_damage(const Bytes& good, std::size_t stride, Check check) {
    check(good);
    const BlockIndex index{ByteView(good)};
    for (const Block& b : index.blocks().all()) {
        check(Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(b.at)));
        for (const std::uint32_t size : {0U, 1U, b.size - 1, b.size + 1, 0xffffffffU}) {
            Bytes bad = good;
            std::memcpy(bad.data() + b.at + 3, &size, sizeof size);
            check(bad);
        }
    }
    for (std::size_t at = 0; at < good.size(); at += stride) {
        for (const int value : {0, 1, good[at] + 1, good[at] ^ 0xff}) {
            Bytes bad = good;
            bad[at] = static_cast<std::uint8_t>(value);
            check(bad);
        }
    }
}

}  // namespace tanrove::builder
