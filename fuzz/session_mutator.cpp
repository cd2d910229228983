// Mutations that know blocks. Plain ones break nearly every session at its first size word; these
// change what one block holds, or how often it is there, and mend the sizes of all blocks around
// it.
#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "fuzz/promise.hpp"
#include "support/byte_writer.hpp"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed);

namespace {

using tanrove::ByteView;
using tanrove::builder::Bytes;

constexpr std::size_t header_bytes = 9;
constexpr std::size_t size_at = 3;
constexpr std::size_t size_base = 7;
constexpr std::size_t growth = 64;  // most bytes that one mutation adds to a payload

struct Span {
    std::size_t start, end;
};

std::vector<Span> blocks_of(ByteView image) {
    std::vector<Span> blocks;
    for (std::size_t p = image.find('Z', 0); p != ByteView::npos; p = image.find('Z', p + 1)) {
        const std::size_t size = image.u32(p + size_at);
        if (!image.holds(p, header_bytes) || image.u8(p + 2) != 0 || size < 2) continue;
        if (image.holds(p + size_base, size)) blocks.push_back({p, p + size_base + size});
    }
    return blocks;
}

/// Replaces `old_bytes` at `at`, and adds the difference to the size of every block around it.
Bytes replaced(Bytes image, const std::vector<Span>& blocks, Span old_bytes, const Bytes& bytes) {
    const std::size_t difference = bytes.size() - (old_bytes.end - old_bytes.start);
    for (const Span& block : blocks) {
        if (block.start + header_bytes > old_bytes.start || block.end < old_bytes.end) continue;
        const std::size_t size = block.end - block.start - size_base + difference;
        for (std::size_t i = 0; i < 4; ++i) {
            image[block.start + size_at + i] = static_cast<std::uint8_t>(size >> (8 * i));
        }
    }
    const auto at = [&](std::size_t p) { return image.begin() + static_cast<std::ptrdiff_t>(p); };
    image.erase(at(old_bytes.start), at(old_bytes.end));
    image.insert(at(old_bytes.start), bytes.begin(), bytes.end());
    return image;
}

Bytes part(const Bytes& image, Span span) {
    const auto from = image.begin();
    return {from + static_cast<std::ptrdiff_t>(span.start),
            from + static_cast<std::ptrdiff_t>(span.end)};
}

Bytes mutated_payload(const Bytes& image, Span payload) {
    Bytes bytes = part(image, payload);
    const std::size_t size = bytes.size();
    bytes.resize(size + growth);
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
    return bytes;
}

Bytes mutated_session(const Bytes& image, std::minstd_rand& random) {
    const std::vector<Span> blocks = blocks_of(ByteView(image));
    if (blocks.empty()) return image;
    const Span one = blocks[random() % blocks.size()];
    const Span other = blocks[random() % blocks.size()];
    switch (random() % 6) {
        case 0:  // twice
            return replaced(image, blocks, {one.end, one.end}, part(image, one));
        case 1:  // not at all
            return replaced(image, blocks, one, {});
        case 2:  // what stands elsewhere
            return replaced(image, blocks, one, part(image, other));
        default: {
            const Span payload = {one.start + header_bytes, one.end};
            return replaced(image, blocks, payload, mutated_payload(image, payload));
        }
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
    std::minstd_rand random(seed);
    if (random() % 4 == 0) return LLVMFuzzerMutate(data, size, max_size);
    const Bytes session = mutated_session(Bytes(data, data + size), random);
    if (session.size() > max_size || session.empty()) return LLVMFuzzerMutate(data, size, max_size);
    std::memcpy(data, session.data(), session.size());
    return session.size();
}
