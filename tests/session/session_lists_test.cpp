// The clip lists: regions, tracks, and the clips between them.
#include "session/session_lists.hpp"

#include <gtest/gtest.h>

#include <map>

#include "session/block_scan.hpp"
#include "session/midi_tracks.hpp"
#include "support/real_sessions.hpp"
#include "support/records/clip_records.hpp"

namespace tanrove {
namespace {

using builder::block;
using builder::Bytes;
using builder::ByteWriter;
using builder::PlacementSpec;
using builder::PlaylistSpec;
using builder::RegionSpec;

struct Read {
    bool done = false;
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
};

Read read(const Bytes& image, const std::vector<AudioFileEntry>& files = {}) {
    Read result;
    const BlockIndex index{ByteView(image)};
    result.done = readSessionLists(index, files, result.lists, result.tracks);
    return result;
}

struct ChannelSpec {
    std::string name;
    std::vector<std::uint16_t> numbers;
};

Bytes track_list(const std::vector<ChannelSpec>& tracks) {
    ByteWriter list;
    list.u32(tracks.size());
    for (const auto& track : tracks) {
        ByteWriter entry;
        entry.counted(track.name).u8(0).u32(track.numbers.size());
        for (const auto number : track.numbers) entry.u16(number);
        list.block(0x1014, entry.zeros(5).bytes(), 6);
    }
    return block(0x1015, list.bytes());
}

Bytes image_of(const std::vector<Bytes>& blocks) {
    ByteWriter image;
    image.zeros(20);
    for (const auto& b : blocks) image.raw(b);
    return image.zeros(20).bytes();
}

PlacementSpec placed(std::uint32_t id, std::int64_t position) {
    PlacementSpec placement;
    placement.id = id;
    placement.position = position;
    return placement;
}

PlaylistSpec playlist(const std::string& name, const std::vector<PlacementSpec>& placements,
                      bool tick_based = false) {
    PlaylistSpec spec;
    spec.name = name;
    spec.placements = placements;
    spec.tick_based = tick_based;
    return spec;
}

RegionSpec region(const std::string& name, std::uint64_t length, std::uint64_t offset = 0,
                  std::uint32_t file = 0) {
    RegionSpec spec;
    spec.name = name;
    spec.length = length;
    spec.source_offset = offset;
    spec.file_index = file;
    return spec;
}

std::vector<std::string> rows_as_text(const Read& result) {
    std::map<std::size_t, std::string> names;
    for (const auto& track : result.tracks) names.emplace(track.id, track.name);
    std::vector<std::string> text;
    for (const auto& row : result.lists.tracks) {
        const std::string region =
            row.is_clip_group ? "group" : result.lists.regions.at(row.region_index).name;
        text.push_back(std::to_string(row.index) + ' ' + names.at(row.index) + ' ' + region + " @" +
                       std::to_string(row.start));
    }
    return text;
}

std::vector<std::string> tracks_as_text(const std::vector<TrackTableRow>& rows) {
    std::vector<std::string> text;
    for (const auto& row : rows) text.push_back(std::to_string(row.id) + ' ' + row.name);
    return text;
}

using Texts = std::vector<std::string>;

TEST(ReadSessionLists, GivesRegionsAndClipsBack) {
    RegionSpec in_ticks = region("Loop", 96000, 123456, 1);
    in_ticks.start = 8000000000;
    in_ticks.start_in_ticks = true;
    RegionSpec recorded = region("Vox-02", 70000, 5);
    recorded.start = 300000;
    recorded.sync_samples = 1200;
    const Bytes image = image_of({
        builder::region_list_block({recorded, in_ticks}),
        track_list({{"Vox", {0}}, {"Loops", {1}}}),
        builder::playlists_block(
            {playlist("Vox", {placed(0, 48000), placed(0, 4200000000)}),
             playlist("Loops", {placed(1, 8000000000), placed(1, 200LL * 1000000000)}, true)}),
    });
    const Read result = read(image, {{"a.wav", 0}, {"b.wav", 1}, {"late.wav", 1}});
    ASSERT_TRUE(result.done);
    ASSERT_EQ(result.lists.regions.size(), 2U);
    const Region& vox = result.lists.regions[0];
    EXPECT_EQ(vox.name, "Vox-02");
    EXPECT_EQ(vox.source_offset, 5);
    EXPECT_EQ(vox.length, 70000);
    EXPECT_EQ(vox.start, 300000);
    EXPECT_EQ(vox.file_length, 70000);
    EXPECT_EQ(vox.file_position, 300000);
    EXPECT_EQ(vox.file, 0);
    EXPECT_EQ(vox.midi_stream, -1);
    const Region& loop = result.lists.regions[1];
    EXPECT_EQ(loop.index, 1);
    EXPECT_EQ(loop.start, static_cast<std::int64_t>(tick_origin) + 8000000000);
    EXPECT_EQ(loop.file, 1) << "the first file of its index";
    EXPECT_EQ(rows_as_text(result),
              (Texts{"0 Vox Vox-02 @48000", "0 Vox Vox-02 @4200000000",
                     "1 Loops Loop @1008000000000", "1 Loops Loop @1200000000000"}));
}

TEST(ReadSessionLists, OlderSessionsPlaceClipsWhereTheirRegionsStart) {
    RegionSpec take = region("Take", 1000);
    take.start = 777;
    const Bytes image = image_of({
        builder::older_region_list_block({region("Other", 5, 0, 3), take}),
        track_list({{"A", {0}}, {"B", {1}}}),
        builder::older_playlists_block({{1}, {1, 0, 2}}),
    });
    const Read result = read(image, {{"c.wav", 3}});
    EXPECT_EQ(rows_as_text(result), (Texts{"0 A Take @777", "1 B Take @777", "1 B Other @0"}))
        << "region 2 does not exist";
    EXPECT_EQ(result.lists.regions.at(0).file, 0);
}

TEST(ReadSessionLists, NumbersTracksDenselyAndKeepsTheTrackListsOrder) {
    const Bytes image = image_of({
        builder::region_list_block({region("r", 1)}),
        track_list({{"Empty", {4}}, {"Wide", {3, 2}}, {"Gap", {0, 0, 9}}, {"Twice", {3}}}),
        builder::playlists_block({playlist("p0", {placed(0, 1)}), playlist("p1", {placed(0, 2)}),
                                  playlist("p2", {placed(0, 4), placed(0, 3)}),
                                  playlist("p3", {placed(0, 5)})}),
    });
    const Read result = read(image);
    EXPECT_EQ(rows_as_text(result),
              (Texts{"0 Gap r @1", "1 Wide r @4", "1 Wide r @3", "2 Wide r @5"}))
        << "playlist 1 belongs to no channel";
    EXPECT_EQ(tracks_as_text(result.tracks),
              (Texts{"3 Empty", "2 Wide", "1 Wide", "0 Gap", "4 Gap"}));
}

TEST(ReadSessionLists, AClipGroupsRowNeedsNoRegion) {
    PlacementSpec group = placed(7, 100);
    group.in_group = true;
    group.locked = true;
    const Bytes image = image_of({
        builder::region_list_block({region("r", 1)}),
        track_list({{"A", {0}}}),
        builder::playlists_block({playlist("A", {group, placed(1, 5), placed(65535, 5)})}),
    });
    const Read result = read(image);
    ASSERT_EQ(rows_as_text(result), (Texts{"0 A group @100"}));
    EXPECT_EQ(result.lists.tracks[0].region_index, 7U);
    EXPECT_TRUE(result.lists.tracks[0].kept);
}

TEST(ReadSessionLists, NamesAreCutAtTheirLimitsAndChannelsAtTheirBlock) {
    const auto channels = [](std::size_t name_bytes, std::size_t count, std::size_t stored) {
        ByteWriter entry;
        entry.counted(std::string(name_bytes, 't')).u8(0).u32(count);
        for (std::size_t i = 0; i < stored; ++i) entry.u16(i);
        return block(0x1015, ByteWriter().u32(1).block(0x1014, entry.bytes()).bytes());
    };
    const struct {
        std::size_t name_bytes, count, stored, read_count, read_bytes;
    } cases[] = {{255, 2, 2, 2, 255},     {256, 2, 2, 2, 255}, {512, 1, 1, 1, 255},
                 {513, 1, 1, 0, 0},       {1, 1025, 3, 3, 1},  {1, 1024, 1100, 1024, 1},
                 {1, 1025, 1100, 1024, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name_bytes << ' ' << c.count << ' ' << c.stored);
        const Read result = read(
            image_of({channels(c.name_bytes, c.count, c.stored),
                      builder::region_list_block({region(std::string(c.name_bytes, 'r'), 7)})}));
        ASSERT_EQ(result.tracks.size(), c.read_count);
        for (const auto& track : result.tracks) EXPECT_EQ(track.name.size(), c.read_bytes);
        ASSERT_EQ(result.lists.regions.size(), 1U);
        EXPECT_EQ(result.lists.regions[0].name.size(), std::min<std::size_t>(c.name_bytes, 255));
        EXPECT_EQ(result.lists.regions[0].length, 7) << "behind the whole name";
    }
}

TEST(ReadSessionLists, RegionsWithoutANameOfTheirOwnBorrowNone) {
    ByteWriter list;
    list.u32(65536);
    for (int i = 0; i < 65536; ++i) list.block(0x2629, {});
    const Bytes image = image_of({block(0x262a, list.bytes()), Bytes(1000, 1)});
    const Read result = read(image);
    ASSERT_EQ(result.lists.regions.size(), 65535U) << "no more can be placed";
    std::size_t name_bytes = 0;
    for (const auto& r : result.lists.regions) name_bytes += r.name.size();
    EXPECT_LE(name_bytes, image.size());
}

TEST(ReadSessionLists, APlacementHoldsItsPositionAndIsNotMarkedAsHidden) {
    const struct {
        std::size_t record_bytes;  // behind its content type
        std::uint8_t mark;
        std::size_t rows;
    } cases[] = {{14, 0, 1}, {13, 0, 0}, {30, 0, 1}, {30, 1, 0}, {30, 2, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.record_bytes << ' ' << int{c.mark});
        const Bytes row = block(0x1050, block(0x104f, Bytes(c.record_bytes)));
        const Bytes rows = ByteWriter().raw(row).zeros(2).u8(c.mark).zeros(9).bytes();
        const Read result =
            read(image_of({builder::region_list_block({region("r", 1)}), track_list({{"A", {0}}}),
                           block(0x1054, block(0x1052, rows))}));
        EXPECT_EQ(result.lists.tracks.size(), c.rows);
    }
}

TEST(ReadSessionLists, APlacementPastTheLastClipNumberIsCounted) {
    for (const std::uint32_t number : {0U, 65534U, 65535U, 70000U}) {
        SCOPED_TRACE(number);
        const Bytes record = ByteWriter().zeros(2).u32(number).zeros(24).bytes();
        const Bytes rows = ByteWriter().raw(block(0x1050, block(0x104f, record))).zeros(12).bytes();
        const Read result =
            read(image_of({builder::region_list_block({region("r", 1)}), track_list({{"A", {0}}}),
                           block(0x1054, block(0x1052, rows))}));
        EXPECT_EQ(result.lists.unnumbered_clips, number >= 65535 ? 1U : 0U);
        EXPECT_EQ(result.lists.tracks.size(), number == 0 ? 1U : 0U);
    }
}

TEST(ReadSessionLists, AFileWithoutANameHidesThoseBehindIt) {
    const Bytes image =
        image_of({builder::region_list_block({region("x", 1, 0, 0), region("y", 1, 0, 2)})});
    const Read result = read(image, {{"a.wav", 0}, {"", 1}, {"c.wav", 2}});
    ASSERT_EQ(result.lists.regions.size(), 2U);
    EXPECT_EQ(result.lists.regions[0].file, 0);
    EXPECT_EQ(result.lists.regions[1].file, -1);
}

TEST(ReadSessionLists, ANameThatPassesTheImageIsCutAtItsRegionAndNumbersThatAreTooWideReadAsZero) {
    Bytes cut = image_of({builder::region_list_block({region("Name", 0x1234)})});
    const std::size_t count_at = 20 + 13 + 18;
    cut[count_at + 3] = 0x40;
    const Read from_cut = read(cut);
    ASSERT_EQ(from_cut.lists.regions.size(), 1U);
    EXPECT_EQ(from_cut.lists.regions[0].name.substr(0, 4), "Name");
    EXPECT_EQ(from_cut.lists.regions[0].name.size(), cut.size() - 20 - count_at - 4);
    EXPECT_EQ(from_cut.lists.regions[0].length, 0);

    const struct {
        std::uint64_t offset;
        std::int64_t read_offset;
    } cases[] = {{0xffffffffff, 0xffffffffff}, {0x10000000000, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.offset);
        const Read wide = read(image_of({builder::region_list_block({region("w", 50, c.offset)})}));
        ASSERT_EQ(wide.lists.regions.size(), 1U);
        EXPECT_EQ(wide.lists.regions[0].source_offset, c.read_offset);
        EXPECT_EQ(wide.lists.regions[0].length, 50);
    }
}

TEST(ReadSessionLists, RefusesShortAndBigEndianImages) {
    Bytes image(65, 0);
    EXPECT_TRUE(read(image).done);
    image[17] = 1;
    EXPECT_FALSE(read(image).done);
    EXPECT_FALSE(read(Bytes(64, 0)).done);
}

TEST(ReadMidiTrackRows, TakesTheStripsWhoseRowsAreMidiOrInstrument) {
    const auto strip = [](const std::string& name) {
        return block(0x251a, ByteWriter().u16(1).counted(name).zeros(60).bytes());
    };
    const Bytes master = block(0x261d, block(0x261b, Bytes(4)));
    const Bytes table = block(0x2519, ByteWriter()
                                          .u32(4)
                                          .raw(strip("Vox"))
                                          .raw(strip("Mst"))
                                          .raw(strip("Keys"))
                                          .raw(strip("Synth"))
                                          .bytes());
    const Bytes image = image_of({table, block(0x261b, Bytes(4)), master, block(0x2620, Bytes(4)),
                                  block(0x2621, Bytes(4)), table});
    const auto rows = readMidiTrackRows(BlockIndex{ByteView(image)});
    EXPECT_EQ(tracks_as_text(rows), (Texts{"0 Keys", "1 Synth"}))
        << "a master fader counts once, and the second copy of the table has no rows";
}

TEST(ReadSessionLists, ReadsRegionTest) {
    TANROVE_REAL_SESSION(image, "RegionTest.ptx");
    const Read result = read(image, {{"region_name_WAV.wav", 0}});
    ASSERT_TRUE(result.done);
    Texts regions;
    for (const auto& r : result.lists.regions) {
        regions.push_back(r.name + ' ' + std::to_string(r.source_offset) + ' ' +
                          std::to_string(r.length) + ' ' + std::to_string(r.file));
    }
    EXPECT_EQ(regions, (Texts{"region_name_region 0 5910132 0", "region_name_region-01 0 2650000 0",
                              "region_name_region-03 950000 1290000 0"}));
    // Two rows are fades whose numbers are regions' too; the edit lists tell them apart.
    EXPECT_EQ(
        rows_as_text(result),
        (Texts{"0 Track_Name region_name_region-01 @0", "1 Audio 1 region_name_region-01 @0",
               "1 Audio 1 region_name_region-03 @2650000", "2 Audio 2 region_name_region-01 @0",
               "3 Audio 2 region_name_region-01 @0", "4 Audio 3 region_name_region-03 @950000",
               "4 Audio 3 region_name_region @2240000", "5 Audio 3 region_name_region-03 @950000",
               "5 Audio 3 region_name_region-01 @2240000"}));
    EXPECT_EQ(tracks_as_text(result.tracks), (Texts{"0 Track_Name", "1 Audio 1", "2 Audio 2",
                                                    "3 Audio 2", "4 Audio 3", "5 Audio 3"}));
}

TEST(ReadSessionLists, ReadsTestPTX) {
    TANROVE_REAL_SESSION(image, "TestPTX.ptx");
    const Read result = read(image, {{"monoTone.wav", 0},
                                     {"monoTone.1.aif", 1},
                                     {"stereoTone.L.aif", 2},
                                     {"stereoTone.R.aif", 3}});
    ASSERT_EQ(result.lists.regions.size(), 4U);
    EXPECT_EQ(result.lists.regions[0].file, 1);
    EXPECT_EQ(result.lists.regions[3].length, 480000);
    EXPECT_EQ(rows_as_text(result), (Texts{"0 monoTone monoTone @0", "1 stereoTone stereoTone.L @0",
                                           "2 stereoTone stereoTone.R @0"}));
    EXPECT_EQ(tracks_as_text(result.lists.midi_track_rows),
              (Texts{"0 MIDI 1", "1 MIDI 2", "2 MIDI 3"}));
}

TEST(ReadSessionLists, ReadsTicksBeyond32BitsInTempoTimeKeySig) {
    TANROVE_REAL_SESSION(image, "TempoTimeKeySig.ptx");
    const Read result = read(image, {{"Audio 1_01.wav", 0}});
    EXPECT_EQ(result.lists.regions.size(), 7U);
    std::vector<std::int64_t> samples;
    std::vector<std::int64_t> ticks;
    std::vector<std::int64_t> lengths;
    for (const auto& row : result.lists.tracks) {
        if (row.index == 0) lengths.push_back(result.lists.regions.at(row.region_index).length);
        (row.index == 0 ? samples : ticks).push_back(row.start);
    }
    for (auto& tick : ticks) tick -= static_cast<std::int64_t>(tick_origin);
    EXPECT_EQ(samples,
              (std::vector<std::int64_t>{0, 327278, 507498, 573648, 845598, 225358698, 234572658}));
    EXPECT_EQ(lengths,
              (std::vector<std::int64_t>{256532, 92020, 66150, 92020, 256532, 256532, 256532}));
    EXPECT_EQ(ticks, (std::vector<std::int64_t>{3120000, 7200000, 13920000, 7342800000, 7695600000,
                                                7718400000, 7752720000}));
}

}  // namespace
}  // namespace tanrove
