// Transpose, velocity and delay, event by event.
#include "timeline/real_time_midi.hpp"

#include <algorithm>
#include <cstdint>

namespace tanrove {

namespace {

constexpr std::int32_t semitones_per_octave = 12;
constexpr std::int32_t highest_data = 127;
constexpr std::int32_t lowest_live_velocity = 1;

bool has_key(std::uint8_t status) {
    return status == note_off_status || status == note_on_status || status == key_pressure_status;
}

void transpose(MidiItemEvent& event, std::int32_t semitones, MidiTallies& tallies) {
    if (!has_key(event.status)) return;
    const std::int32_t wanted = event.data1 + semitones;
    const std::int32_t key = std::clamp(wanted, 0, highest_data);
    event.data1 = static_cast<std::uint8_t>(key);
    if (key == wanted) return;
    event.muted = true;
    if (event.status == note_on_status) ++tallies.transposed_past_range;
}

void scale_velocity(MidiItemEvent& event, const RealTimeProperties& properties) {
    if (event.status != note_on_status || event.data2 == 0) return;
    const double scaled = event.data2 * properties.velocity_scale / 100.0 + 0.5;
    const auto velocity = static_cast<std::int32_t>(scaled) + properties.velocity_offset;
    event.data2 =
        static_cast<std::uint8_t>(std::clamp(velocity, lowest_live_velocity, highest_data));
}

/// Notes that ended inside the clip and, so much later, end behind it.
int notes_delayed_past_end(const MidiItem& item, std::uint64_t delay_ticks) {
    return static_cast<int>(std::ranges::count_if(item.events, [&](const MidiItemEvent& event) {
        return event.status == note_off_status && !event.muted && event.tick <= item.end_tick &&
               event.tick + delay_ticks > item.end_tick;
    }));
}

/// What is late rings on behind the clip, where the item may go on; what is early cannot leave the
/// source.
void delay(MidiItem& item, std::int32_t delay_ticks, MidiTallies& tallies) {
    if (delay_ticks > 0) {
        const auto late = static_cast<std::uint64_t>(delay_ticks);
        const std::uint64_t spare = item.end_tick - std::min(item.quiet_tick, item.end_tick);
        const bool can_grow = item.seconds_per_late_tick > 0;
        if (!can_grow) tallies.notes_past_edge += notes_delayed_past_end(item, late);
        if (item.quiet_tick > 0 && late > spare) {
            item.length += static_cast<double>(late - spare) * item.seconds_per_late_tick;
        }
    }
    for (MidiItemEvent& event : item.events) {
        const auto moved = static_cast<std::int64_t>(event.tick) + delay_ticks;
        event.tick = static_cast<std::uint64_t>(std::max<std::int64_t>(moved, 0));
    }
}

}  // namespace

void apply_real_time_properties(const RealTimeProperties& properties, std::vector<MidiItem>& items,
                                MidiTallies& tallies) {
    if (items.empty()) return;
    if (properties.quantize_on || properties.duration_on) ++tallies.unapplied_real_time_tracks;
    if (!properties.transpose_on && !properties.velocity_on && !properties.delay_on) return;
    ++tallies.real_time_tracks;
    const std::int32_t semitones =
        properties.transpose_octaves * semitones_per_octave + properties.transpose_semitones;
    for (MidiItem& item : items) {
        for (MidiItemEvent& event : item.events) {
            if (properties.transpose_on) transpose(event, semitones, tallies);
            if (properties.velocity_on) scale_velocity(event, properties);
        }
        if (properties.delay_on) delay(item, properties.delay_ticks, tallies);
    }
}

}  // namespace tanrove
