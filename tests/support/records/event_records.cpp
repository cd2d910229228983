// A run counts the events behind its first in a u16, and their places from that event's on.
#include "support/records/event_records.hpp"

#include <algorithm>

namespace tanrove::builder {

Bytes event_record(const std::vector<EventSpec>& events, std::size_t value_width, bool in_ticks) {
    constexpr std::size_t most_in_run = 0x10000;
    constexpr std::int64_t farthest = 0xffffffff;
    constexpr std::int64_t origin = 1000000000000;
    ByteWriter counted;
    counted.u16(in_ticks ? 1 : 0).u32(events.size()).u16(value_width);
    for (std::size_t first = 0, end = 0; first < events.size(); first = end) {
        const std::int64_t base = events[first].position;
        const auto is_in_reach = [&](std::size_t i) {
            return i - first < most_in_run && events[i].position - base <= farthest;
        };
        for (end = first + 1; end < events.size() && is_in_reach(end);) ++end;
        counted.u16(end - first - 1)
            .u64(static_cast<std::uint64_t>(base + (in_ticks ? origin : 0)));
        counted.number(events[first].value, value_width);
        for (std::size_t i = first + 1; i < end; ++i) {
            counted.u32(static_cast<std::uint32_t>(events[i].position - base));
            counted.number(events[i].value, value_width);
        }
    }
    return ByteWriter().u8(1).raw("F").u16(1).u32(counted.size()).raw(counted.bytes()).bytes();
}

}  // namespace tanrove::builder
