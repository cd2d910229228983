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

std::uint64_t delayed(std::uint64_t tick, std::int32_t delay_ticks) {
    const auto moved = static_cast<std::int64_t>(tick) + delay_ticks;
    return static_cast<std::uint64_t>(std::max<std::int64_t>(moved, 0));
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
            if (properties.delay_on) event.tick = delayed(event.tick, properties.delay_ticks);
        }
    }
}

}  // namespace tanrove
