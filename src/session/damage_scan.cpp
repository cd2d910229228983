// A whole session is a chain of top-level blocks that ends with the file. If no block reaches the
// end, or the last block should begin behind it, the file was cut; if one does and the chain still
// breaks, something in the middle is wrong.
#include "session/damage_scan.hpp"

#include <algorithm>

#include "session/record_forms.hpp"

namespace tanrove {

namespace {

constexpr std::size_t smallest_candidate = 10;  // a header and one byte of payload

/// Furthest end of all blocks, nested and chance ones too: only how far they reach counts. 0 if
/// there are none.
std::size_t furthest_end(const BlockIndex& index) {
    std::size_t furthest = 0;
    for (const Block& block : index.blocks().all()) {
        if (index.image().holds(block.at, smallest_candidate)) {
            furthest = std::max(furthest, block.end());
        }
    }
    return furthest;
}

/// The first 'Z' with a zero high byte of the type, whatever its size says.
std::size_t chain_start(ByteView image) {
    std::size_t c = image.find(block_marker, 0);
    while (c != ByteView::npos && image.holds(c, smallest_candidate) &&
           image.u8(c + block_high_type_at) != 0) {
        c = image.find(block_marker, c + 1);
    }
    return std::min(c, image.size());
}

/// Where the walk along the chain stops.
std::size_t chain_end(ByteView image) {
    std::size_t c = chain_start(image);
    while (isBlockAt(image, c, image.size())) c += block_size_base + image.u32(c + block_size_at);
    return c;
}

}  // namespace

const char* damage_word(DamageVerdict verdict) {
    switch (verdict) {
        case DamageVerdict::damaged:
            return "damaged";
        case DamageVerdict::incomplete:
            return "incomplete";
        case DamageVerdict::none:
            break;
    }
    return "none";
}

DamageReport scanDamage(const BlockIndex& index) {
    const std::size_t size = index.image().size();
    const std::size_t furthest = furthest_end(index);
    if (furthest == 0) return {};
    if (furthest < size || read_first_pointer(index.image()).value_or(0) >= size) {
        return {.verdict = DamageVerdict::incomplete, .trailing_bytes = size - furthest};
    }
    const std::size_t stop = chain_end(index.image());
    if (stop >= size) return {};
    return {
        .verdict = DamageVerdict::damaged,
        .break_at = stop,
        .break_percent = 100.0 * static_cast<double>(stop) / static_cast<double>(size),
    };
}

}  // namespace tanrove
