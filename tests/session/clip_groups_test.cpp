// Clip groups and MIDI playlists: the other two users of the placement records.
#include "session/clip_groups.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/group_lists.hpp"
#include "session/midi_playlists.hpp"
#include "session/playlist_walk.hpp"
#include "support/records/clip_table_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

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

using ListNumbers = std::vector<std::pair<std::uint32_t, std::string>>;

ClipGroups read_groups(const std::vector<GroupClipSpec>& clips,
                       const std::vector<PlaylistSpec>& lists,
                       const std::vector<std::int64_t>& region_lengths,
                       const ListNumbers& numbers = {}) {
    const Bytes image = ByteWriter()
                            .raw(group_definitions_block(clips))
                            .raw(group_lists_block(lists))
                            .raw(numbers.empty() ? Bytes() : list_numbers_block(numbers))
                            .bytes();
    ClipGroups groups = readClipGroups(BlockIndex{ByteView(image)});
    number_group_lists(groups, region_lengths);
    return groups;
}

std::string list_numbers(const ClipGroups& groups) {
    std::vector<std::int32_t> numbers;
    for (const auto& clip : groups.clips) numbers.push_back(clip.table_index);
    return shown(numbers);
}

TEST(ReadClipGroups, GivesDefinitionsAndMembersBack) {
    PlaylistSpec members = list({{0, 0}, {7, 500}, {2, 480}});
    members.kind = 1;
    members.placements[1].in_group = members.placements[1].muted = true;
    members.placements[2].is_fade = true;
    const ClipGroups groups = read_groups(
        {{.name = "Chorus", .length = 9000},
         {.name = "cut", .is_piece = true, .start = 0, .length = 50, .compound = 2, .kind = 3},
         {.name = "broken", .broken = true}},
        {members}, {100});
    std::string text;
    for (const auto& c : groups.clips) {
        text += c.valid
                    ? fields(c.name, c.length, c.has_start, c.flag, c.is_compound, c.kind) + ", "
                    : "none";
    }
    EXPECT_EQ(text, "Chorus 9000 0 0 0 1, cut 50 1 1 2 3, none");
    EXPECT_EQ(list_numbers(groups), "0,-1,-1");
    ASSERT_EQ(groups.lists.size(), 1U);
    EXPECT_EQ(groups.lists[0].kind, 1);
    text.clear();
    for (const auto& m : groups.lists[0].members) {
        text += fields(m.id, m.position - tick_origin, m.nested, m.muted, m.live, m.is_fade) + ", ";
    }
    EXPECT_EQ(text, "0 0 0 0 1 0, 7 500 1 1 1 0, 2 480 0 0 0 1, ");
}

TEST(ReadClipGroups, ListsGoByLengthWhereItTellsAndByOrderElse) {
    const std::vector<std::int64_t> regions = {100, 200, 300};
    const PlaylistSpec ends_at_150 = list({{0, 50}});
    const PlaylistSpec ends_at_700 = list({{2, 0}, {1, 500}});
    PlaylistSpec plain_150 = ends_at_150;  // positions in samples, without an origin
    plain_150.tick_based = false;
    const GroupClipSpec of_150 = {.name = "a", .length = 150};
    const GroupClipSpec of_700 = {.name = "b", .length = 700};
    const PlaylistSpec ends_at_200 = list({{1, 0}});
    const GroupClipSpec later_150 = {.name = "d", .start = 50, .length = 150};
    const GroupClipSpec of_none = {.name = "c", .length = 9};
    const struct {
        const char* what;
        std::vector<GroupClipSpec> clips;
        std::vector<PlaylistSpec> lists;
        const char* numbers;
    } cases[] = {
        {"lengths cross", {of_150, of_700}, {ends_at_700, ends_at_150}, "1,0"},
        {"plain positions", {of_700, of_150}, {plain_150, ends_at_700}, "1,0"},
        {"no length fits", {of_none, of_none}, {ends_at_700, ends_at_150}, "0,1"},
        {"two lists of one length", {of_700, of_150}, {ends_at_150, ends_at_150}, "0,1"},
        {"a trimmed group", {of_150, of_150}, {ends_at_700, ends_at_150}, "0,1"},
        {"a window behind its head", {later_150, of_none}, {ends_at_200, {}}, "0,1"},
        {"a list serves one", {of_150, of_150, of_700}, {ends_at_700, ends_at_150, {}}, "1,1,0"},
        {"one list too few", {of_150, of_700}, {ends_at_150}, "-1,-1"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(list_numbers(read_groups(c.clips, c.lists, regions)), c.numbers) << c.what;
    }
}

TEST(ReadClipGroups, APieceTakesTheListOfTheOneGroupItLiesIn) {
    const GroupClipSpec whole = {.name = "g", .length = 700};
    const GroupClipSpec namesake = {.name = "g", .length = 300};
    const auto piece = [](const std::string& name, std::int64_t start, std::uint64_t length) {
        return GroupClipSpec{.name = name, .is_piece = true, .start = start, .length = length};
    };
    const auto groups = read_groups({piece("g", 100, 600), piece("g", 101, 600),
                                     piece("g", 100, 200), piece("other", 0, 1), whole, namesake},
                                    {list({}), list({})}, {});
    EXPECT_EQ(list_numbers(groups), "0,-1,-1,-1,0,1");
}

TEST(ReadClipGroups, TheTableOfListNumbersComesBeforeCounting) {
    const auto named = [](const char* name, std::uint32_t place, std::int64_t start = 0) {
        return GroupClipSpec{.name = name, .start = start, .length = 9, .number_place = place};
    };
    PlaylistSpec unreadable = list({});
    unreadable.kind = 7;
    const std::vector<PlaylistSpec> lists = {list({}), unreadable, list({})};
    const struct {
        const char* what;
        std::vector<GroupClipSpec> clips;
        ListNumbers numbers;
        const char* expected;
    } cases[] = {
        {"halves share a list, beside one that cannot be read",
         {named("a", 0), named("b", 1), named("a", 2, 5)},
         {{2, "a"}, {1, "b"}, {2, "a"}},
         "2,1,2"},
        {"names find their records", {named("a", 1), named("b", 0)}, {{2, "b"}, {0, "a"}}, "0,2"},
        {"names do, the counts do not", {named("a", 1)}, {{2, "b"}, {0, "a"}}, "0"},
        {"without names the order does",
         {named("a", 7), named("b", 0)},
         {{2, "x"}, {0, "y"}},
         "2,0"},
        {"a number of no list",
         {named("x", 7), named("y", 7), named("z", 7)},
         {{3, "a"}, {0, "b"}, {1, "c"}},
         "0,1,2"},
    };
    for (const auto& c : cases) {
        const ClipGroups groups = read_groups(c.clips, lists, {}, c.numbers);
        EXPECT_EQ(list_numbers(groups), c.expected) << c.what;
        EXPECT_EQ(groups.lists.at(1).kind, 0);
    }
}

TEST(ReadClipGroups, AWindowCanBeginInFrontOfTheGroup) {
    const auto groups = read_groups(
        {{.name = "g", .start = -700, .length = 9}, {.name = "h", .start = 700}}, {}, {});
    EXPECT_EQ(fields(groups.clips.at(0).start, groups.clips.at(1).start), "-700 700");
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
        PlaylistSpec playlist{.name = "Keys", .tick_based = c.tick_based, .placements = {{}, {}}};
        auto& first = playlist.placements[0];
        auto& second = playlist.placements[1];
        first.id = 6;
        first.position = c.position;
        first.colour = 30;
        first.muted = second.in_group = second.locked = true;
        const Bytes image = midi_playlist_block(playlist, c.properties);
        const auto midi = over(image, readMidiPlaylists);
        ASSERT_EQ(midi.details.size(), 1U);
        const auto& d = midi.details[0];
        ASSERT_EQ(d.rows.size(), 2U);
        EXPECT_EQ(fields(d.name, d.in_ticks, d.rows[0].position),
                  fields("Keys", c.tick_based, c.read));
        const auto shown_row = [](const PlacementRow& r) {
            return fields(r.region_id, r.colour, r.muted, r.locked, r.in_group, r.is_fade);
        };
        EXPECT_EQ(shown_row(d.rows[0]) + "; " + shown_row(d.rows[1]), "6 30 1 0 0 0; 0 -2 0 1 1 0");
        EXPECT_EQ(shown(midi.playlists.clip_counts), "2");
        const auto rows = over(image, readMidiPlaylistRows);
        ASSERT_EQ(rows.size(), 2U);
        EXPECT_EQ(fields(rows[0].playlist, rows[0].region, rows[0].position),
                  fields("Keys", 6, c.stored));
        EXPECT_EQ(over(image, readMidiClipCounts), (std::map<std::string, int>{{"Keys", 1}}));
    }
}

TEST(PlacementRecords, TheMarkOfAClipGroupLiesInsideItsRecord) {
    for (const std::size_t payload : {18U, 19U}) {
        const Bytes image = ByteWriter().block(0x104f, Bytes(payload, 1)).raw("Z").bytes();
        EXPECT_EQ(holds_clip_group(ByteView(image), 0), payload == 19);
    }
}

TEST(ReadMidiPlaylistRows, TakesPlaylistsOfAnyKindWithinItsLimits) {
    const auto count = [](const PlaylistSpec& playlist) {
        return over(midi_playlist_block(playlist, false), readMidiPlaylistRows).size();
    };
    const auto named = [](std::size_t name_bytes, std::size_t placements = 1) {
        return PlaylistSpec{.name = std::string(name_bytes, 'n'),
                            .placements = std::vector<PlacementSpec>(placements)};
    };
    EXPECT_EQ(count({.name = "k", .placements = {{}}, .kind = 7}), 1U);
    EXPECT_EQ(count(named(255)), 1U);
    EXPECT_EQ(count(named(256)) + count(named(0)), 0U);
    EXPECT_EQ(count(named(1, 7272)), 7272U);
    EXPECT_EQ(count(named(1, 7273)), 0U);
}

}  // namespace
}  // namespace tanrove
