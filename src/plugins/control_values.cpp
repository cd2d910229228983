// A record of the list: "d_" and an f64, or "l_" and an i32, both big-endian. Between the two
// stands the control's name; all names of a list take the same space, so that the value begins 4,
// 8, 12 or 16 bytes into the record.
#include "plugins/control_values.hpp"

#include <array>

namespace tanrove {

namespace {

constexpr std::array<std::size_t, 4> spacings = {4, 8, 12, 16};
constexpr std::size_t furthest_start = 81;  // from the block's start
constexpr double greatest_value = 1e30;     // beyond it the bytes were no number

bool is_record_at(ByteView bytes, std::size_t at) {
    return bytes.has(at, "d_") || bytes.has(at, "l_");
}

/// The values in this spacing; none where one of them is no number.
std::vector<float> read_spaced(ByteView bytes, std::size_t at, std::size_t spacing) {
    std::vector<float> values;
    while (is_record_at(bytes, at)) {
        const bool is_real = bytes.u8(at) == 'd';
        const std::size_t width = is_real ? 8 : 4;
        if (!bytes.holds(at + spacing, width)) break;
        if (is_real) {
            const double value = big_endian_f64(bytes, at + spacing);
            if (!(value >= -greatest_value && value <= greatest_value)) return {};
            values.push_back(static_cast<float>(value));
        } else {
            const auto value = static_cast<std::int32_t>(big_endian_u32(bytes, at + spacing));
            values.push_back(static_cast<float>(value));
        }
        at += spacing + width;
    }
    return values;
}

}  // namespace

ControlList read_control_list(const StateSpan& span) {
    const ByteView bytes = span.bytes();
    ControlList list;
    list.at = span.start;
    while (list.at <= span.start + furthest_start && !is_record_at(bytes, list.at)) ++list.at;
    if (list.at > span.start + furthest_start) return list;
    for (const std::size_t spacing : spacings) {
        auto values = read_spaced(bytes, list.at, spacing);
        if (values.size() > list.values.size()) list.values = std::move(values);
    }
    return list;
}

}  // namespace tanrove
