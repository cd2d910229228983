// Transpose, velocity and delay, event by event.
#include "timeline/real_time_midi.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

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

using KeyCounts = std::array<int, 128>;

/// Settles the notes that a negative delay presses together at the source's head: each takes at
/// least a tick, and of one key only the last sounds, which those before it would cut short.
void settle_head(std::vector<MidiItemEvent>& events, MidiTallies& tallies) {
    const auto behind = std::ranges::find_if(events, [](auto& event) { return event.tick > 0; });
    const std::span head(events.begin(), behind);
    KeyCounts begins{};
    KeyCounts ends{};
    for (const MidiItemEvent& event : head) {
        if (event.muted) continue;
        if (event.status == note_on_status) ++begins[event.data1];
        if (event.status == note_off_status) ++ends[event.data1];
    }
    for (std::size_t key = 0; key < begins.size(); ++key) {
        begins[key] = ends[key] = std::clamp(begins[key] - 1, 0, ends[key]);
        tallies.too_short_events += 2 * begins[key];
    }
    for (MidiItemEvent& event : head) {
        if (event.status == note_off_status) event.tick = 1;
        if (event.status != note_on_status && event.status != note_off_status) continue;
        int& silenced = (event.status == note_on_status ? begins : ends)[event.data1];
        if (!event.muted && silenced-- > 0) event.muted = true;
    }
    std::ranges::stable_sort(events, plays_before);
}

/// What is late rings on behind the clip; what is early cannot leave the source.
void delay(MidiItem& item, std::int32_t delay_ticks, MidiTallies& tallies) {
    for (MidiItemEvent& event : item.events) {
        const auto moved = static_cast<std::int64_t>(event.tick) + delay_ticks;
        event.tick = static_cast<std::uint64_t>(std::max<std::int64_t>(moved, 0));
    }
    if (delay_ticks > 0) item.length += delay_ticks * item.seconds_per_late_tick;
    if (delay_ticks < 0) settle_head(item.events, tallies);
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
