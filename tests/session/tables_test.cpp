// Groups, folders, VCA masters, alternate playlists, video, freeze renders and colour settings.
#include <gtest/gtest.h>

#include <cmath>

#include "reading.hpp"
#include "session/alternate_playlists.hpp"
#include "session/colour_schemes.hpp"
#include "session/folder_table.hpp"
#include "session/freeze_renders.hpp"
#include "session/groups.hpp"
#include "session/video_clips.hpp"
#include "session/video_files.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;
using Names = std::vector<std::string>;
using Paths = std::map<std::string, std::string>;

TEST(Tables, WhatTheBuilderWritesIsRead) {
    SessionBuilder session;
    session.video_file("Film.MOV").video_file("notes.txt").video_file("Cut.mxf");
    session.video_clips(
        {"Film", {{.id = 1, .position = 90, .locked = true, .colour = 30}, {.muted = true}}});
    session.video_clips({"Second", {{.position = frames(1LL << 45), .muted_late = true}}});
    session.video_region({.name = "Film-01", .source_offset = 1547, .length = 16436, .movie = 2});
    session.video_region({.name = "Cut", .length = 7, .unit_mark = 0});
    session.freeze_render({.name = "Gtr-03", .source_offset = 5, .length = 70000, .start = 9});
    session.freeze_render({.name = "Gtr-a", .length = 1}).freeze_render({.name = "Gtr 2"});
    session.freeze_render({.name = "Gtr", .length = 1ULL << 40, .start = 1});
    session.freeze_render({.name = "Gtr", .length = 7, .start = 960000, .start_in_ticks = true});
    const Bytes image = session.picture({29.97, 3}).image();

    std::string text;
    const BlockIndex index{ByteView(image)};
    for (const auto& [track, renders] : readFreezeRenders(index, Names{"Gtr", "Gtr-03", ""})) {
        for (const auto& r : renders)
            text += fields(track, r.source_offset, r.length, r.start) + ", ";
    }
    EXPECT_EQ(text, "Gtr 5 70000 9, Gtr 0 0 0, Gtr 0 7 1000000960000, Gtr-03 5 70000 9, ")
        << "a length of six bytes, and a start of eight";
    const std::string folder = "Disk/Sessions/Built/Video Files/";
    EXPECT_EQ(over(image, readVideoFiles), (Names{"Film.MOV", "Cut.mxf"}));
    EXPECT_EQ(over(image, readVideoPaths),
              (Paths{{"Film.MOV", folder + "Film.MOV"}, {"Cut.mxf", folder + "Cut.mxf"}}));
    EXPECT_EQ(fields(over(image, readVideoRate), over(image, readVideoQuality)), "29.97 3");
    const auto video = over(image, readVideoClips);
    text = shown(video.track_names);
    for (const auto& c : video.clips) {
        text +=
            ", " + fields(c.track_index, c.region, c.position, c.unit, c.colour, c.locked, c.muted);
    }
    EXPECT_EQ(text, "Film,Second, 0 1 90 0 30 1 0, 0 0 0 0 -2 0 1, 1 0 35184372088832 2 -2 0 1");
    text.clear();
    for (const auto& r : over(image, read_video_regions)) {
        text += fields(r.name, r.source_offset, r.length, r.unit, r.movie) + ", ";
    }
    EXPECT_EQ(text, "Film-01 1547 16436 2 2, Cut 0 7 0 0, ");
    EXPECT_EQ(over(image, read_movie_list), (Names{"Film.MOV", "notes.txt", "Cut.mxf"}));
}

TEST(ReadVideoFiles, TheListsOfMoviesAreReadAtAnySizeAndOthersUpToTheirLimit) {
    const struct {
        std::uint16_t parent;
        std::uint32_t movies;
        bool is_read;
    } cases[] = {{0x1004, 39, true}, {0x1004, 40, false}, {0x1006, 4000, true}, {0x2096, 40, true}};
    for (const auto& c : cases) {
        std::vector<FileListEntry> entries(c.movies, {2, 0, std::string(83, 'm') + ".mov"});
        for (auto& entry : entries) entry.parent = c.movies;
        entries.push_back({0, 0xffffffff, "Disk"});
        const Bytes list = ByteWriter().u32(1).raw(file_entries_block(entries)).bytes();
        const Bytes image = block(c.parent, list);
        EXPECT_EQ(over(image, readVideoFiles).size(), c.is_read ? 1U : 0U) << c.movies;
        EXPECT_EQ(over(image, readVideoPaths).size(), c.is_read ? 1U : 0U) << c.movies;
    }
}

TEST(ReadGroups, ARecordOutsideItsLimitsIsAChanceMatch) {
    const auto of = [](std::size_t name_bytes, std::size_t members, char letter = 'x') {
        return over(group_block({.name = std::string(name_bytes, letter),
                                 .members = std::vector<std::uint16_t>(members, 1)}),
                    readGroups)
            .size();
    };
    EXPECT_EQ(of(128, 256), 1U);
    EXPECT_EQ(of(129, 1) + of(0, 1) + of(4, 257) + of(2, 1, '\x1f'), 0U);
    EXPECT_EQ(over(group_block({.name = "Ch\xc3\xb6re"}), readGroups).size(), 1U);
    Bytes broken = group_block({.name = "a", .members = {1}});
    broken[14 + 11 + 2] = 0;  // the terminator
    EXPECT_TRUE(over(broken, readGroups).empty());
}

TEST(ReadFolderTable, ReadsWholeOrFailsWhole) {
    const auto reads = [](std::size_t count, std::size_t folders, std::size_t members,
                          std::size_t rest, std::size_t marker_at = 0) {
        std::vector<FolderSpec> specs(folders);
        if (folders > 0) specs.back().members.resize(members);
        Bytes table = folder_table_block(specs);
        if (marker_at > 0) table[marker_at] = '+';
        const Bytes body(table.begin() + 13, table.end());
        return over(block(0x210c, ByteWriter().u32(count).raw(body).zeros(rest).bytes()),
                    readFolderTable);
    };
    EXPECT_TRUE(reads(0, 0, 0, 0) && reads(2, 2, 3, 0) && reads(4096, 4096, 4096, 0));
    EXPECT_FALSE(reads(2, 2, 3, 1)) << "one byte too many";
    EXPECT_FALSE(reads(3, 2, 3, 0) || reads(1, 2, 3, 0) || reads(4097, 4097, 0, 0));
    EXPECT_FALSE(reads(1, 1, 4097, 0) || reads(1, 1, 1, 0, 18) || reads(1, 1, 1, 0, 39));
    EXPECT_FALSE(over(block(0x210c, Bytes(3)), readFolderTable)) << "no table is no clean read";
}

TEST(ReadAltPlaylists, EntriesFollowEachOtherWithAndWithoutACount) {
    for (const bool counted : {true, false}) {
        Bytes image = alternates_block({{"A", 1}, {"", 2}, {"C", 3}}, counted);
        std::string names;
        for (const auto& entry : over(image, readAltPlaylists)) names += entry.name + '.';
        EXPECT_EQ(names, "A..C.");
        image[(counted ? 13 : 9) + 18 + 3] = 0x7f;  // a name far longer than its entry
        EXPECT_TRUE(over(image, readAltPlaylists).empty());
    }
}

TEST(ReadColourSchemes, StandBehindTheirChildOrAtTheirFixedPlaces) {
    const Bytes full = block(0x2011, ByteWriter().zeros(18).u8(3).zeros(1).u8(7).bytes());
    const std::pair<Bytes, const char*> cases[] = {
        {colour_settings_block({3, 7}), "3 7"},
        {colour_settings_block({3, 7}, false), "3 7"},
        {block(0x20a2, full), "3 7"},  // nothing stands behind the child
        {block(0x20a2, ByteWriter().raw(full).u8(9).bytes()), "3 7"},  // one byte does
        {block(0x20a2, ByteWriter().zeros(27).u8(2).bytes()), "2 -"},
        {block(0x20a2, Bytes(27)), "- -"}};
    for (const auto& [image, text] : cases) {
        const auto schemes = over(image, readColourSchemes);
        EXPECT_EQ(fields(schemes.track, schemes.clip), text);
    }
}

TEST(ReadVideoPaths, FoldersWithoutATreeAreSortedByTheirNumbers) {
    constexpr std::uint32_t root = 0xffffffff;
    const std::pair<std::vector<FileListEntry>, Paths> cases[] = {
        {{{0, root, "C:\\V"}, {1, 9, "B"}, {1, 2, "A"}, {2, 5, "a.mp4"}, {2, 5, "b.mp4"}},
         {{"a.mp4", "C:/V/A/B/a.mp4"}}},
        {{{1, 2, "b"}, {0, root, "V"}, {1, 0, "a"}, {2, 0, "a.mp4"}}, {{"a.mp4", "V/a/b/a.mp4"}}},
        {{{0, root, "V"}, {0, root, "W"}, {1, 1, "x"}, {2, 2, "a.mp4"}, {2, 0, "a.avi"}},
         {{"a.avi", "V/a.avi"}, {"a.mp4", "W/x/a.mp4"}}},
        {{{0, 3, "V"}, {2, 0, "a.mp4"}}, {}}};
    for (const auto& [entries, paths] : cases) {
        EXPECT_EQ(over(file_entries_block(entries), readVideoPaths), paths);
    }
}

TEST(ReadVideoRate, IsTakenNearAUsualRate) {
    for (const double stored : {23.976, 25.12, 119.9, 0.0, 25.2, 1e3, std::nan("")}) {
        const Bytes image = block(0x2519, ByteWriter().u16(1).f64(stored).bytes());
        const bool is_near = stored > 23 && stored < 120 && stored != 25.2;
        EXPECT_EQ(over(image, readVideoRate).value_or(-1), is_near ? stored : -1);
    }
}

TEST(ReadVideoQuality, IsTakenFromTheFirstBlockThatIsLongEnough) {
    const auto of_size = [](std::size_t payload, std::uint8_t quality) {
        return block(0x270a, ByteWriter().u32(0).u8(quality).pad_to(payload).bytes());
    };
    const Bytes image =
        ByteWriter().raw(of_size(5, 2)).raw(of_size(6, 4)).raw(of_size(9, 5)).bytes();
    EXPECT_EQ(over(image, readVideoQuality), 4);
    EXPECT_FALSE(over(of_size(5, 2), readVideoQuality));
}

}  // namespace
}  // namespace tanrove
