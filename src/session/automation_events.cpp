// Offsets from the record's first byte:
//
//   0    u8 1, u8 'F', u16 1
//   4    u32 bytes from offset 8 on
//   8    u16 1 where the positions are ticks
//   10   u32 number of all events
//   14   u16 width of a value: 2, or 4 for those of plug-ins and clip gain
//   16   runs, until they hold all events
//
// Run:
//   0    u16 number of events behind the first
//   2    i64 base, the first event's position; ticks count from 10^12
//   10   value of the first event
//   -    the others: u32 position behind the base, value
//
// One run holds 65,536 events. In a run of ticks that begins on the origin the events in front of
// it and on it are stored another way: in their 32 bits stand the low ones of 10^12 plus the tick.
// The same bits can mean an event some 3,700 quarter notes later; that one stands behind all
// smaller ones, while the others stand first.
#include "session/automation_events.hpp"

#include "base/session_numbers.hpp"

namespace tanrove {

namespace {

constexpr std::size_t length_at = 4;
constexpr std::size_t counted_from = 8;  // where the bytes begin that the length counts
constexpr std::size_t event_count_at = 10;
constexpr std::size_t value_width_at = 14;
constexpr std::size_t first_run_at = 16;

constexpr std::size_t base_in_run = 2;
constexpr std::size_t value_in_run = 10;
constexpr std::size_t position_bytes = 4;

// A base past this is no position: a year of samples.
constexpr std::int64_t max_base = 2 * static_cast<std::int64_t>(tick_origin);

// No session has so many samples: a base from here on is ticks.
constexpr std::int64_t least_tick_base = static_cast<std::int64_t>(tick_origin / 2);

constexpr std::int64_t tick_origin_low_bits = tick_origin & 0xffffffff;
constexpr std::int64_t ticks_in_front_of_origin = 128;
constexpr std::int64_t first_low_bits = tick_origin_low_bits - ticks_in_front_of_origin;

/// The run at `at`; nullopt if it passes `end` or starts nowhere.
std::optional<EventRun> read_run(ByteView image, std::size_t at, std::size_t end,
                                 std::size_t value_width) {
    if (end < at || end - at < value_in_run + value_width) return std::nullopt;
    const std::size_t behind_first = image.u16(at);
    const std::size_t room = end - at - value_in_run - value_width;
    if (behind_first * (position_bytes + value_width) > room) return std::nullopt;
    const std::int64_t base = image.i64(at + base_in_run);
    if (base < -max_base || base > max_base) return std::nullopt;
    return EventRun{at + value_in_run, behind_first + 1, base};
}

std::size_t end_of(const EventRun& run, std::size_t value_width) {
    return run.first_value_at + value_width + (run.count - 1) * (position_bytes + value_width);
}

/// Bases count with the origin where they are ticks.
void take_off_origin(EventRecord& record) {
    for (EventRun& run : record.runs) {
        if (run.base < least_tick_base) continue;
        run.base -= static_cast<std::int64_t>(tick_origin);
        record.in_ticks = true;
    }
}

}  // namespace

double event_position(std::uint32_t stored, bool in_ticks) {
    const std::int64_t position = stored;
    const bool by_low_bits = in_ticks && position >= first_low_bits;
    return static_cast<double>(by_low_bits ? position - tick_origin_low_bits : position);
}

std::size_t events_by_low_bits(ByteView image, const EventRecord& record, const EventRun& run) {
    const std::size_t step = position_bytes + record.value_width;
    std::size_t i = run.count - 1;
    while (i > 0 && image.u32(run.first_value_at + i * step - position_bytes) >= first_low_bits)
        --i;
    return i;
}

double ticks_behind_origin(std::uint32_t stored, bool by_low_bits) {
    return event_position(stored, by_low_bits || stored <= tick_origin_low_bits);
}

std::optional<EventRecord> read_event_record(ByteView image, std::size_t at, std::size_t end,
                                             std::size_t value_width) {
    if (!image.holds(at, first_run_at) || image.u16(at + value_width_at) != value_width) {
        return std::nullopt;
    }
    const std::size_t length = image.u32(at + length_at);
    if (end < at + counted_from || length > end - at - counted_from) return std::nullopt;
    const std::size_t runs_end = at + counted_from + length;

    EventRecord record;
    record.event_count = image.u32(at + event_count_at);
    record.value_width = value_width;
    std::size_t next = at + first_run_at;
    for (std::size_t left = record.event_count; left > 0; left -= record.runs.back().count) {
        const auto run = read_run(image, next, runs_end, value_width);
        if (!run || run->count > left || record.runs.size() == max_event_runs) return std::nullopt;
        next = end_of(*run, value_width);
        record.runs.push_back(*run);
    }
    if (next != runs_end) return std::nullopt;
    take_off_origin(record);
    return record;
}

}  // namespace tanrove
