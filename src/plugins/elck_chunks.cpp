// The chain begins at offset 17 of the settings block. A chunk, its numbers big-endian:
//
//   0    u32 whole length, these 56 bytes counted
//   4    u32 version
//   8    8 bytes, the plug-in's code as in all of its chunks
//   16   4 bytes, the id of the plug-in's build
//   20   4 bytes, the tag
//   24   32 bytes, a name padded with zeros
//   56   the payload
//
// The map's payload: 4 bytes, then records. A record is "d_" or "l_" and a name, zeros up to the
// next multiple of four, at least one, and the value: an f64 behind "d_", an i32 behind "l_".
#include "plugins/elck_chunks.hpp"

#include <algorithm>

#include "plugins/state_span.hpp"

namespace tanrove {

namespace {

constexpr std::size_t chain_at = 17;
constexpr std::size_t header_bytes = 56;
constexpr std::size_t code_at = 8;
constexpr std::size_t tag_at = 20;
constexpr std::size_t tag_bytes = 4;
constexpr std::size_t most_bytes_behind = 8;
constexpr std::string_view map_tag = "elck";

constexpr std::size_t records_at = 4;  // in the map's payload
constexpr std::size_t prefix_bytes = 2;
constexpr std::size_t min_state_bytes = 32;

bool can_be_state(ByteView image, const ElckChunk& chunk) {
    return !chunk.is_map && chunk.size >= min_state_bytes &&
           !is_padded_text(image, chunk.offset, chunk.size);
}

/// The value of the record whose name of `name_length` bytes begins at `at`, moved behind it.
std::optional<double> take_value(ByteView bytes, std::size_t& at, std::size_t name_length) {
    const bool is_real = bytes.u8(at) == 'd';
    const std::size_t value_at = at + (name_length + 4) / 4 * 4;
    const std::size_t width = is_real ? 8 : 4;
    if (!bytes.holds(value_at, width)) return std::nullopt;
    at = value_at + width;
    if (is_real) return big_endian_f64(bytes, value_at);
    return static_cast<std::int32_t>(big_endian_u32(bytes, value_at));
}

/// All chunks, whatever the first one is.
std::vector<ElckChunk> chunk_chain(ByteView image, std::size_t block_start, std::size_t limit) {
    const ByteView bytes = image.window(0, limit);
    const auto code = bytes.text(block_start + settings_code_at, settings_code_bytes);
    std::vector<ElckChunk> chain;
    std::size_t at = block_start + chain_at;
    while (bytes.holds(at, header_bytes)) {
        const std::size_t length = big_endian_u32(bytes, at);
        if (length < header_bytes || !bytes.holds(at, length)) return {};
        if (!code || !bytes.has(at + code_at, *code)) return {};
        chain.push_back({at + header_bytes, chunk_bytes(length - header_bytes),
                         bytes.has(at + tag_at, map_tag), *bytes.text(at + tag_at, tag_bytes)});
        at += length;
    }
    if (chain.empty() || bytes.size() - at > most_bytes_behind) return {};
    return chain;
}

}  // namespace

std::vector<ElckChunk> elck_chain(ByteView image, std::size_t block_start, std::size_t limit) {
    auto chain = chunk_chain(image, block_start, limit);
    if (chain.empty() || !chain.front().is_map) return {};
    return chain;
}

bool repeats_first_chunk(ByteView image, std::size_t block_start, std::size_t limit) {
    const auto chain = chunk_chain(image, block_start, limit);
    return std::ranges::count(chain, chain.empty() ? "" : chain.front().tag, &ElckChunk::tag) > 1;
}

std::optional<ElckState> find_elck_state(ByteView image, std::size_t block_start,
                                         std::size_t limit) {
    ElckState state;
    for (const ElckChunk& chunk : elck_chain(image, block_start, limit)) {
        if (!can_be_state(image, chunk)) continue;
        if (state.chunk_count == 0) {
            state.offset = chunk.offset;
            state.size = chunk.size;
        }
        ++state.chunk_count;
    }
    if (state.chunk_count == 0) return std::nullopt;
    return state;
}

ElckControls read_elck_controls(ByteView image, std::size_t block_start, std::size_t limit) {
    ElckControls read;
    const auto chain = elck_chain(image, block_start, limit);
    if (chain.empty()) return read;
    const ElckChunk& map = chain.front();
    const ByteView bytes = image.window(0, map.offset + map.size);
    std::size_t at = map.offset + records_at;
    read.at = at;
    while (bytes.has(at, "d_") || bytes.has(at, "l_")) {
        const std::size_t name_end = bytes.find(std::uint8_t{0}, at);
        if (name_end == ByteView::npos) break;
        const auto name = bytes.text(at + prefix_bytes, name_end - at - prefix_bytes);
        const auto value = take_value(bytes, at, name_end - at);
        if (!name || !value) break;
        read.controls.push_back({std::string(*name), *value});
    }
    return read;
}

std::map<std::string, double> read_elck_map(ByteView image, std::size_t block_start,
                                            std::size_t limit) {
    std::map<std::string, double> values;
    for (auto& [name, value] : read_elck_controls(image, block_start, limit).controls) {
        values.emplace(name, value);
    }
    return values;
}

}  // namespace tanrove
