// What random clips play, read back from the text of their items.
#include "project/midi_item_text.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

#include "session/record_forms.hpp"
#include "support/project_reader.hpp"
#include "timeline/midi_events.hpp"
#include "timeline/real_time_midi.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr auto origin = static_cast<std::int64_t>(tick_origin);

/// A clip with a stream of its own. Positions avoid the middle between two ticks of an item, where
/// a rounding error of the reckoning could go either way.
struct RandomClip {
    explicit RandomClip(unsigned seed) : random(seed) {
        clip.in_samples = below(2) == 0;
        clip.start = static_cast<double>(first_sample) / 48000;
        clip.length = below(8) == 0 ? 0 : 1 + below(600'000);
        clip.source_offset = 10 * (below(40'000) - 20'000);
        for (int n = below(40); n >= 0; --n) add_note();
        chunk.note_count = static_cast<std::uint32_t>(stream.events.size());
        for (int n = below(20); n > 0; --n) {
            const std::uint16_t kinds[] = {1, 2 + 256 * 7, 2 + 256 * 64, 4};
            chunk.controllers.push_back({kinds[below(4)],
                                         static_cast<std::uint64_t>(origin + below(500'000) - 9),
                                         static_cast<std::uint32_t>(below(20'000) - 10'000)});
        }
        for (int n = below(3); n > 0; --n) {
            chunk.sysex.push_back({static_cast<std::uint64_t>(origin + below(500'000)), {0xf0}});
        }
        region.midi_stream = 0;
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

    /// Some notes begin where the one before ends, some are shorter than a tick.
    void add_note() {
        MidiEvent note;
        const bool follows = !stream.events.empty() && below(3) == 0;
        note.note = static_cast<std::uint8_t>(follows ? stream.events.back().note : below(4) + 60);
        note.velocity = static_cast<std::uint8_t>(1 + below(127));
        if (follows) note.position = stream.events.back().position + stream.events.back().length;
        if (!follows) note.position = 10 * below(50'000) + 3;
        note.length = 10 * below(below(4) == 0 ? 20 : 30'000);
        stream.events.push_back(note);
    }

    /// Where REAPER plays a position of a clip in samples: at 120 a sample at 48 kHz is 3/75 of a
    /// tick, and behind the change to 40 it is 1/75.
    std::uint64_t tick(std::int64_t position) const {
        const std::int64_t lead = std::max<std::int64_t>(-clip.source_offset, 0);
        const std::int64_t pace = clip.in_samples && first_sample < change_sample ? 3 : 1;
        const std::int64_t per_tick = clip.in_samples ? 75 : 1000;
        std::int64_t units = (position + lead) * pace;
        if (pace == 3)
            units -= 2 * std::max<std::int64_t>(first_sample + position - change_sample, 0);
        return static_cast<std::uint64_t>(delay + std::max<std::int64_t>(2 * units + per_tick, 0) /
                                                      (2 * per_tick));
    }
    bool outside(std::int64_t position) const {
        return position < 0 || (clip.length > 0 && position >= clip.length);
    }
    bool silences(std::int64_t position, const MidiEventOptions& options) const {
        return outside(position) && !options.keep_inaudible_midi;
    }
    std::int64_t position_of(const MidiController& event) const {
        return clip.source_offset + static_cast<std::int64_t>(event.position) - origin;
    }

    /// Ticks of the delay by which notes that sound end later than clip and notes did.
    double late_ticks() const {
        double late = 0;
        double end = static_cast<double>(tick(clip.length)) - delay;
        for (const bool is_delayed : {false, true}) {
            for (const MidiEvent& note : stream.events) {
                const std::int64_t on = clip.source_offset + note.position;
                const auto stop = static_cast<double>(tick(on + note.length)) - delay;
                if (outside(on) || tick(on + note.length) <= tick(on)) continue;
                if (is_delayed) late = std::max(late, stop + delay - end);
                if (!is_delayed) end = std::max(end, stop);
            }
        }
        return late;
    }

    /// The events of the clip, sorted by their fields.
    std::vector<ReadMidiEvent> expected(bool keep_inaudible) const {
        std::vector<ReadMidiEvent> events;
        for (const MidiEvent& note : stream.events) {
            if (note.length <= 0) continue;
            const std::int64_t on = clip.source_offset + note.position;
            const std::uint64_t begin = tick(on);
            const std::uint64_t stop = std::max(tick(on + note.length), begin + 1);
            const bool is_short = tick(on + note.length) <= begin;
            const bool muted = is_short || (outside(on) && !keep_inaudible);
            events.push_back({begin, 0x90, note.note, note.velocity, muted});
            events.push_back({stop, 0x80, note.note, 0, muted});
        }
        for (const MidiController& event : chunk.controllers) {
            const auto at = position_of(event);
            const int bend = std::clamp(static_cast<int>(event.value) + 8192, 0, 16383);
            ReadMidiEvent read{tick(at), 0xe0, static_cast<unsigned>(bend % 128),
                               static_cast<unsigned>(bend / 128), outside(at) && !keep_inaudible};
            if (event.kind == 4) read.status = 0xd0, read.data1 = event.value % 128, read.data2 = 0;
            if (event.kind % 256 == 2) {
                read.status = 0xb0, read.data1 = event.kind / 256U, read.data2 = event.value % 128;
            }
            events.push_back(read);
        }
        for (const MidiSysex& message : chunk.sysex) {
            const auto position = static_cast<std::int64_t>(message.position) - origin;
            events.push_back({tick(clip.source_offset + position), 0xf0, 0, 0, false});
        }
        std::ranges::sort(events);
        return events;
    }

    static constexpr std::int64_t change_sample = 144000;
    std::mt19937 random;
    std::int64_t first_sample = below(300'000);
    int delay = 10 * below(3);
    PlacedMidiClip clip;
    Region region;
    MidiStream stream;
    MidiChunk chunk;
};

std::vector<ReadMidiEvent> written(const MidiItem& item, const MidiTrackSettings& settings) {
    std::string text = "<REAPER_PROJECT\n<TRACK\n";
    {
        TextSink out(text);
        write_midi_item(out, item, settings);
    }
    const auto project = read_project(text + ">\n>\n");
    EXPECT_TRUE(project.closed);
    return project.tracks.at(0).items.at(0).midi;
}

/// On one tick a note that ends comes before one that begins, or it would swallow it.
std::pair<std::uint64_t, int> place_of(const ReadMidiEvent& event) {
    return {event.tick, event.status == 0x80 ? 0 : event.status == 0x90 ? 2 : 1};
}

TEST(MidiItemText, ReadBackGivesTheClipsEventsPairedAndMutedOutsideTheClip) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        const RandomClip made(seed);
        const MidiMaterial material{
            .regions = {&made.region, 1}, .streams = {&made.stream, 1}, .chunks = {&made.chunk, 1}};
        const TempoClock clock({{0, 120}, {6 * 960000, 40}}, 120);
        const MidiEventOptions options{.keep_inaudible_midi = seed % 4 == 0};
        MidiTallies tallies;
        std::vector<MidiItem> items{
            MidiItemMaker(material, clock, options, tallies).item(made.clip)};
        const double length = items[0].length;
        apply_real_time_properties({.delay_on = true, .delay_ticks = made.delay}, items, tallies);
        const MidiItem& item = items[0];
        EXPECT_NEAR(item.length, length + made.late_ticks() * item.seconds_per_late_tick, 1e-9);
        auto events = written(item, {.volume = 0, .pan = 0, .patch = 0});
        const auto sent = [&](unsigned number) {
            return std::ranges::any_of(made.chunk.controllers, [&](const MidiController& c) {
                return c.kind == 2 + 256 * number && !made.silences(made.position_of(c), options);
            });
        };
        std::vector<ReadMidiEvent> head{{0, 0xb0, 10, 0, false}, {0, 0xc0, 0, 0, false}};
        if (!sent(7)) head.insert(head.begin(), {0, 0xb0, 7, 0, false});
        ASSERT_GT(events.size(), head.size());
        EXPECT_TRUE(std::equal(head.begin(), head.end(), events.begin()));
        events.erase(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(head.size()));
        EXPECT_EQ(events.back().data1, 0x7bU);
        events.pop_back();

        EXPECT_TRUE(std::ranges::is_sorted(events, {}, place_of));
        const auto ons = std::ranges::count(events, 0x90U, &ReadMidiEvent::status);
        EXPECT_EQ(item.note_count, ons);
        std::ranges::sort(events);
        EXPECT_TRUE(events == made.expected(options.keep_inaudible_midi));
    }
}

}  // namespace
}  // namespace tanrove
