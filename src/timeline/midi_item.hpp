// A MIDI clip as REAPER plays it: an item whose source holds its events inline.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tanrove {

/// REAPER's ticks in the sources that are written.
constexpr int item_ticks_per_quarter = 960;

// The kinds of event, by their status byte on the first channel.
constexpr std::uint8_t note_off_status = 0x80;
constexpr std::uint8_t note_on_status = 0x90;
constexpr std::uint8_t key_pressure_status = 0xa0;
constexpr std::uint8_t controller_status = 0xb0;
constexpr std::uint8_t aftertouch_status = 0xd0;
constexpr std::uint8_t pitch_bend_status = 0xe0;
constexpr std::uint8_t sysex_status = 0xf0;

// The controllers that a track's MIDI fader and pan are sent as.
constexpr std::uint8_t volume_controller = 7;
constexpr std::uint8_t pan_controller = 10;

/// What comes first on one tick: a note that ends where another begins must not swallow it.
enum class MidiOrder : std::uint8_t { note_off = 0, other = 1, note_on = 2 };

struct MidiItemEvent {
    std::uint64_t tick = 0;  ///< from the source's start
    std::uint8_t status = note_on_status;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
    MidiOrder order = MidiOrder::other;
    bool muted = false;       ///< kept, and silent
    std::uint32_t sysex = 0;  ///< of a system exclusive message: its place among the item's
};

/// The order of an item's events.
inline bool plays_before(const MidiItemEvent& a, const MidiItemEvent& b) {
    return a.tick != b.tick ? a.tick < b.tick : a.order < b.order;
}

/// Times are seconds. The events are sorted by `plays_before`.
struct MidiItem {
    double start = 0;
    double length = 0;
    double source_offset = 0;   ///< of source in front of the item, at the session's tempo
    double source_length = -1;  ///< the same at the tempo where the item starts; below 0 not known
    std::string name;
    bool muted = false;
    std::vector<MidiItemEvent> events;
    std::vector<std::vector<std::uint8_t>> sysex;  ///< the messages' bytes
    int note_count = 0;
    std::uint64_t end_tick = 0;  ///< of the source: where the clip ends
    std::uint64_t quiet_tick =
        0;  ///< likewise: where the last note that sounds has ended; 0 for none
    bool streams_volume = false;     ///< its events move the volume: no fader value is sent
    bool streams_pan = false;        ///< likewise the pan
    std::int32_t colour_place = -2;  ///< -2 none
    std::optional<std::uint32_t> colour = {};  ///< written to the item: 0x1BBGGRR
    bool locked = false;
    double item_length_raw = 0;  ///< before its notes were given room to ring out
    /// What the item grows by where its events come a tick later; 0 where it ends with its clip,
    /// whatever still sounds.
    double seconds_per_late_tick = 0;
};

}  // namespace tanrove
