// The record of events that fader lanes, the lanes of plug-in controls and the entries of clip gain
// share; each has values of its own kind in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/byte_view.hpp"

namespace tanrove {

/// A stretch of events: the first stands on the base, the others behind it.
struct EventRun {
    std::size_t first_value_at = 0;  ///< in the image
    std::size_t count = 0;           ///< the first included
    std::int64_t base = 0;           ///< samples, or ticks from the session's origin
};

/// The events of one record, in runs.
struct EventRecord {
    std::vector<EventRun> runs;
    std::size_t event_count = 0;
    std::size_t value_width = 0;
    bool in_ticks = false;
};

/// Runs that are followed in one record: more than 250 million events in full ones.
constexpr std::size_t max_event_runs = 4096;

/// The record at `at`, whose values are `value_width` bytes wide. nullopt if its runs do not hold
/// as many events as it counts, or do not end where it says, at `end` or in front of it.
std::optional<EventRecord> read_event_record(ByteView image, std::size_t at, std::size_t end,
                                             std::size_t value_width);

/// Where a lane's block has its record, and the fields of the first run in that: they serve where
/// the record does not close.
constexpr std::size_t lane_record_at = 9;
constexpr std::size_t first_run_count_at = 25;
constexpr std::size_t first_run_ticks_mark_at = 27;
constexpr std::size_t first_run_ticks_mark_width = 5;
constexpr std::size_t value_in_point = 4;
constexpr std::size_t bytes_behind_points = 2;

/// The position of an event as it is stored in a record of one run: samples, or ticks from the
/// session's origin.
double event_position(std::uint32_t stored, bool in_ticks);

/// How many events of a run stand in front of one that stores a smaller position than the origin's
/// low bits. Time does not run back: what is greater among them is told by those bits.
std::size_t events_by_low_bits(ByteView image, const EventRecord& record, const EventRun& run);

/// How far an event of a tick run that begins on the origin stands behind it.
double ticks_behind_origin(std::uint32_t stored, bool by_low_bits);

/// Calls `use(position, place of the value)` for each event in order.
template <typename Use>
void for_each_event(ByteView image, const EventRecord& record, Use use) {
    constexpr std::size_t position_bytes = 4;
    for (const EventRun& run : record.runs) {
        use(static_cast<double>(run.base), run.first_value_at);
        const bool on_origin = record.in_ticks && run.base == 0;
        const std::size_t by_low_bits = on_origin ? events_by_low_bits(image, record, run) : 0;
        std::size_t at = run.first_value_at + record.value_width;
        for (std::size_t i = 1; i < run.count; ++i, at += position_bytes + record.value_width) {
            const std::uint32_t stored = image.u32(at);
            const double behind = on_origin ? ticks_behind_origin(stored, i < by_low_bits)
                                            : static_cast<double>(stored);
            use(static_cast<double>(run.base) + behind, at + position_bytes);
        }
    }
}

}  // namespace tanrove
