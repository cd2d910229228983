// Audio playlists and their edit lists; the fades and sync points that their rows lead to.
#include "session/playlists.hpp"

#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/fades.hpp"
#include "session/region_starts.hpp"
#include "support/records/clip_records.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::FadeSpec;
using builder::PlacementSpec;
using builder::PlaylistSpec;
using builder::RegionSpec;
using Flags = std::vector<std::uint32_t>;

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
    rows[1].is_fade = true;
    rows[2].in_group = true;
    rows[3].locked = true;
    rows[4].muted = true;
    rows[5].muted_late = true;
    rows[5].overlap = 1;
    rows[6].out_of_place = true;
    const Bytes image = builder::playlists_block({playlist, playlist_of(0, "")});
    const BlockIndex index{ByteView(image)};
    const auto details = readPlaylistDetails(index);
    ASSERT_EQ(details.size(), 2U);
    const auto& d = details[0];
    EXPECT_EQ(d.name, "Vox");
    EXPECT_TRUE(d.is_second_kind);
    EXPECT_EQ(d.region_ids, (Flags{0x01020304, 0, 0, 0, 0, 0})) << "one row has no record";
    EXPECT_EQ(d.positions.at(0), 1000000000000U + 7752720000U);
    EXPECT_EQ(d.colours, (std::vector<std::int32_t>{20, -2, -2, -2, -2, -2}));
    EXPECT_EQ(d.is_fade, (Flags{0, 1, 0, 0, 0, 0}));
    EXPECT_EQ(d.live, (Flags{1, 0, 1, 1, 1, 1}));
    EXPECT_EQ(d.in_group, (Flags{0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(d.locked, (Flags{0, 0, 0, 1, 0, 0}));
    EXPECT_EQ(d.muted, (Flags{0, 0, 0, 0, 1, 1}));
    EXPECT_EQ(d.overlap, (Flags{3, 3, 3, 3, 3, 1}));
    EXPECT_EQ(readPlaylists(index).clip_counts, (Flags{7, 0}));
}

TEST(ReadPlaylists, LimitsAreInclusive) {
    const auto with = [](std::optional<std::uint8_t> kind, std::optional<std::uint32_t> counted) {
        PlaylistSpec playlist = playlist_of(2);
        playlist.kind = kind;
        playlist.counted = counted;
        return playlist;
    };
    const struct {
        const char* what;
        PlaylistSpec playlist;
        bool accepted;
    } cases[] = {
        {"no name", playlist_of(1, ""), true},
        {"longest name", playlist_of(1, std::string(64, 'n')), true},
        {"name too long", playlist_of(1, std::string(65, 'n')), false},
        {"most placements", playlist_of(20000), true},
        {"too many placements", playlist_of(20001), false},
        {"more counted than there are", with({}, 3), false},
        {"fewer counted than there are", with({}, 1), false},
        {"kind 0", with(0, {}), false},
        {"kind 3", with(3, {}), false},
    };
    for (const auto& c : cases) {
        const auto playlists = over(builder::playlist_block(c.playlist), readPlaylists);
        EXPECT_EQ(playlists.records.size(), c.accepted ? 1U : 0U) << c.what;
    }
}

TEST(ReadPlaylists, ListsOfTheClipGroupTableLieOnNoTrack) {
    const Bytes groups = builder::block(0x2428, builder::playlists_block({playlist_of(1, "g")}));
    const Bytes image = ByteWriter()
                            .raw(builder::playlist_block(playlist_of(1, "before")))
                            .raw(groups)
                            .raw(builder::playlist_block(playlist_of(2, "behind")))
                            .bytes();
    const auto playlists = readPlaylists(BlockIndex{ByteView(image)});
    ASSERT_EQ(playlists.records.size(), 2U);
    EXPECT_EQ(playlists.records[0].name, "before");
    EXPECT_EQ(playlists.records[1].name, "behind");
}

TEST(ReadFades, EachKindHasItsShapesInItsOwnPlace) {
    const FadeSpec crossfade = {1, 480, 960, 1, true, 2, -3, 1, 700};
    const FadeSpec out = {2, 290000, 290000, 3, false, 0, 0, 2, -2};
    const FadeSpec in = {3, 0, 490000, 2, false, 1, -8000, 0, 0};
    const std::pair<FadeSpec, FadeKind> cases[] = {
        {crossfade, FadeKind::crossfade}, {out, FadeKind::fade_out}, {in, FadeKind::fade_in}};
    for (const auto& [stored, kind] : cases) {
        const auto fades = over(builder::fade_list_block({stored}), readFades);
        ASSERT_EQ(fades.size(), 1U);
        EXPECT_EQ(fades[0].kind, kind);
        EXPECT_EQ(fades[0].pre, stored.pre);
        EXPECT_EQ(fades[0].length, stored.length);
        EXPECT_EQ(fades[0].linked, stored.linked);
        EXPECT_EQ(fades[0].slope, stored.slope);
        EXPECT_TRUE(fades[0].has_shapes && fades[0].has_handles);
        if (kind != FadeKind::fade_out) {
            EXPECT_EQ(fades[0].in_type, stored.in_type);
            EXPECT_EQ(fades[0].in_setting, stored.in_setting);
        }
        if (kind != FadeKind::fade_in) {
            EXPECT_EQ(fades[0].out_type, stored.out_type);
            EXPECT_EQ(fades[0].out_setting, stored.out_setting);
        }
    }
}

TEST(ReadFades, BrokenRecordsKeepTheirNumberAndWideOnesAreNoFades) {
    const auto fade = [](std::uint8_t kind, std::uint32_t pre, std::uint32_t length) {
        return builder::fade_block({.kind = kind, .pre = pre, .length = length});
    };
    const auto record = [](std::uint8_t widths, std::size_t behind_kind) {
        ByteWriter payload;
        payload.zeros(5).u8(widths).zeros(2).u8(9).u8(9).u8(2).zeros(behind_kind);
        return builder::block(0x262f, payload.bytes(), 2);
    };
    struct {
        const char* what;
        Bytes image;
        std::vector<FadeKind> kinds;
        bool has_shapes;
    } const cases[] = {
        {"kind 0", fade(0, 5, 10), {FadeKind::unusable}, false},
        {"kind 4", fade(4, 5, 10), {FadeKind::unusable}, false},
        {"centre at the end", fade(2, 10, 10), {FadeKind::fade_out}, true},
        {"centre behind the end", fade(2, 11, 10), {FadeKind::unusable}, true},
        {"the kind alone", record(0x11, 0), {FadeKind::fade_out}, false},
        {"a byte short of a shape", record(0x11, 13), {FadeKind::fade_out}, false},
        {"room for a shape", record(0x11, 14), {FadeKind::fade_out}, true},
        {"first number too wide", record(0x15, 30), {}, false},
        {"second number too wide", record(0x51, 30), {}, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto fades = readFades(BlockIndex{ByteView(c.image)});
        ASSERT_EQ(fades.size(), c.kinds.size());
        if (fades.empty()) continue;
        EXPECT_EQ(fades[0].kind, c.kinds[0]);
        EXPECT_EQ(fades[0].has_shapes, c.has_shapes);
    }
}

TEST(ReadRegionStarts, RunsInStepWithTheRegions) {
    std::vector<RegionSpec> regions(5);
    const std::uint64_t syncs[] = {0, 1, 0xffffffffff, 0x10000000000, 77};
    for (std::size_t i = 0; i < 5; ++i) {
        regions[i].name = std::string(1, static_cast<char>('a' + i));
        regions[i].sync_samples = syncs[i];
        regions[i].source_offset = 1000;
        regions[i].length = 5000;
    }
    regions[4].name = std::string(256, 'x');
    for (const Bytes& list :
         {builder::region_list_block(regions), builder::older_region_list_block(regions)}) {
        const Bytes image = ByteWriter().zeros(20).raw(list).bytes();
        const auto starts = readRegionStarts(BlockIndex{ByteView(image)});
        ASSERT_EQ(starts.size(), 5U);
        EXPECT_EQ(starts[0].sync_samples, 0U);
        EXPECT_EQ(starts[1].sync_samples, 1U);
        EXPECT_EQ(starts[1].name, "b");
        EXPECT_EQ(starts[2].sync_samples, 0xffffffffffU);
        EXPECT_EQ(starts[3].sync_samples, 0U) << "six bytes are too wide";
        EXPECT_EQ(starts[4].sync_samples, 0U) << "the name is too long";
        EXPECT_EQ(starts[4].name, std::string(255, 'x')) << "as the region list cuts it";
    }
}

}  // namespace
}  // namespace tanrove
