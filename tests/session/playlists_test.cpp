// Audio playlists and their edit lists; the fades and sync points that their rows lead to.
#include "session/playlists.hpp"

#include <gtest/gtest.h>

#include "session/fades.hpp"
#include "session/region_starts.hpp"
#include "support/real_sessions.hpp"
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
    PlaylistSpec playlist;
    playlist.name = name;
    playlist.placements.resize(placements);
    return playlist;
}

Playlists read_one(const PlaylistSpec& playlist) {
    const Bytes image = builder::playlist_block(playlist);
    return readPlaylists(BlockIndex{ByteView(image)});
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
    struct Case {
        const char* what;
        PlaylistSpec playlist;
        bool accepted;
    };
    std::vector<Case> cases = {
        {"no name", playlist_of(1, ""), true},
        {"longest name", playlist_of(1, std::string(64, 'n')), true},
        {"name too long", playlist_of(1, std::string(65, 'n')), false},
        {"most placements", playlist_of(20000), true},
        {"too many placements", playlist_of(20001), false},
        {"more counted than there are", playlist_of(2), false},
        {"fewer counted than there are", playlist_of(2), false},
        {"kind 0", playlist_of(1), false},
        {"kind 3", playlist_of(1), false},
    };
    cases[5].playlist.counted = 3;
    cases[6].playlist.counted = 1;
    cases[7].playlist.kind = 0;
    cases[8].playlist.kind = 3;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(read_one(c.playlist).records.size(), c.accepted ? 1U : 0U);
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
    FadeSpec crossfade{.kind = 1, .pre = 480, .length = 960, .slope = 1, .linked = true};
    crossfade.in_type = 2;
    crossfade.in_setting = -3;
    crossfade.out_type = 1;
    crossfade.out_setting = 700;
    FadeSpec out{.kind = 2, .pre = 290000, .length = 290000, .slope = 3};
    out.out_type = 2;
    out.out_setting = -2;
    FadeSpec in{.kind = 3, .length = 490000};
    in.in_type = 1;
    in.in_setting = -8000;
    const Bytes image = builder::fade_list_block({crossfade, out, in});
    const auto fades = readFades(BlockIndex{ByteView(image)});
    ASSERT_EQ(fades.size(), 3U);
    EXPECT_EQ(fades[0].kind, FadeKind::crossfade);
    EXPECT_EQ(fades[0].pre, 480);
    EXPECT_EQ(fades[0].length, 960);
    EXPECT_TRUE(fades[0].linked);
    EXPECT_EQ(fades[0].in_type, 2);
    EXPECT_EQ(fades[0].in_setting, -3);
    EXPECT_EQ(fades[0].out_type, 1);
    EXPECT_EQ(fades[0].out_setting, 700);
    EXPECT_EQ(fades[1].kind, FadeKind::fade_out);
    EXPECT_EQ(fades[1].slope, 3U);
    EXPECT_EQ(fades[1].out_setting, -2);
    EXPECT_EQ(fades[2].kind, FadeKind::fade_in);
    EXPECT_EQ(fades[2].pre, 0);
    EXPECT_EQ(fades[2].in_type, 1);
    EXPECT_EQ(fades[2].in_setting, -8000);
    for (const auto& fade : fades) EXPECT_TRUE(fade.has_shapes && fade.has_handles);
}

TEST(ReadFades, BrokenRecordsKeepTheirNumberAndWideOnesAreNoFades) {
    const auto fade = [](std::uint8_t kind, std::uint32_t pre, std::uint32_t length) {
        FadeSpec spec;
        spec.kind = kind;
        spec.pre = pre;
        spec.length = length;
        return builder::fade_block(spec);
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

TEST(ReadFades, ReadsTheSixFadesOfRegionTestAndTheirRows) {
    TANROVE_REAL_SESSION(image, "RegionTest.ptx");
    const BlockIndex index{ByteView(image)};
    const auto fades = readFades(index);
    std::vector<std::pair<FadeKind, double>> seen;
    for (const auto& fade : fades) seen.emplace_back(fade.kind, fade.length);
    EXPECT_EQ(seen, (std::vector<std::pair<FadeKind, double>>{{FadeKind::fade_out, 290000},
                                                              {FadeKind::fade_out, 290000},
                                                              {FadeKind::fade_out, 450000},
                                                              {FadeKind::fade_in, 490000},
                                                              {FadeKind::fade_in, 230000},
                                                              {FadeKind::fade_in, 230000}}));
    Flags fade_rows;
    std::vector<std::string> names;
    for (const auto& d : readPlaylistDetails(index)) {
        names.push_back(d.name + (d.is_second_kind ? " ticks" : ""));
        for (std::size_t i = 0; i < d.region_ids.size(); ++i) {
            if (d.is_fade[i] != 0) fade_rows.push_back(d.region_ids[i]);
            if (d.is_fade[i] == 0) {
                EXPECT_EQ(d.overlap[i], 3U);
            }
        }
    }
    EXPECT_EQ(fade_rows, (Flags{3, 2, 4, 0, 5, 1}));
    EXPECT_EQ(names, (std::vector<std::string>{"Track_Name", "Audio 1", "Audio 2", "Audio 2",
                                               "Audio 3", "Audio 3"}));
    EXPECT_EQ(readPlaylists(index).clip_counts, (Flags{2, 2, 1, 1, 3, 3}));
    EXPECT_EQ(readRegionStarts(index).size(), 3U);
}

TEST(ReadPlaylists, TellsTheTickBasedTrackOfTempoTimeKeySig) {
    TANROVE_REAL_SESSION(image, "TempoTimeKeySig.ptx");
    const auto playlists = readPlaylists(BlockIndex{ByteView(image)});
    ASSERT_EQ(playlists.records.size(), 2U);
    EXPECT_FALSE(playlists.records[0].is_second_kind);
    EXPECT_TRUE(playlists.records[1].is_second_kind);
    EXPECT_EQ(playlists.clip_counts, (Flags{7, 7}));
}

}  // namespace
}  // namespace tanrove
