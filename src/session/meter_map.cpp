// The meter map: a block named "Meter" (0x2029). Real sessions store it twice with the same
// content, and a session that never changes its meter stores it with no entries. From its 'Z':
//
//   9   "Meter"
//   20  u16 number of entries
//   24  the first entry; entries step by 36 bytes
//
// An entry:
//
//   0   position, 8 bytes, ticks
//   8   i32 bar; the first is the one that the session begins with
//   12  u32 numerator
//   16  u32 denominator
//   22  u32 of no known use
#include "session/meter_map.hpp"

#include <optional>
#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::string_view meter_map_name = "Meter";
constexpr std::size_t count_at = 20;
constexpr std::size_t first_entry_at = 24;
constexpr std::size_t entry_step = 36;
constexpr std::size_t bar_at = 8;
constexpr std::size_t numerator_at = 12;
constexpr std::size_t denominator_at = 16;
constexpr std::size_t extra_at = 22;

constexpr std::size_t max_entries = 4096;
constexpr std::uint32_t max_numerator = 99;
constexpr std::uint32_t max_denominator = 64;

std::optional<MeterPoint> read_entry(ByteView entry) {
    const auto position = read_position(entry, 0);
    const MeterPoint point = {
        .tick = position < tick_origin ? 0 : static_cast<std::int64_t>(position - tick_origin),
        .bar = entry.i32(bar_at),
        .numerator = entry.u32(numerator_at),
        .denominator = entry.u32(denominator_at),
        .extra = entry.u32(extra_at),
    };
    if (point.numerator < 1 || point.numerator > max_numerator) return std::nullopt;
    if (point.denominator < 1 || point.denominator > max_denominator) return std::nullopt;
    return point;
}

bool is_meter_map(ByteView record) {
    const std::size_t count = record.u16(count_at);
    return record.has(block_payload_at, meter_map_name) && count <= max_entries &&
           record.holds(first_entry_at, count * entry_step);
}

std::vector<MeterPoint> read_entries(ByteView record) {
    std::vector<MeterPoint> points;
    const std::size_t count = record.u16(count_at);
    points.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto point = read_entry(record.window(first_entry_at + i * entry_step, entry_step));
        if (!point) return {};  // one broken entry puts the bars of all others in doubt
        points.push_back(*point);
    }
    return points;
}

}  // namespace

std::vector<MeterPoint> readMeterMap(const BlockIndex& index) {
    for (const Block& block : index.of_type(block_type::meter_map).all()) {
        const ByteView record = index.image().window(block.at, block.end() - block.at);
        const bool has_entries = record.u16(count_at) > 0;
        if (has_entries && is_meter_map(record)) return read_entries(record);
    }
    return {};
}

}  // namespace tanrove
