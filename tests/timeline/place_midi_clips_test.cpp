// MIDI placements as clips in their places, and what bounds the events they play.
#include "timeline/place_midi_clips.hpp"

#include <gtest/gtest.h>

#include "timeline/midi_events.hpp"
#include "timeline/real_time_midi.hpp"

namespace tanrove {
namespace {

constexpr std::int64_t origin = 1'000'000'000'000;
constexpr std::int64_t quarter = 960'000;

/// One track "Keys" whose playlist holds each region once, in their order.
struct MidiScene {
    MidiScene& clip(std::int64_t stored, std::int64_t length, std::uint8_t overlap = 3) {
        const auto number = static_cast<std::uint32_t>(regions.size());
        Region region;
        region.index = static_cast<std::uint16_t>(number);
        region.length = length;
        region.midi_stream = 0;
        regions.push_back(region);
        placements.push_back({.start = std::abs(stored - origin), .region_index = number});
        rows.push_back({"Keys", number, static_cast<std::uint64_t>(stored)});
        playlists[0].rows.push_back({.region_id = number,
                                     .position = static_cast<std::uint64_t>(stored),
                                     .colour = 5,
                                     .overlap = overlap,
                                     .muted = number % 2 != 0});
        return *this;
    }

    /// Places the clips; without `has_rows` the playlist could not be read.
    PlacedMidiTrack placed(bool tick_based, bool has_rows = true) {
        playlists[0].name = "Keys";
        playlists[0].in_ticks = tick_based;
        for (PlacementRow& row : playlists[0].rows) {
            if (tick_based) row.position = distance_from_origin(row.position);
        }
        if (!has_rows) playlists.clear();
        return place_midi_clips({tracks, placements, regions, playlists, rows, 48000}, clock,
                                tallies)
            .at(0);
    }

    std::vector<TrackTableRow> tracks{{0, "Keys"}};
    std::vector<ClipTrack> placements;
    std::vector<Region> regions;
    std::vector<PlaylistDetail> playlists{1};
    std::vector<MidiPlaylistRow> rows;
    std::vector<MidiStream> streams{1};
    std::vector<MidiChunk> chunks{1};
    TempoClock clock{{{0, 120}, {4 * static_cast<double>(quarter), 60}}, 120};
    MidiTallies tallies;
};

TEST(PlaceMidiClips, TheClipThatIsDrawnBelowGivesWay) {
    struct {
        std::int64_t first_length, second_at, second_length;
        std::uint8_t overlap;  // of the second's row
        std::int64_t first_left, second_start, second_left;
    } const cases[] = {
        {8, 4, 8, 3, 4, 4, 8},  // the later one takes over
        {8, 4, 8, 2, 4, 4, 8},  // likewise
        {8, 4, 8, 1, 8, 8, 4},  // the earlier one lies on top
        {8, 4, 2, 1, 8, 4, 2},  // and covers the later one whole: nothing is left to move
        {8, 4, 4, 1, 8, 4, 4},  // to the tick
        {8, 4, 8, 0, 8, 4, 8},  // the row does not tell
        {8, 0, 8, 3, 8, 0, 8},  // at one moment
        {4, 4, 8, 3, 4, 4, 8},  // side by side
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.second_at << ' ' << c.second_length << ' ' << c.overlap);
        MidiScene scene;
        scene.clip(origin, c.first_length * quarter);
        scene.clip(origin + c.second_at * quarter, c.second_length * quarter, c.overlap);
        const auto clips = scene.placed(true).clips;
        ASSERT_EQ(clips.size(), 2u);
        EXPECT_EQ(clips[0].length, c.first_left * quarter);
        EXPECT_EQ(clips[1].position, c.second_start * quarter);
        EXPECT_EQ(clips[1].length, c.second_left * quarter);
        EXPECT_EQ(clips[1].source_offset, (c.second_at - c.second_start) * quarter);
        const bool is_covered = c.overlap == 1 && c.second_start == c.second_at;
        EXPECT_EQ(scene.tallies.covered_clips, is_covered ? 1 : 0);
        EXPECT_EQ(scene.tallies.tail_cuts, c.first_left < c.first_length ? 1 : 0);
        EXPECT_EQ(scene.tallies.head_cuts, c.second_start > c.second_at ? 1 : 0);
    }
    MidiScene three;  // the middle one lies under both; what has no length takes no part
    three.clip(origin, 8 * quarter).clip(origin + quarter, 0);
    three.clip(origin + 4 * quarter, 8 * quarter, 1).clip(origin + 6 * quarter, 4 * quarter);
    three.clip(origin + 10 * quarter - 960, quarter);  // an edge that was rounded
    const auto clips = three.placed(true).clips;
    ASSERT_EQ(clips.size(), 4u);
    EXPECT_EQ(clips[0].length, 8 * quarter);
    EXPECT_TRUE(clips[1].muted) << "kept whole";
    EXPECT_EQ(clips[1].length, 8 * quarter);
    EXPECT_EQ(three.tallies.covered_clips, 1);
    EXPECT_EQ(three.tallies.tail_cuts + three.tallies.head_cuts, 0) << "counted once";
}

TEST(PlaceMidiClips, ThePlaylistsKindDecidesTheTimebaseAndElseTheSizeOfThePosition) {
    struct {
        bool tick_based, has_rows;
        std::int64_t stored, length;
        double start, seconds;
    } const cases[] = {
        {true, true, origin + 2 * quarter, 4 * quarter, 1, 3},  // across the tempo change
        {true, true, origin - 5, quarter, 0, 0.5},              // a hair in front of the origin
        {false, true, 48000LL * 90000, 48000, 90000, 1},        // past a day, known to be samples
        {false, false, 96000, 48000, 2, 1},
        {true, false, origin + quarter, quarter, 0.5, 0.5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.tick_based << c.has_rows << ' ' << c.stored);
        MidiScene scene;
        const auto track = scene.clip(c.stored, c.length).placed(c.tick_based, c.has_rows);
        ASSERT_EQ(track.clips.size(), 1u);
        EXPECT_DOUBLE_EQ(track.clips[0].start, c.start);
        EXPECT_DOUBLE_EQ(track.clips[0].length_seconds, c.seconds);
        EXPECT_EQ(track.tick_based, c.tick_based);
        EXPECT_EQ(track.clips[0].colour_place, c.has_rows ? 5 : -2);
        EXPECT_EQ(scene.tallies.sample_based_clips, c.tick_based ? 0 : 1);
    }
    MidiScene rowless;  // the playlist's kind was read, this row of it was not
    rowless.clip(48000LL * 90000, 48000).playlists[0].rows[0].region_id = 9;
    EXPECT_DOUBLE_EQ(rowless.placed(false).clips.at(0).start, 90000);
}

TEST(MidiItemMaker, PastItsLimitsLeavesOutWhatIsMutedFirstThenWhatSounds) {
    MidiScene scene;
    scene.streams[0].events = {{0, quarter, 60, 80}, {2 * quarter, quarter, 62, 80}};
    scene.chunks[0] = {.note_count = 3, .controllers = {{2 + 256 * 7, origin, 1}}, .sysex = {}};
    scene.clip(origin, quarter);
    const PlacedMidiClip clip{.length = quarter};
    const MidiMaterial material{scene.regions, scene.streams, scene.chunks, 120, 48000};
    MidiTallies& tallies = scene.tallies;
    MidiItemMaker maker(material, scene.clock, {}, tallies, {4, 7, 12});
    for (const std::size_t left : {4u, 2u, 0u}) EXPECT_EQ(maker.item(clip).events.size(), left);
    EXPECT_EQ(tallies.trimmed_clips, 1);
    EXPECT_EQ(tallies.incomplete_clips, 1);
    EXPECT_EQ(tallies.mismatched_regions, 1) << "a region is told once";
    scene.chunks[0].note_count = 2;
    MidiItemMaker short_of_time(material, scene.clock, {}, tallies, {5, 99, 9});
    for (const bool fits : {true, true, false}) {
        EXPECT_EQ(short_of_time.item(clip).streams_volume, fits);
    }
}

TEST(RealTimeMidi, TransposesScalesAndDelaysWithinTheMidiRange) {
    struct {
        RealTimeProperties properties;
        std::uint8_t key, velocity;
        std::uint64_t tick;
        bool muted;
    } const cases[] = {
        {{.transpose_on = true, .transpose_octaves = 1}, 127, 80, 100, true},
        {{.transpose_on = true, .transpose_semitones = 7}, 127, 80, 100, false},
        {{.transpose_on = true, .transpose_octaves = -11}, 0, 80, 100, true},
        {{.velocity_on = true, .velocity_scale = 51, .velocity_offset = 3}, 120, 44, 100, false},
        {{.velocity_on = true, .velocity_scale = 200}, 120, 127, 100, false},
        {{.velocity_on = true, .velocity_scale = 0}, 120, 1, 100, false},
        {{.delay_on = true, .delay_ticks = -30}, 120, 80, 70, false},
        {{.delay_ticks = 5, .velocity_scale = 1, .transpose_octaves = 1}, 120, 80, 100, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        std::vector<MidiItem> items(1);
        items[0].events = {{.tick = 100, .data1 = 120, .data2 = 80},
                           {.tick = 200, .status = note_off_status, .data1 = 120},
                           {.tick = 300, .status = controller_status, .data1 = 120, .data2 = 80}};
        MidiTallies tallies;
        apply_real_time_properties(c.properties, items, tallies);
        const auto& events = items[0].events;
        EXPECT_EQ(events[0].data1, c.key);
        EXPECT_EQ(events[0].data2, c.velocity);
        EXPECT_EQ(events[0].tick, c.tick);
        EXPECT_EQ(events[0].muted, c.muted);
        EXPECT_EQ(events[1].data1, c.key) << "a note ends where it began";
        EXPECT_EQ(events[1].muted, c.muted);
        EXPECT_EQ(events[2].data1 + events[2].data2, 200) << "a controller is no note";
        EXPECT_EQ(tallies.transposed_past_range, c.muted ? 1 : 0);
    }
}

TEST(RealTimeMidi, LengthensAnItemByWhatALateNoteNeeds) {
    const struct {
        std::int64_t note_end;  // in a clip of a quarter
        std::int64_t source_offset;
        std::int32_t delay;
        double seconds;  // of the item, at 120
        int past_edge;
        bool truncated;
    } cases[] = {
        {quarter / 2, 0, 480, 0.5, 0, false},   {quarter / 2, 0, 720, 0.625, 0, false},
        {2 * quarter, 0, 960, 1.5, 1, false},   {quarter / 2, -quarter, 720, 0.5, 0, false},
        {quarter / 2, 0, -9999, 0.5, 0, false}, {quarter / 2, 0, 480, 0.5, 0, true},
        {quarter / 2, 0, 481, 0.5, 1, true},    {2 * quarter, 0, 481, 0.5, 1, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        MidiScene scene;
        scene.streams[0].events = {{0, c.note_end, 60, 80}};
        scene.clip(origin, quarter);
        const MidiMaterial material{scene.regions, scene.streams, scene.chunks, 120, 48000};
        const MidiEventOptions options{.truncate_midi_to_clip = c.truncated};
        MidiItemMaker maker(material, scene.clock, options, scene.tallies);
        std::vector<MidiItem> items = {maker.item(
            {.length = quarter, .source_offset = c.source_offset, .length_seconds = 0.5})};
        apply_real_time_properties({.delay_on = true, .delay_ticks = c.delay}, items,
                                   scene.tallies);
        EXPECT_NEAR(items[0].length, c.seconds, 1e-9);
        EXPECT_EQ(scene.tallies.notes_past_edge, c.past_edge);
    }
}

}  // namespace
}  // namespace tanrove
