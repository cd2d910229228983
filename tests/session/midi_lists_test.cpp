// The MIDI side of the session lists: note streams, regions, and the clips on MIDI tracks.
#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/block_tree.hpp"
#include "session/midi_chunk_dump.hpp"
#include "session/midi_chunks.hpp"
#include "session/midi_tracks.hpp"
#include "session/session_lists.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;

SessionLists lists_of(const Bytes& image) {
    SessionLists lists;
    std::vector<TrackTableRow> rows;
    const ByteView view(image);
    readSessionLists(BlockIndex(view), parse_list_tree(view).blocks(), {}, lists, rows);
    return lists;
}

Bytes image_of(const std::vector<Bytes>& blocks) {
    ByteWriter image;
    image.zeros(20);
    for (const auto& b : blocks) image.raw(b);
    return image.zeros(40).bytes();
}

TEST(MidiLists, ARegionWithoutAStreamLeavesTheNumbersOfTheOthersAlone) {
    const std::vector<MidiRegionSpec> specs = {
        {"A", 0, 10, 1}, {"lost", 0, 10, 2}, {"B", 0, 0xffffffffff, 0}};
    const auto playlist = [](const std::string& name) {
        return short_midi_playlist_block(
            {.name = name, .midi_clips = {MidiClipSpec{}, MidiClipSpec{}, MidiClipSpec{}}}, 0);
    };
    const Bytes streams = midi_streams_block({{}, {.notes = {{70, 30, 1, 1}}}});
    for (const bool older : {false, true}) {
        const Bytes image = image_of(
            {SessionBuilder().track({.name = "Keys", .kind = TrackKind::midi}).image(), streams,
             older ? older_midi_region_list_block(specs) : midi_region_list_block(specs),
             compound_midi_list_block({{1, true}, {2, false}, {1, false}}),
             midi_playlists_block({playlist("Keys"), playlist("renamed")})});
        const auto lists = lists_of(Bytes(image.begin() + 20, image.end()));  // without its header
        std::string regions;
        for (const auto& r : lists.midi_regions) {
            regions += fields(r.name, r.index, r.length, r.midi_stream) + ", ";
        }
        EXPECT_EQ(regions, "A 0 10 1, B 2 1099511627775 0, B 4 30 1, ")
            << "a compound clip behind one without a stream is the last";
        ASSERT_EQ(lists.midi_placements.size(), 2U) << "no second track for the second playlist";
        EXPECT_EQ(lists.midi_placements[1].region_index, 1U) << "the place of region 2";
    }
}

TEST(MidiLists, APlaylistWithoutATrackOfItsNameGoesToATrackWithoutAPlaylistOfItsOwn) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"Keys", "Bass", "Old"}, "0,1,2"},
        {{"Keys", "Keys.01", "Bass"}, "0,1"},
        {{"Bass", "Old", "Keys"}, "1,0"}};
    const TrackTableRow tracks[] = {
        {.id = 0, .name = "Keys"}, {.id = 1, .name = "Bass"}, {.id = 2, .name = "New"}};
    const Region regions[] = {{.name = "r"}};
    for (const auto& [names, places] : cases) {
        std::vector<Bytes> playlists;
        for (const auto& name : names) {
            playlists.push_back(
                midi_playlist_block({.name = name, .midi_clips = {MidiClipSpec{}}}, 0));
        }
        const Bytes image = image_of({midi_playlists_block(playlists)});
        std::vector<std::size_t> found;
        for (const ClipTrack& clip : read_midi_clips(
                 ByteView(image), parseBlockTree(ByteView(image)).blocks(), tracks, regions)) {
            found.push_back(clip.index);
        }
        EXPECT_EQ(shown(found), places);
    }
}

TEST(MidiLists, ANoteCountThatLiesReadsNoFurtherThanItsBlock) {
    const std::vector<NoteSpec> notes = {{0, 1, 1, 1}, {5, 1, 2, 2}};
    for (const std::uint32_t counted : {0U, 1U, 2U, 3U, 0xffffffffU}) {
        SCOPED_TRACE(counted);
        MidiStreamSpec lying{.notes = notes, .counted = counted};
        const Bytes image =
            image_of({block(0x2000, note_list(lying)), midi_streams_block({{.notes = notes}})});
        const auto streams =
            read_midi_streams(ByteView(image), parseBlockTree(ByteView(image)).blocks());
        ASSERT_EQ(streams.size(), 2U);
        // What follows the notes in the block has room for one more.
        EXPECT_EQ(streams[0].events.size(), std::min<std::size_t>(counted, 3));
        EXPECT_EQ(streams[1].events.size(), 2U);
    }
}

std::vector<MidiChunk> chunks_of(const Bytes& image) {
    return over(image, readMidiChunks);
}

const MidiStreamSpec full_stream = {
    .notes = {{480, 240000, 60, 80}, {960, 240000, 62, 80}},
    .controllers = {{0x0702, 480, 100},
                    {0x0702, 500, 90},
                    {1, 490, 0xffffff38},
                    {4, 495, 7},
                    {0x4002, 480, 127}},
    .sysex = {{480, {0xf0, 0x7e, 0xf7}}, {481, {}}, {482, {'M', 'd', 'N', 'L', 'B'}}}};

TEST(ReadMidiChunks, GivesBackControllersAndMessagesStreamByStream) {
    const Bytes image = image_of(
        {midi_streams_block({full_stream, {}, {.notes = {{7}}, .controllers = {{1, 9, 2}}}})});
    const auto chunks = chunks_of(image);
    ASSERT_EQ(chunks.size(), 3U);
    EXPECT_EQ(read_midi_streams(ByteView(image), parseBlockTree(ByteView(image)).blocks()).size(),
              3U);
    std::string text;
    for (const auto& c : chunks[0].controllers) {
        text += fields(c.kind, c.position - 1000000000000U, c.value) + ", ";
    }
    EXPECT_EQ(text, "1794 480 100, 1794 500 90, 1 490 4294967096, 4 495 7, 16386 480 127, ");
    ASSERT_EQ(chunks[0].sysex.size(), 3U) << "a message may hold what a record begins with";
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(chunks[0].sysex[i].data, full_stream.sysex[i].data);
    }
    EXPECT_EQ(midi_chunk_dump(chunks),
              "chunk 0   notes 2     origin 1000000000480\n"
              "    pitch bend       count 1\n"
              "    aftertouch       count 1\n"
              "    CC 007           count 2\n"
              "    CC 064           count 1\n"
              "chunk 1   notes 0     origin 1000000000000\n"
              "chunk 2   notes 1     origin 1000000000007\n"
              "    pitch bend       count 1\n"
              "3 chunks, 5 streams with data, 6 events\n");
}

TEST(ReadMidiChunks, ListsBehindANoteListOutsideAnyBlockBelongToNoStream) {
    const Bytes lists =
        ByteWriter().raw(controller_list({{1, 2, 3}})).raw(sysex_list({{4, {5}}})).bytes();
    const Bytes stream = midi_streams_block({{.notes = {{0}}}});
    const Bytes stray = note_list({.notes = {{0}}});
    const auto count = [](const Bytes& blocks) {
        const auto chunks = chunks_of(image_of({blocks}));
        EXPECT_EQ(chunks.size(), 1U);
        return chunks.at(0).controllers.size() + chunks.at(0).sysex.size();
    };
    EXPECT_EQ(count(ByteWriter().raw(lists).raw(stream).bytes()), 0U);
    EXPECT_EQ(count(ByteWriter().raw(stream).raw(stray).raw(lists).bytes()), 0U);
    EXPECT_EQ(count(ByteWriter().raw(stream).raw(lists).bytes()), 2U);
}

TEST(ReadMidiChunks, OneWrongByteCostsOneList) {
    const Bytes sysex = sysex_list({{4, {5, 6}}});
    const Bytes controllers = controller_list({{0x0702, 2, 3}});
    const auto read = [&](Bytes first, std::size_t at, std::uint8_t value) {
        if (value != at) first.at(at) = value;  // equal: nothing is wrong
        const Bytes notes = note_list({.notes = {{0}}});
        const auto chunk =
            chunks_of(image_of({block(
                          0x2000,
                          ByteWriter().raw(notes).raw(first).raw(sysex).raw(controllers).bytes())}))
                .at(0);
        return fields(chunk.sysex.size(), chunk.controllers.size());
    };
    EXPECT_EQ(read(sysex, 0, 0), "2 1");
    EXPECT_EQ(read(controllers, 0, 0), "1 2");
    const std::vector<std::pair<std::size_t, std::uint8_t>> in_sysex = {
        {10, 'x'}, {17, 24}, {17, 26}, {17, 3}, {21, 2},
        {21, 0},   {33, 0},  {35, 8},  {40, 1}, {40, 3}};
    for (const auto& [at, value] : in_sysex) EXPECT_EQ(read(sysex, at, value), "1 1") << at;
    // The kind's record has 6 bytes, so that the events' record begins at 27.
    const decltype(in_sysex) in_controllers = {{11, 'x'}, {17, 1},  {17, 7}, {21, 3},
                                               {27, 'x'}, {33, 15}, {37, 0}, {37, 2}};
    for (const auto& [at, value] : in_controllers) {
        EXPECT_EQ(read(controllers, at, value), "1 1") << at;
    }
}

}  // namespace
}  // namespace tanrove
