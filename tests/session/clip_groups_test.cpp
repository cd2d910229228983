// Clip groups and MIDI playlists: the other two users of the placement records.
#include "session/clip_groups.hpp"

#include <gtest/gtest.h>

#include "session/midi_playlists.hpp"
#include "session/playlist_walk.hpp"
#include "support/records/clip_table_records.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::GroupClipSpec;
using builder::PlacementSpec;
using builder::PlaylistSpec;

PlaylistSpec list(const std::vector<std::pair<std::uint32_t, std::int64_t>>& members) {
    PlaylistSpec playlist{.name = "list", .tick_based = true};
    for (const auto& [id, position] : members) {
        PlacementSpec placement;
        placement.id = id;
        placement.position = position;
        playlist.placements.push_back(placement);
    }
    return playlist;
}

std::vector<Region> regions_of(const std::vector<std::int64_t>& lengths) {
    std::vector<Region> regions(lengths.size());
    for (std::size_t i = 0; i < lengths.size(); ++i) regions[i].length = lengths[i];
    return regions;
}

ClipGroups read_groups(const std::vector<GroupClipSpec>& clips,
                       const std::vector<PlaylistSpec>& lists, const std::vector<Region>& regions) {
    const Bytes image = ByteWriter()
                            .raw(builder::group_definitions_block(clips))
                            .raw(builder::group_lists_block(lists))
                            .bytes();
    return readClipGroups(BlockIndex{ByteView(image)}, regions);
}

std::vector<std::int32_t> list_numbers(const ClipGroups& groups) {
    std::vector<std::int32_t> numbers;
    for (const auto& clip : groups.clips) numbers.push_back(clip.table_index);
    return numbers;
}

using Numbers = std::vector<std::int32_t>;

TEST(ReadClipGroups, GivesDefinitionsAndMembersBack) {
    PlaylistSpec members = list({{0, 0}, {7, 500}, {2, 480}});
    members.kind = 1;
    members.placements[1].in_group = true;
    members.placements[1].muted = true;
    members.placements[2].is_fade = true;
    const ClipGroups groups = read_groups(
        {{.name = "Chorus", .length = 9000},
         {.name = "cut", .is_piece = true, .start = 0, .length = 50, .compound = 2, .kind = 3},
         {.name = "broken", .broken = true}},
        {members}, regions_of({100}));
    ASSERT_EQ(groups.clips.size(), 3U);
    EXPECT_EQ(groups.clips[0].name, "Chorus");
    EXPECT_EQ(groups.clips[0].length, 9000);
    EXPECT_FALSE(groups.clips[0].has_start);
    EXPECT_TRUE(groups.clips[1].has_start);
    EXPECT_TRUE(groups.clips[1].flag);
    EXPECT_EQ(groups.clips[1].is_compound, 2);
    EXPECT_EQ(groups.clips[1].kind, 3);
    EXPECT_FALSE(groups.clips[2].valid) << "it keeps its number only";
    EXPECT_EQ(list_numbers(groups), (Numbers{0, -1, -1}));
    ASSERT_EQ(groups.lists.size(), 1U);
    EXPECT_EQ(groups.lists[0].kind, 1);
    const auto& read = groups.lists[0].members;
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(read[1].id, 7U);
    EXPECT_EQ(read[1].position, tick_origin + 500);
    EXPECT_TRUE(read[1].nested && read[1].muted && read[1].live);
    EXPECT_TRUE(read[2].is_fade && !read[2].live && !read[2].nested);
}

TEST(ReadClipGroups, ListsGoByLengthWhereItTellsAndByOrderElse) {
    const auto regions = regions_of({100, 200, 300});
    const PlaylistSpec ends_at_150 = list({{0, 50}});
    const PlaylistSpec ends_at_700 = list({{2, 0}, {1, 500}});
    PlaylistSpec plain_150 = ends_at_150;  // positions in samples, without an origin
    plain_150.tick_based = false;
    const GroupClipSpec of_150 = {.name = "a", .length = 150};
    const GroupClipSpec of_700 = {.name = "b", .length = 700};
    const struct {
        const char* what;
        std::vector<GroupClipSpec> clips;
        std::vector<PlaylistSpec> lists;
        Numbers numbers;
    } cases[] = {
        {"lengths cross", {of_150, of_700}, {ends_at_700, ends_at_150}, {1, 0}},
        {"plain positions", {of_700, of_150}, {plain_150, ends_at_700}, {1, 0}},
        {"no length fits",
         {{.name = "a"}, {.name = "b", .length = 9}},
         {ends_at_700, ends_at_150},
         {0, 1}},
        {"two lists of one length", {of_700, of_150}, {ends_at_150, ends_at_150}, {0, 1}},
        {"a list serves one", {of_150, of_150}, {ends_at_700, ends_at_150}, {1, 1}},
        {"one list too few", {of_150, of_700}, {ends_at_150}, {-1, -1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(list_numbers(read_groups(c.clips, c.lists, regions)), c.numbers);
    }
}

TEST(ReadClipGroups, APieceTakesTheListOfTheOneGroupItLiesIn) {
    const GroupClipSpec whole = {.name = "g", .length = 700};
    const GroupClipSpec namesake = {.name = "g", .length = 300};
    const auto piece = [](const std::string& name, std::uint64_t start, std::uint64_t length) {
        return GroupClipSpec{.name = name, .is_piece = true, .start = start, .length = length};
    };
    const auto groups = read_groups({piece("g", 100, 600), piece("g", 101, 600),
                                     piece("g", 100, 200), piece("other", 0, 1), whole, namesake},
                                    {list({}), list({})}, {});
    EXPECT_EQ(list_numbers(groups), (Numbers{0, -1, -1, -1, 0, 1}));
}

Bytes midi_playlist(bool tick_based, int properties, std::int64_t position) {
    PlaylistSpec playlist{.name = "Keys", .tick_based = tick_based, .placements = {{}, {}}};
    playlist.placements[0].id = 6;
    playlist.placements[0].position = position;
    playlist.placements[0].muted = true;
    playlist.placements[0].colour = 30;
    playlist.placements[1].in_group = true;
    playlist.placements[1].locked = true;
    return builder::midi_playlist_block(playlist, properties);
}

TEST(ReadMidiPlaylists, PositionsAreSamplesOrTheirDistanceFromTheTickOrigin) {
    const struct {
        bool tick_based;
        int properties;
        std::int64_t position;
        std::uint64_t read;
        std::uint64_t stored;
    } cases[] = {
        {true, 1, 7752720000, 7752720000, tick_origin + 7752720000},
        {true, 0, -960000, 960000, tick_origin - 960000},
        {false, 1, 48000, 48000, 48000},
        {false, 2, 48000, 48000, 48000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.position);
        const Bytes image = midi_playlist(c.tick_based, c.properties, c.position);
        const BlockIndex index{ByteView(image)};
        const auto midi = readMidiPlaylists(index);
        ASSERT_EQ(midi.details.size(), 1U);
        const auto& detail = midi.details[0];
        EXPECT_EQ(detail.name, "Keys");
        EXPECT_EQ(detail.is_second_kind, c.tick_based);
        EXPECT_EQ(detail.positions.at(0), c.read);
        EXPECT_EQ(detail.region_ids, (std::vector<std::uint32_t>{6, 0}));
        EXPECT_EQ(detail.colours, (std::vector<std::int32_t>{30, -2}));
        EXPECT_EQ(detail.muted, (std::vector<std::uint32_t>{1, 0}));
        EXPECT_EQ(detail.locked, (std::vector<std::uint32_t>{0, 1}));
        EXPECT_EQ(detail.in_group, (std::vector<std::uint32_t>{0, 1}));
        EXPECT_EQ(detail.is_fade, (std::vector<std::uint32_t>{0, 0}));
        EXPECT_EQ(midi.playlists.clip_counts, (std::vector<std::uint32_t>{2}));
        const auto rows = readMidiPlaylistRows(index);
        ASSERT_EQ(rows.size(), 2U);
        EXPECT_EQ(rows[0].playlist, "Keys");
        EXPECT_EQ(rows[0].region, 6U);
        EXPECT_EQ(rows[0].position, c.stored);
        EXPECT_EQ(readMidiClipCounts(index), (std::map<std::string, int>{{"Keys", 1}}));
    }
}

TEST(PlacementRecords, TheMarkOfAClipGroupLiesInsideItsRecord) {
    for (const std::size_t payload : {18U, 19U}) {
        const Bytes image = ByteWriter().block(0x104f, Bytes(payload, 1)).raw("Z").bytes();
        EXPECT_EQ(holds_clip_group(ByteView(image), 0), payload == 19);
    }
}

TEST(ReadMidiPlaylistRows, TakesPlaylistsOfAnyKindWithinItsLimits) {
    const struct {
        const char* what;
        PlaylistSpec playlist;
        std::size_t rows;
    } cases[] = {
        {"kind 7", {.name = "k", .placements = {{}}, .kind = 7}, 1},
        {"longest name", {.name = std::string(200, 'n'), .placements = {{}}}, 1},
        {"name too long", {.name = std::string(201, 'n'), .placements = {{}}}, 0},
        {"no name", {.name = "", .placements = {{}}}, 0},
        {"largest", {.name = "n", .placements = std::vector<PlacementSpec>(7272)}, 7272},
        {"too large", {.name = "n", .placements = std::vector<PlacementSpec>(7273)}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Bytes image = builder::midi_playlist_block(c.playlist, false);
        EXPECT_EQ(readMidiPlaylistRows(BlockIndex{ByteView(image)}).size(), c.rows);
    }
}

}  // namespace
}  // namespace tanrove
