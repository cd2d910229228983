// The session settings (0x1028) and the click (0x2055). Of the settings, from the 'Z':
//
//   9   u8 audio format, 3 WAV, 4 AIFF
//   21  u32 count of the parts of the path that the last I/O settings came from
//   25  the parts, each a counted text
//
// and, counted from behind the last part:
//
//   6   u8 pan depth, 1 to 4
//   7   u8 not 0 for floating point
//   9   u8 bit depth
//
// Where that does not hold together, the three stand at the places that they have behind a path of
// the usual length: 118, 119 and 121.
#include "session/session_settings.hpp"

#include "session/block_types.hpp"
#include "session/record_forms.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t min_settings_size = 4;
constexpr std::size_t audio_format_at = 9;
constexpr std::size_t part_count_at = 21;
constexpr std::size_t first_part_at = 25;
constexpr std::size_t max_parts = 256;
constexpr std::size_t max_part_bytes = 4096;

// Counted from the values: behind the path by its counts, or at a fixed place.
constexpr std::size_t values_behind_path = 6;
constexpr std::size_t fixed_values_at = 118;
constexpr std::size_t float_at = 1;
constexpr std::size_t bit_depth_at = 3;
constexpr std::size_t values_bytes = 4;

constexpr int last_pan_depth = 4;

constexpr std::uint32_t click_size = 31;
constexpr std::size_t click_on_at = 29;

bool is_bit_depth(int bits) {
    return bits == 16 || bits == 24 || bits == 32;
}

/// The values behind the path, if the path stays in its block and they make sense.
std::optional<ByteView> values_behind(ByteView record) {
    const std::size_t part_count = record.u32(part_count_at);
    if (!record.holds(part_count_at, 4) || part_count > max_parts) return std::nullopt;
    std::size_t at = first_part_at;
    for (std::size_t i = 0; i < part_count; ++i) {
        const auto part = readCountedText(record, at, max_part_bytes, record.size());
        if (!part) return std::nullopt;
        at += 4 + part->size();
    }
    const ByteView values = record.window(at + values_behind_path, values_bytes);
    const int pan_depth = values.u8(0);
    if (pan_depth < 1 || pan_depth > last_pan_depth) return std::nullopt;
    if (!is_bit_depth(values.u8(bit_depth_at))) return std::nullopt;
    return values;
}

/// Pan depth, float mark and bit depth of the first settings record that has them: behind its path,
/// else as far as `reach` bytes of them lie at the fixed place.
std::optional<ByteView> find_values(const BlockIndex& index, std::size_t reach) {
    for (const Block& block : index.of_type(block_type::session_settings).all()) {
        const ByteView record = index.image().window(block.at, block.end() - block.at);
        if (const auto values = values_behind(record)) return values;
        if (record.holds(fixed_values_at, reach)) {
            return record.window(fixed_values_at, values_bytes);
        }
    }
    return std::nullopt;
}

}  // namespace

AudioFormat readAudioFormat(const BlockIndex& index) {
    for (const Block& block : index.of_type(block_type::session_settings).all()) {
        if (block.size < min_settings_size) continue;
        const auto format = index.image().u8(block.at + audio_format_at);
        return format == 3   ? AudioFormat::wav
               : format == 4 ? AudioFormat::aiff
                             : AudioFormat::unknown;
    }
    return AudioFormat::unknown;
}

std::optional<BitDepth> readBitDepth(const BlockIndex& index) {
    const auto values = find_values(index, values_bytes);
    if (!values || !is_bit_depth(values->u8(bit_depth_at))) return std::nullopt;
    return BitDepth{.bits = values->u8(bit_depth_at), .is_float = values->u8(float_at) != 0};
}

std::optional<int> readPanDepth(const BlockIndex& index) {
    const auto values = find_values(index, 1);
    if (!values) return std::nullopt;
    return static_cast<std::int8_t>(values->u8(0));
}

int readClickSetting(const BlockIndex& index) {
    for (const Block& block : index.of_type(block_type::click).all()) {
        if (block.size != click_size) continue;
        const auto on = index.image().u8(block.at + click_on_at);
        return on <= 1 ? on : -1;
    }
    return -1;
}

}  // namespace tanrove
