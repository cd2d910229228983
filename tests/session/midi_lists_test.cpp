// The MIDI side of the session lists: note streams, regions, and the clips on MIDI tracks.
#include <gtest/gtest.h>

#include <sstream>

#include "session/block_tree.hpp"
#include "session/midi_tracks.hpp"
#include "session/session_lists.hpp"
#include "support/damaged_sessions.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::MidiClipSpec;
using builder::MidiRegionSpec;
using builder::MidiStreamSpec;
using builder::SessionBuilder;
using builder::TrackKind;

SessionLists lists_of(const Bytes& image) {
    SessionLists lists;
    std::vector<TrackTableRow> rows;
    readSessionLists(BlockIndex{ByteView(image)}, {}, lists, rows);
    return lists;
}

Bytes image_of(const std::vector<Bytes>& blocks) {
    ByteWriter image;
    image.zeros(20);
    for (const auto& b : blocks) image.raw(b);
    return image.zeros(40).bytes();
}

TEST(MidiLists, EveryClipFindsItsTrackItsRegionAndItsNotes) {
    MidiClipSpec verse{.region = "Verse", .position = 960000, .length = 3840000, .head = 1000};
    verse.stream.notes = {{1500, 240000, 64, 80}, {1200, 300000, 60, 127}};
    MidiClipSpec early{.region = "Early", .position = -500, .length = 10, .head = -700};
    early.stream.notes = {{-650, 7, 1, 2}};
    MidiClipSpec silent{.region = "Silent", .position = 5, .length = 9, .head = 4};
    MidiClipSpec group{.region = "Group", .position = 8, .clip_group = 1};
    const Bytes image = SessionBuilder()
                            .track({.name = "Set", .kind = TrackKind::basic_folder})
                            .track({.name = "Vox"})
                            .track({.name = "Keys",
                                    .kind = TrackKind::midi,
                                    .tick_based = true,
                                    .midi_clips = {verse, silent}})
                            .track({.name = "None", .kind = TrackKind::midi})
                            .track({.name = "Main", .kind = TrackKind::master})
                            .track({.name = "Synth",
                                    .kind = TrackKind::instrument,
                                    .tick_based = true,
                                    .midi_clips = {early, group}})
                            .image();
    const auto lists = lists_of(image);
    ASSERT_EQ(lists.midi_streams.size(), 4U);
    ASSERT_EQ(lists.midi_tracks.size(), 4U);
    const struct {
        const char* track;
        std::uint16_t id;
        const char* region;
        std::int64_t start;
        std::int64_t source_offset;
        std::int64_t length;
        std::int32_t stream;
    } expected[] = {{"Keys", 0, "Verse", 960000, 500, 3840000, 3},
                    {"Keys", 0, "Silent", 5, -4, 9, 2},
                    {"Synth", 2, "Early", 500, 50, 10, 1},
                    {"Synth", 2, "", 8, 0, 0, -1}};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(expected[i].region);
        const ClipTrack& clip = lists.midi_tracks[i];
        EXPECT_EQ(lists.midi_track_rows.at(clip.index).name, expected[i].track);
        EXPECT_EQ(clip.index, expected[i].id);
        EXPECT_EQ(clip.start, expected[i].start);
        EXPECT_EQ(clip.is_clip_group, i == 3);
        if (clip.is_clip_group) continue;
        const Region& region = lists.midi_regions.at(clip.region_index);
        EXPECT_EQ(region.name, expected[i].region);
        EXPECT_EQ(region.source_offset, expected[i].source_offset);
        EXPECT_EQ(region.length, expected[i].length);
        EXPECT_EQ(region.midi_stream, expected[i].stream);
    }
    EXPECT_EQ(lists.midi_tracks[3].region_index, 1U);
    const MidiStream& notes = lists.midi_streams[3];
    EXPECT_EQ(notes.origin, 1000000001500U);
    ASSERT_EQ(notes.events.size(), 2U);
    EXPECT_EQ(notes.events[1].position, -300);
    EXPECT_EQ(notes.events[1].length, 300000);
    EXPECT_EQ(notes.events[1].note, 60);
    EXPECT_EQ(notes.events[1].velocity, 127);
    EXPECT_EQ(notes.end, 299700);
    EXPECT_EQ(lists.midi_streams[1].origin, 999999999350U);
    EXPECT_EQ(lists.midi_streams[2].origin, 1000000000000U) << "no notes";
}

TEST(MidiLists, ARegionWithoutAStreamLeavesTheNumbersOfTheOthersAlone) {
    const std::vector<MidiRegionSpec> specs = {
        {"A", 0, 10, 1}, {"lost", 0, 10, 2}, {"B", 0, 0xffffffffff, 0}};
    const auto playlist = [](const std::string& name) {
        return builder::short_midi_playlist_block(
            {.name = name, .midi_clips = {MidiClipSpec{}, MidiClipSpec{}, MidiClipSpec{}}}, 0);
    };
    const Bytes streams = builder::midi_streams_block({{}, {.notes = {{70, 30, 1, 1}}}});
    for (const bool older : {false, true}) {
        const Bytes image = image_of(
            {SessionBuilder().track({.name = "Keys", .kind = TrackKind::midi}).image(), streams,
             older ? builder::older_midi_region_list_block(specs)
                   : builder::midi_region_list_block(specs),
             builder::compound_midi_list_block({{1, true}, {2, false}, {1, false}}),
             builder::midi_playlists_block({playlist("Keys"), playlist("renamed")})});
        const Bytes body(image.begin() + 20, image.end());  // the built session's own header
        const auto lists = lists_of(body);
        ASSERT_EQ(lists.midi_regions.size(), 3U);
        EXPECT_EQ(lists.midi_regions[1].name, "B");
        EXPECT_EQ(lists.midi_regions[1].index, 2);
        EXPECT_EQ(lists.midi_regions[1].length, 0xffffffffff);
        EXPECT_EQ(lists.midi_regions[2].name, "B") << "a compound clip";
        EXPECT_EQ(lists.midi_regions[2].index, 4) << "behind one without a stream";
        EXPECT_EQ(lists.midi_regions[2].length, 30);
        EXPECT_EQ(lists.midi_regions[2].midi_stream, 1);
        ASSERT_EQ(lists.midi_tracks.size(), 2U) << "no second track for the second playlist";
        EXPECT_EQ(lists.midi_tracks[1].region_index, 1U) << "the place of region 2";
    }
}

TEST(MidiLists, APlaylistWithoutATrackOfItsNameGoesToATrackWithoutAPlaylistOfItsOwn) {
    const struct {
        std::vector<std::string> playlists;
        std::vector<std::size_t> tracks;
    } cases[] = {{{"Keys", "Bass", "Old"}, {0, 1, 2}},
                 {{"Keys", "Keys.01", "Bass"}, {0, 1}},
                 {{"Bass", "Old", "Keys"}, {1, 0}}};
    const TrackTableRow tracks[] = {
        {.id = 0, .name = "Keys"}, {.id = 1, .name = "Bass"}, {.id = 2, .name = "New"}};
    const Region regions[] = {{.name = "r"}};
    for (const auto& c : cases) {
        std::vector<Bytes> playlists;
        for (const auto& name : c.playlists) {
            playlists.push_back(
                builder::midi_playlist_block({.name = name, .midi_clips = {MidiClipSpec{}}}, 0));
        }
        const Bytes image = image_of({builder::midi_playlists_block(playlists)});
        const auto clips =
            read_midi_clips(ByteView(image), parseBlockTree(ByteView(image)), tracks, regions);
        std::vector<std::size_t> found;
        for (const ClipTrack& clip : clips) found.push_back(clip.index);
        EXPECT_EQ(found, c.tracks) << c.playlists[1];
    }
}

TEST(MidiLists, ANoteCountThatLiesReadsNoFurtherThanItsBlock) {
    const std::vector<builder::NoteSpec> notes = {{0, 1, 1, 1}, {5, 1, 2, 2}};
    for (const std::uint32_t counted : {0U, 1U, 2U, 3U, 0xffffffffU}) {
        SCOPED_TRACE(counted);
        MidiStreamSpec lying{.notes = notes, .counted = counted};
        const Bytes image = image_of({builder::block(0x2000, builder::note_list(lying)),
                                      builder::midi_streams_block({{.notes = notes}})});
        const auto streams = read_midi_streams(ByteView(image), parseBlockTree(ByteView(image)));
        ASSERT_EQ(streams.size(), 2U);
        // What follows the notes in the block has room for one more.
        EXPECT_EQ(streams[0].events.size(), std::min<std::size_t>(counted, 3));
        EXPECT_EQ(streams[1].events.size(), 2U);
    }
}

/// The streams by the plainest walk: byte by byte through each top-level block.
std::vector<MidiStream> streams_byte_by_byte(ByteView image) {
    std::vector<MidiStream> streams;
    for (const BlockNode& node : parseBlockTree(image)) {
        if (node.contentType != 0x2000) continue;
        const std::size_t end = node.offset + node.size;
        for (std::size_t p = node.offset; p + 15 <= end;) {
            if (!image.has(p, "MdNLB")) {
                ++p;
                continue;
            }
            MidiStream stream;
            std::size_t at = p + 15;
            for (std::uint32_t i = 0; i < image.u32(p + 11) && at + 35 <= end; ++i, at += 35) {
                const auto position = static_cast<std::int64_t>(image.number(at, 7));
                if (i == 0) stream.origin = image.number(at, 7);
                stream.events.push_back({position - static_cast<std::int64_t>(stream.origin),
                                         static_cast<std::int64_t>(image.number(at + 9, 5)),
                                         image.u8(at + 8), image.u8(at + 17)});
            }
            streams.push_back(stream);
            p = at;
        }
    }
    return streams;
}

std::string as_text(const std::vector<MidiStream>& streams) {
    std::ostringstream text;
    for (const auto& stream : streams) {
        text << "origin " << stream.origin << '\n';
        for (const auto& note : stream.events) {
            text << note.position << ' ' << note.length << ' ' << int{note.note} << ' '
                 << int{note.velocity} << '\n';
        }
    }
    return text.str();
}

void compare_streams(const Bytes& image) {
    const auto lists = lists_of(image);
    ASSERT_EQ(as_text(lists.midi_streams), as_text(streams_byte_by_byte(ByteView(image))));
    for (const Region& region : lists.midi_regions) {
        ASSERT_LT(static_cast<std::size_t>(region.midi_stream), lists.midi_streams.size());
    }
    ASSERT_LE(lists.midi_tracks.size(), image.size() / 9);
}

TEST(MidiLists, DamagedSessionsReadAsAWalkOverEveryByteDoes) {
    MidiClipSpec clip{.region = "R", .length = 9};
    clip.stream = {.notes = {{0, 5}, {9, 6}}, .controllers = {{1, 2, 3}}, .sysex = {{4, {1, 2}}}};
    const Bytes good =
        SessionBuilder()
            .track({.name = "Keys", .kind = TrackKind::midi, .midi_clips = {clip, clip}})
            .top_level(builder::compound_midi_list_block({{0, false}}))
            .image();
    EXPECT_EQ(lists_of(good).midi_streams.size(), 2U);
    builder::for_each_damage(good, 3, compare_streams);
}

TEST(MidiLists, RealSessionsHoldTheNotesThatTheyPlay) {
    for (const auto* file : {"RegionTest.ptx", "TempoTimeKeySig.ptx", "Untitled32.ptx"}) {
        TANROVE_REAL_SESSION(empty, file);
        compare_streams(empty);
        const auto lists = lists_of(empty);
        EXPECT_TRUE(lists.midi_streams.empty() && lists.midi_regions.empty()) << file;
    }
    TANROVE_REAL_SESSION(image, "TestPTX.ptx");
    compare_streams(image);
    const auto lists = lists_of(image);
    ASSERT_EQ(lists.midi_tracks.size(), 3U);
    const std::size_t note_counts[] = {9, 16, 4};
    const std::int32_t streams[] = {1, 0, 2};
    for (std::size_t i = 0; i < 3; ++i) {
        const ClipTrack& clip = lists.midi_tracks[i];
        const std::string name = "MIDI " + std::to_string(i + 1);
        SCOPED_TRACE(name);
        EXPECT_EQ(lists.midi_track_rows.at(clip.index).name, name);
        EXPECT_EQ(clip.start, 0);
        const Region& region = lists.midi_regions.at(clip.region_index);
        EXPECT_EQ(region.name, name + "-01");
        EXPECT_EQ(region.source_offset, 0);
        EXPECT_EQ(region.length, i < 2 ? 3840000 : 11520000);
        ASSERT_EQ(region.midi_stream, streams[i]);
        const auto& events = lists.midi_streams[static_cast<std::size_t>(streams[i])].events;
        ASSERT_EQ(events.size(), note_counts[i]);
        for (const MidiEvent& note : events) EXPECT_EQ(note.velocity, 80);
    }
    for (std::size_t i = 0; i < 9; ++i) {
        const MidiEvent& note = lists.midi_streams[1].events[i];
        const int keys[] = {64, 59, 64};
        EXPECT_EQ(note.note, keys[i / 3]);
        EXPECT_EQ(note.length, 240000);
        if (i % 3 == 0) {
            EXPECT_EQ(note.position, static_cast<std::int64_t>(i / 3) * 960000);
        }
    }
}

}  // namespace
}  // namespace tanrove
