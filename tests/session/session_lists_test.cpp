// The clip lists: regions, tracks, and the clips between them.
#include "session/session_lists.hpp"

#include <gtest/gtest.h>

#include <map>

#include "reading.hpp"
#include "session/record_forms.hpp"
#include "support/records/clip_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

struct Read {
    bool done = false;
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
};

Read read(const Bytes& image, const std::vector<AudioFileEntry>& files = {}) {
    Read result;
    const BlockIndex index{ByteView(image)};
    result.done = readSessionLists(index, parse_list_tree(index.image()).blocks(), files,
                                   result.lists, result.tracks);
    return result;
}

using Channels = std::vector<std::pair<std::string, std::vector<std::uint16_t>>>;

Bytes track_list(const Channels& tracks) {
    ByteWriter list;
    list.u32(tracks.size());
    for (const auto& [name, numbers] : tracks) {
        ByteWriter entry;
        entry.counted(name).u8(0).u32(numbers.size());
        for (const auto number : numbers) entry.u16(number);
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
    return {.id = id, .position = position};
}

PlaylistSpec playlist(const std::string& name, const std::vector<PlacementSpec>& placements,
                      bool tick_based = false) {
    return {.name = name, .tick_based = tick_based, .placements = placements};
}

RegionSpec region(const std::string& name, std::uint64_t length, std::uint64_t offset = 0,
                  std::uint32_t file = 0) {
    return {.name = name, .file_index = file, .source_offset = offset, .length = length};
}

std::vector<std::string> rows_as_text(const Read& result) {
    std::map<std::size_t, std::string> names;
    for (const auto& track : result.tracks) names.emplace(track.id, track.name);
    std::vector<std::string> text;
    for (const auto& row : result.lists.placements) {
        const std::string region =
            row.is_clip_group ? "group" : result.lists.regions.at(row.region_index).name;
        text.push_back(std::to_string(row.index) + ' ' + names.at(row.index) + ' ' + region + " @" +
                       std::to_string(row.start));
    }
    return text;
}

using Texts = std::vector<std::string>;

TEST(ReadSessionLists, OlderSessionsPlaceClipsWhereTheirRegionsStart) {
    RegionSpec take = region("Take", 1000);
    take.start = 777;
    const Bytes image = image_of({
        older_region_list_block({region("Other", 5, 0, 3), take}),
        track_list({{"A", {0}}, {"B", {1}}}),
        older_playlists_block({{1}, {1, 0, 2}}),
    });
    const Read result = read(image, {{"c.wav", 3}});
    EXPECT_EQ(rows_as_text(result), (Texts{"0 A Take @777", "1 B Take @777", "1 B Other @0"}))
        << "region 2 does not exist";
    EXPECT_EQ(result.lists.regions.at(0).file, 0);
}

TEST(ReadSessionLists, NumbersTracksDenselyAndKeepsTheTrackListsOrder) {
    const Bytes image = image_of({
        region_list_block({region("r", 1)}),
        track_list({{"Empty", {4}}, {"Wide", {3, 2}}, {"Gap", {0, 0, 9}}, {"Twice", {3}}}),
        playlists_block({playlist("p0", {placed(0, 1)}), playlist("p1", {placed(0, 2)}),
                         playlist("p2", {placed(0, 4), placed(0, 3)}),
                         playlist("p3", {placed(0, 5)})}),
    });
    const Read result = read(image);
    EXPECT_EQ(rows_as_text(result),
              (Texts{"0 Gap r @1", "1 Wide r @4", "1 Wide r @3", "2 Wide r @5"}))
        << "playlist 1 belongs to no channel";
    std::string tracks;
    for (const auto& row : result.tracks) tracks += fields(row.id, row.name) + ", ";
    EXPECT_EQ(tracks, "3 Empty, 2 Wide, 1 Wide, 0 Gap, 4 Gap, ");
}

TEST(ReadSessionLists, NamesAreCutAtTheirLimitsAndChannelsAtTheirBlock) {
    const struct {
        std::size_t name_bytes, count, stored, read_count, read_bytes;
    } cases[] = {{256, 2, 2, 2, 255},
                 {512, 1, 1, 1, 255},
                 {513, 1, 1, 0, 0},
                 {1, 1025, 3, 3, 1},
                 {1, 1025, 1100, 1024, 1}};
    for (const auto& c : cases) {
        ByteWriter entry;
        entry.counted(std::string(c.name_bytes, 't')).u8(0).u32(c.count);
        for (std::size_t i = 0; i < c.stored; ++i) entry.u16(i);
        const Bytes track = ByteWriter().u32(1).block(0x1014, entry.bytes()).bytes();
        const std::string name(c.name_bytes, 'r');
        const Read result =
            read(image_of({block(0x1015, track), region_list_block({region(name, 7)})}));
        EXPECT_EQ(result.tracks.size(), c.read_count);
        for (const auto& t : result.tracks) EXPECT_EQ(t.name.size(), c.read_bytes);
        EXPECT_EQ(result.lists.regions.at(0).name, name.substr(0, 255));
        EXPECT_EQ(result.lists.regions[0].length, 7) << "behind the whole name";
    }
}

TEST(ReadSessionLists, RegionsWithoutANameOfTheirOwnBorrowNone) {
    ByteWriter list;
    list.u32(65536);
    for (int i = 0; i < 65536; ++i) list.block(0x2629, {});
    const Bytes image = image_of({block(0x262a, list.bytes()), Bytes(1000, 1)});
    const auto regions = read(image).lists.regions;
    EXPECT_EQ(regions.size(), 65535U) << "no more can be placed";
    std::size_t name_bytes = 0;
    for (const auto& r : regions) name_bytes += r.name.size();
    EXPECT_LE(name_bytes, image.size());
}

TEST(ReadSessionLists, APlacementHoldsItsPositionAndANumberAndIsNotMarkedAsHidden) {
    const struct {
        std::size_t record_bytes;  // behind its content type
        std::uint8_t mark;
        std::uint32_t number;
        const char* rows_and_unnumbered;
    } cases[] = {{14, 0, 0, "1 0"}, {13, 0, 0, "0 0"},     {30, 1, 0, "0 0"},
                 {30, 2, 0, "1 0"}, {30, 0, 65534, "0 0"}, {30, 0, 65535, "0 1"}};
    for (const auto& c : cases) {
        const Bytes record = ByteWriter().zeros(2).u32(c.number).zeros(c.record_bytes - 6).bytes();
        const Bytes row = block(0x1050, block(0x104f, record));
        const Bytes rows = ByteWriter().raw(row).zeros(2).u8(c.mark).zeros(9).bytes();
        const Bytes image = image_of({region_list_block({region("r", 1)}), track_list({{"A", {0}}}),
                                      block(0x1054, block(0x1052, rows))});
        const auto lists = read(image).lists;
        EXPECT_EQ(fields(lists.placements.size(), lists.unnumbered_clips), c.rows_and_unnumbered)
            << c.record_bytes << ' ' << int{c.mark} << ' ' << c.number;
    }
}

TEST(ReadSessionLists, AFileWithoutANameHidesThoseBehindItAndAWideOffsetReadsAsZero) {
    const Bytes image = image_of(
        {region_list_block({region("x", 50, 0xffffffffff, 0), region("y", 50, 0x10000000000, 2)})});
    std::string text;
    for (const auto& r : read(image, {{"a.wav", 0}, {"", 1}, {"c.wav", 2}}).lists.regions) {
        text += fields(r.file, r.source_offset, r.length) + ", ";
    }
    EXPECT_EQ(text, "0 1099511627775 50, -1 0 50, ");
}

TEST(ReadSessionLists, ANameThatPassesTheImageIsCutAtItsRegion) {
    Bytes cut = image_of({region_list_block({region("Name", 0x1234)})});
    const std::size_t count_at = 20 + 13 + 18;
    cut[count_at + 3] = 0x40;
    const auto from_cut = read(cut).lists.regions;
    ASSERT_EQ(from_cut.size(), 1U);
    EXPECT_TRUE(from_cut[0].name.starts_with("Name"));
    EXPECT_EQ(from_cut[0].name.size(), cut.size() - 20 - count_at - 4);
    EXPECT_EQ(from_cut[0].length, 0);
}

TEST(ReadSessionLists, RefusesShortAndBigEndianImages) {
    Bytes image(65, 0);
    EXPECT_TRUE(read(image).done);
    image[17] = 1;
    EXPECT_FALSE(read(image).done);
    EXPECT_FALSE(read(Bytes(64, 0)).done);
}

}  // namespace
}  // namespace tanrove
