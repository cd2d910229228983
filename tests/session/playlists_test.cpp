// Audio playlists and their edit lists; the fades and sync points that their rows lead to.
#include "session/playlists.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/fades.hpp"
#include "session/region_starts.hpp"
#include "session/session_lists.hpp"
#include "support/records/clip_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

Playlists playlists_in(const Bytes& image) {
    const ByteView view(image);
    return readPlaylists(walk_playlists(BlockIndex(view)), parse_list_tree(view).blocks());
}

PlaylistSpec playlist_of(std::size_t placements, const std::string& name = "p") {
    return {.name = name, .placements = std::vector<PlacementSpec>(placements)};
}

TEST(ReadPlaylistDetails, EveryFieldOfARowHasItsPlace) {
    PlaylistSpec playlist = playlist_of(7, "Vox");
    playlist.tick_based = true;
    auto& rows = playlist.placements;
    rows[0].id = 0x01020304;
    rows[0].position = 7752720000;
    rows[0].colour = 20;
    rows[1].is_fade = rows[2].in_group = rows[3].locked = true;
    rows[4].muted = rows[5].muted_late = rows[6].out_of_place = true;
    rows[5].overlap = 1;
    const Bytes image = playlists_block({playlist, playlist_of(0, "")});
    const auto details = readPlaylistDetails(ByteView(image), over(image, walk_playlists));
    ASSERT_EQ(details.size(), 2U);
    const auto& d = details[0];
    ASSERT_EQ(d.rows.size(), 6U) << "one has no record";
    EXPECT_EQ(fields(d.name, d.in_ticks, d.rows[0].position), "Vox 1 1007752720000");
    std::string read;
    for (const PlacementRow& row : d.rows) {
        read += fields(row.region_id, row.colour, row.overlap);
        if (row.is_fade) read += row.live() ? " a live fade" : " a fade";
        if (row.in_group) read += " in a group";
        if (row.locked) read += " locked";
        if (row.muted) read += " muted";
        read += "\n";
    }
    EXPECT_EQ(read,
              "16909060 20 3\n0 -2 3 a fade\n0 -2 3 in a group\n0 -2 3 locked\n0 -2 3 muted\n"
              "0 -2 1 muted\n");
    EXPECT_EQ(shown(playlists_in(image).clip_counts), "7,0");
}

TEST(ReadPlaylists, LimitsAreInclusive) {
    const auto with = [](std::optional<std::uint8_t> kind, std::optional<std::uint32_t> counted) {
        PlaylistSpec playlist = playlist_of(2);
        playlist.kind = kind;
        playlist.counted = counted;
        return playlist;
    };
    const auto is_read = [](const PlaylistSpec& playlist) {
        return !playlists_in(playlist_block(playlist)).records.empty();
    };
    EXPECT_TRUE(is_read(playlist_of(1, "")) && is_read(playlist_of(1, std::string(255, 'n'))));
    EXPECT_FALSE(is_read(playlist_of(1, std::string(256, 'n'))));
    EXPECT_TRUE(is_read(playlist_of(20000)) && !is_read(playlist_of(20001)));
    EXPECT_FALSE(is_read(with({}, 3)) || is_read(with({}, 1))) << "another count than there are";
    EXPECT_FALSE(is_read(with(0, {})) || is_read(with(3, {}))) << "another kind";
}

TEST(ReadPlaylists, AreNumberedAmongAllOfTheirListWhetherReadOrNot) {
    PlaylistSpec unreadable = playlist_of(1, "b"), in_no_list = playlist_of(1, "c");
    unreadable.kind = 3;
    in_no_list.tick_based = true;
    const Bytes image = ByteWriter()
                            .zeros(20)
                            .raw(playlists_block({playlist_of(1, "a"), unreadable, playlist_of(0)}))
                            .raw(playlist_block(in_no_list))
                            .bytes();
    std::string numbers;
    for (const auto& playlist : playlists_in(image).records) {
        numbers += playlist.number ? std::to_string(*playlist.number) : "-";
        if (playlist.in_ticks) numbers += " in ticks";
    }
    EXPECT_EQ(numbers, "02- in ticks");
}

TEST(ReadPlaylists, ListsOfTheClipGroupTableLieOnNoTrack) {
    const Bytes groups = block(0x2428, playlists_block({playlist_of(1, "g")}));
    const Bytes before = playlist_block(playlist_of(1, "before"));
    const Bytes behind = playlist_block(playlist_of(2, "behind"));
    std::string names;
    for (const auto& playlist :
         playlists_in(ByteWriter().raw(before).raw(groups).raw(behind).bytes()).records) {
        names += playlist.name + ' ';
    }
    EXPECT_EQ(names, "before behind ");
}

TEST(ReadFades, EachKindHasItsShapesInItsOwnPlace) {
    const std::pair<FadeSpec, FadeKind> cases[] = {
        {{1, 480, 960, 1, true, 2, -3, 1, 700}, FadeKind::crossfade},
        {{2, 290000, 290000, 3, false, 0, 0, 2, -2}, FadeKind::fade_out},
        {{3, 0, 490000, 2, false, 1, -8000, 0, 0}, FadeKind::fade_in}};
    for (const auto& [stored, kind] : cases) {
        const auto fade = over(fade_list_block({stored}), readFades).at(0);
        EXPECT_EQ(
            fields(fade.kind, fade.pre, fade.length, fade.linked, fade.slope, fade.has_shapes),
            fields(kind, stored.pre, stored.length, stored.linked, stored.slope, true));
        if (kind != FadeKind::fade_out) {
            EXPECT_EQ(fields(fade.in_type, fade.in_setting),
                      fields(stored.in_type, stored.in_setting));
        }
        if (kind != FadeKind::fade_in) {
            EXPECT_EQ(fields(fade.out_type, fade.out_setting),
                      fields(stored.out_type, stored.out_setting));
        }
    }
}

TEST(ReadFades, BrokenRecordsKeepTheirNumberAndWideOnesAreNoFades) {
    const auto fade = [](std::uint8_t kind, std::uint32_t pre, std::uint32_t length) {
        return fade_block({.kind = kind, .pre = pre, .length = length});
    };
    const auto record = [](std::uint8_t widths, std::size_t behind_kind) {
        ByteWriter payload;
        payload.zeros(5).u8(widths).zeros(2).u8(9).u8(9).u8(2).zeros(behind_kind);
        return block(0x262f, payload.bytes(), 2);
    };
    const std::string unusable = shown(FadeKind::unusable);
    const std::string out = shown(FadeKind::fade_out);
    const Reads cases[] = {
        {"kind 0", fade(0, 5, 10), unusable + " 0"},
        {"kind 4", fade(4, 5, 10), unusable + " 0"},
        {"centre at the end", fade(2, 10, 10), out + " 1"},
        {"centre behind the end", fade(2, 11, 10), unusable + " 1"},
        {"the kind alone", record(0x11, 0), out + " 0"},
        {"a byte short of a shape", record(0x11, 13), out + " 0"},
        {"room for a shape", record(0x11, 14), out + " 1"},
        {"first number too wide", record(0x15, 30), ""},
        {"second number too wide", record(0x51, 30), ""},
    };
    for (const auto& c : cases) {
        std::string text;
        for (const auto& f : over(c.image, readFades)) text += fields(f.kind, f.has_shapes);
        EXPECT_EQ(text, c.text) << c.what;
    }
}

TEST(ReadRegionStarts, RunsInStepWithTheRegions) {
    std::vector<RegionSpec> regions(5);
    const std::uint64_t syncs[] = {0, 1, 0xffffffffff, 0x10000000000, 77};
    for (std::size_t i = 0; i < 5; ++i) {
        regions[i].name = std::string(i == 4 ? 256 : 1, static_cast<char>('a' + i));
        regions[i].sync_samples = syncs[i];
        regions[i].source_offset = 1000;
        regions[i].length = 5000;
    }
    for (const Bytes& list : {region_list_block(regions), older_region_list_block(regions)}) {
        const Bytes image = ByteWriter().zeros(20).raw(list).bytes();
        const ByteView view(image);
        std::string text;
        for (const auto& s : readRegionStarts(view, parse_list_tree(view).blocks())) {
            text += fields(s.name, s.sync_samples) + ", ";
        }
        EXPECT_EQ(text, "a 0, b 1, c 1099511627775, d 0, " + std::string(255, 'e') + " 0, ")
            << "six bytes are too wide, and a name is too long";
    }
}

}  // namespace
}  // namespace tanrove
