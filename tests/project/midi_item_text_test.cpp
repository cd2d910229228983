// What random clips play, read back from the text of their items.
#include "project/midi_item_text.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "session/block_scan.hpp"
#include "support/project_reader.hpp"
#include "timeline/midi_events.hpp"

namespace tanrove {
namespace {

using builder::ReadMidiEvent;

constexpr auto origin = static_cast<std::int64_t>(tick_origin);

/// A clip with a stream of its own. Positions avoid the middle between two ticks of an item, where
/// a rounding error of the reckoning could go either way.
struct RandomClip {
    explicit RandomClip(unsigned seed) : random(seed) {
        clip.in_samples = below(3) == 0;
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

    std::uint64_t tick(std::int64_t position) const {
        const std::int64_t units = position + std::max<std::int64_t>(-clip.source_offset, 0);
        const std::int64_t per_tick = clip.in_samples ? 25 : 1000;  // samples at 120 and 48 kHz
        return static_cast<std::uint64_t>(std::max<std::int64_t>(2 * units + per_tick, 0) /
                                          (2 * per_tick));
    }
    bool outside(std::int64_t position) const {
        return position < 0 || (clip.length > 0 && position >= clip.length);
    }

    /// The events of the clip, sorted by their fields.
    std::vector<ReadMidiEvent> expected(bool keep_inaudible) const {
        std::vector<ReadMidiEvent> events;
        for (const MidiEvent& note : stream.events) {
            if (note.length <= 0) continue;
            const std::int64_t on = clip.source_offset + note.position;
            const std::uint64_t stop = std::max(tick(on + note.length), tick(on) + 1);
            const bool is_short = tick(on + note.length) <= tick(on);
            const bool muted = is_short || (outside(on) && !keep_inaudible);
            events.push_back({tick(on), 0x90, note.note, note.velocity, muted});
            events.push_back({stop, 0x80, note.note, 0, muted});
        }
        for (const MidiController& event : chunk.controllers) {
            const auto at = clip.source_offset + static_cast<std::int64_t>(event.position) - origin;
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

    std::mt19937 random;
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
    const auto project = builder::read_project(text + ">\n>\n");
    EXPECT_TRUE(project.closed);
    return project.tracks.at(0).items.at(0).midi;
}

void expect_paired_notes(const std::vector<ReadMidiEvent>& events) {
    std::map<unsigned, int> sounding;
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (events[i].status == 0x90) ++sounding[events[i].data1];
        if (events[i].status == 0x80) {
            EXPECT_GE(--sounding[events[i].data1], 0);
            const bool swallows =
                i > 0 && events[i - 1].tick == events[i].tick && events[i - 1].status == 0x90;
            EXPECT_FALSE(swallows) << "a note-off behind a note-on of its tick";
        }
    }
    for (const auto& [key, count] : sounding) EXPECT_EQ(count, 0) << key;
}

TEST(MidiItemText, ReadBackGivesTheClipsEventsPairedAndMutedOutsideTheClip) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        const RandomClip made(seed);
        const MidiMaterial material{
            .regions = {&made.region, 1}, .streams = {&made.stream, 1}, .chunks = {&made.chunk, 1}};
        const TempoClock clock({}, 120);
        const MidiEventOptions options{.keep_inaudible_midi = seed % 4 == 0};
        MidiTallies tallies;
        const MidiItem item = MidiItemMaker(material, clock, options, tallies).item(made.clip);
        auto events = written(item, {.volume = 96, .pan = 64, .patch = 3});
        const auto sent = [&](unsigned number) {
            return std::ranges::any_of(made.chunk.controllers,
                                       [&](auto& c) { return c.kind == 2 + 256 * number; });
        };
        std::vector<ReadMidiEvent> head{{0, 0xb0, 10, 64, false}, {0, 0xc0, 3, 0, false}};
        if (!sent(7)) head.insert(head.begin(), {0, 0xb0, 7, 96, false});
        ASSERT_GT(events.size(), head.size());
        EXPECT_TRUE(std::equal(head.begin(), head.end(), events.begin()));
        events.erase(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(head.size()));
        EXPECT_EQ(events.back().data1, 0x7bU);
        events.pop_back();

        expect_paired_notes(events);
        const auto ons = std::ranges::count(events, 0x90U, &ReadMidiEvent::status);
        EXPECT_EQ(item.note_count, ons);
        std::ranges::sort(events);
        EXPECT_TRUE(events == made.expected(options.keep_inaudible_midi));
    }
}

}  // namespace
}  // namespace tanrove
