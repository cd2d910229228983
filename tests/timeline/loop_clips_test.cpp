// Looped clips: their passes, the loops that are refused, and the ends that Loop Length sets.
#include "timeline/loop_clips.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

constexpr std::uint16_t audio = 0x1050;

LoopRecord loop_of(std::uint32_t region, std::uint32_t mode, std::uint32_t count,
                   std::uint32_t length = 0) {
    return {.key = loop_key(96000, region),
            .mode = mode,
            .count = count,
            .length = length,
            .parent_type = audio,
            .known_shape = true};
}

/// A clip of half a second at second two.
ClipItem looped_clip(std::uint32_t region) {
    ClipItem clip;
    clip.region = region;
    clip.stored_position = 96000;
    clip.start = 2;
    clip.length = 0.5;
    clip.placed_start = clip.start;
    clip.placed_length = clip.length;
    clip.name = "beat";
    return clip;
}

TEST(LoopClips, BecomeTheirPassesEndToEnd) {
    std::vector<LoopRecord> records(4, loop_of(7, 2, 3));
    records[0].parent_type = 0x1056;  // a MIDI region of the same number
    records[1].parent_type = 0;
    records[3].count = 4;
    TimelineTrack track;
    track.clips = {looped_clip(7), looped_clip(8)};
    track.clips[0].fades.edit().fade_out.length = 0.1;
    track.clips[0].edit_row = 4;
    track.clips[1].start = 2.7;
    LoopTallies tallies;
    ClipLooper(records).write_passes(track, 48000, tallies);
    ASSERT_EQ(track.clips.size(), 4u);
    const double starts[] = {2, 2.5, 2.7, 3};
    const std::uint64_t positions[] = {96000, 120000, 96000, 144000};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(track.clips[i].start, starts[i]);
        EXPECT_EQ(track.clips[i].stored_position, positions[i]);
    }
    EXPECT_EQ(track.clips[3].fades->fade_out.length, 0.1);
    EXPECT_EQ(track.clips[3].edit_row, 4);
    EXPECT_EQ(tallies.looped, 1);
    EXPECT_EQ(tallies.passes, 3);
    EXPECT_EQ(tallies.with_fades, 1);
}

TEST(LoopClips, ThatCannotBeWrittenAreListedWithTheirReason) {
    using Change = void (*)(ClipItem&, LoopRecord&);
    const struct {
        Change change;
        LoopRefusal refusal;
    } cases[] = {
        {[](ClipItem&, LoopRecord& r) { r.known_shape = false; }, LoopRefusal::unknown_shape},
        {[](ClipItem&, LoopRecord& r) { r.count = 1; }, LoopRefusal::unreadable_count},
        {[](ClipItem&, LoopRecord& r) { r.count = 10001; }, LoopRefusal::unreadable_count},
        {[](ClipItem& c, LoopRecord&) { c.playrate = 1.5; }, LoopRefusal::stretched_or_crossfaded},
        {[](ClipItem& c, LoopRecord&) { c.crossfaded = true; },
         LoopRefusal::stretched_or_crossfaded},
        {[](ClipItem& c, LoopRecord&) { c.crossfaded_head = true; },
         LoopRefusal::stretched_or_crossfaded},
        {[](ClipItem& c, LoopRecord&) { c.length = 0.0009; }, LoopRefusal::stretched_or_crossfaded},
        {[](ClipItem&, LoopRecord& r) { r.mode = 3; }, LoopRefusal::unknown_mode},
        {[](ClipItem&, LoopRecord& r) { r.parent_type = 0; }, LoopRefusal::not_audio},
        {[](ClipItem&, LoopRecord& r) { r.parent_type = 0x1056; }, LoopRefusal::no_clip},
        {[](ClipItem& c, LoopRecord&) {
             c.stretch.edit().stretch_markers.resize(max_markers_of_passes);
         },
         LoopRefusal::too_many_passes},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.refusal));
        std::vector<LoopRecord> records = {loop_of(7, 2, 10)};
        TimelineTrack track;
        track.clips = {looped_clip(7)};
        c.change(track.clips[0], records[0]);
        LoopTallies tallies;
        ClipLooper looper(records);
        looper.write_passes(track, 48000, tallies);
        looper.list_unmatched(tallies);
        EXPECT_EQ(track.clips.size(), 1u);
        ASSERT_EQ(tallies.listed.size(), 1u);
        EXPECT_EQ(tallies.listed[0].refusal, c.refusal);
    }
}

TEST(LoopLength, EndsLongerClipsAndListsShorterOnes) {
    struct {
        std::uint32_t loop_samples;
        double length;
        int ended, listed;
        double drawn_out = 0;  // by crossfades, at either end
    } const cases[] = {
        {12000, 0.25, 1, 0},    {23951, 23951 / 48000.0, 1, 0},
        {23953, 0.5, 0, 0},     {24047, 0.5, 0, 0},
        {24049, 0.5, 0, 1},     {48, 0.5, 0, 1},
        {24000, 1, 0, 0, 0.25}, {12000, 0.5, 1, 0, 0.25},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.loop_samples);
        const std::vector<LoopRecord> records = {loop_of(7, 1, 0, c.loop_samples)};
        TimelineTrack track;
        track.clips = {looped_clip(7)};
        ClipItem& clip = track.clips[0];
        clip.start -= c.drawn_out;
        clip.length += 2 * c.drawn_out;
        clip.stretch.edit().stretch_markers = {{0, 0}, {0.1, 0.2}, {clip.length, 0.6}};
        clip.fades.edit().fade_in.length = 0.3;
        clip.head_of_file = true;
        LoopTallies tallies;
        ClipLooper looper(records);
        looper.write_passes(track, 48000, tallies);
        looper.end_loops(track, tallies);
        EXPECT_EQ(clip.length, c.length);
        EXPECT_EQ(clip.stretch->stretch_markers.back().item_position, c.length);
        EXPECT_LE(clip.fades->fade_in.length, c.length);
        EXPECT_EQ(clip.head_of_file, c.ended == 0);
        EXPECT_EQ(tallies.ended_by_length, c.ended);
        EXPECT_EQ(tallies.short_loops, c.listed);
    }
}

}  // namespace
}  // namespace tanrove
