// The chain that can be carried: the map with nothing but real values of one-letter names, 12 bytes
// each, and two chunks that begin with the same four bytes and the same name:
//
//   0    four bytes
//   4    big-endian u32 length of the name in bytes
//   8    the name in UTF-16, most significant byte first
#include "plugins/elck_settings.hpp"

#include <limits>
#include <vector>

#include "plugins/elck_chunks.hpp"
#include "plugins/state_frames.hpp"
#include "plugins/state_span.hpp"

namespace tanrove {

namespace {

constexpr std::size_t min_chunks = 3;
constexpr std::size_t records_at = 4;  // in the map's payload
constexpr std::size_t record_bytes = 12;
constexpr std::size_t value_at = 4;  // in a record

constexpr std::size_t min_named_chunk = 16;
constexpr std::size_t name_length_at = 4;
constexpr std::size_t name_at = 8;
constexpr std::size_t min_name_bytes = 2;
constexpr std::size_t max_name_bytes = 128;

constexpr std::size_t head_gap_bytes = 12;

/// The four bytes, the length and the name; empty where the chunk does not begin so.
std::string_view named_start(ByteView bytes, const ElckChunk& chunk) {
    if (chunk.size < min_named_chunk) return {};
    const std::size_t length = big_endian_u32(bytes, chunk.offset + name_length_at);
    if (length < min_name_bytes || length > max_name_bytes || length % 2 != 0) return {};
    if (length > chunk.size - name_at) return {};
    for (std::size_t i = 0; i < length; i += 2) {
        const std::size_t at = chunk.offset + name_at + i;
        if (bytes.u8(at) != 0 || !is_printable(bytes.u8(at + 1))) return {};
    }
    return bytes.text(chunk.offset, name_at + length).value_or(std::string_view());
}

bool is_known_shape(ByteView bytes, const std::vector<ElckChunk>& chain) {
    if (chain.size() < min_chunks) return false;
    const std::uint32_t map_bytes = chain.front().size;
    if (map_bytes < records_at + record_bytes || (map_bytes - records_at) % record_bytes != 0) {
        return false;
    }
    const std::string_view name = named_start(bytes, chain[1]);
    return !name.empty() && name == named_start(bytes, chain[2]);
}

/// The value in 32 bits; infinite where these cannot hold it.
float single(double value) {
    constexpr double greatest = std::numeric_limits<float>::max();
    constexpr float infinite = std::numeric_limits<float>::infinity();
    if (value > greatest) return infinite;
    return value < -greatest ? -infinite : static_cast<float>(value);
}

/// Writes the map's values; false at a record that is no real number.
bool add_values(StateBytes& state, ByteView bytes, const ElckChunk& map) {
    const std::size_t count = (map.size - records_at) / record_bytes;
    state.little(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = map.offset + records_at + i * record_bytes;
        if (!bytes.has(at, "d_")) return false;
        state.real(single(big_endian_f64(bytes, at + value_at)));
    }
    return true;
}

}  // namespace

std::string translate_chunk_chain(const SettingsCase& insert_case) {
    const SettingsCase& c = insert_case;
    if (c.build() == BuildKind::unknown) return {};
    const auto chain =
        elck_chain(c.bytes, static_cast<std::size_t>(c.insert.blockStart), c.bytes.size());
    if (!is_known_shape(c.bytes, chain)) return {};
    StateBytes rest;
    rest.zeros(head_gap_bytes);
    if (!add_values(rest, c.bytes, chain.front())) return {};
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const ElckChunk& chunk = chain[i];
        if (chunk.is_map || chunk.tag == "mdfy") continue;
        rest.little(chunk.size);
        rest.text(c.bytes.text(chunk.offset, chunk.size).value_or(std::string_view()));
    }
    const std::string body = rest.take();
    const std::string state = StateBytes().little(body.size() - head_gap_bytes).text(body).take();
    return c.is_vst3() ? one_block_frame(state) : state;
}

}  // namespace tanrove
