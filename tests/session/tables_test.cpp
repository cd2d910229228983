// Groups, folders, VCA masters, alternate playlists, video, freeze renders and colour settings.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "session/alternate_playlists.hpp"
#include "session/colour_schemes.hpp"
#include "session/folder_table.hpp"
#include "session/freeze_renders.hpp"
#include "session/groups.hpp"
#include "session/vca_slots.hpp"
#include "session/video_clips.hpp"
#include "session/video_files.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::block;
using builder::Bytes;
using builder::ByteWriter;
using builder::GroupSpec;
using builder::track_identity;
using builder::TrackKind;
using Names = std::vector<std::string>;
using Paths = std::map<std::string, std::string>;

/// The result of a reader over some bytes.
template <typename Read>
auto over(const Bytes& image, Read read) {
    return read(BlockIndex(ByteView(image)));
}

VcaSlots vca_slots(const BlockIndex& index) {
    return readVcaSlots(index, readStripRows(index).rows);
}

Bytes whole_session() {
    builder::SessionBuilder session;
    session.track({.name = "Set", .kind = TrackKind::basic_folder}).track({.name = "Gtr"});
    session.track({.name = "Film", .kind = TrackKind::video}).vca("Band", -35).vca("Choir", 60);
    session.folder(0, {1, 2}).folder(2, {});
    session.group({.name = "Drums", .members = {0, 2}, .kind = 1, .slot = 3, .vca_master = 2});
    session.group({.name = "Gone", .active = false, .in_both_lists = false});
    session.video_file("Film.MOV").video_file("notes.txt").video_file("Cut.mxf");
    session.video_clips(
        {"Film", {{.id = 1, .position = 90, .locked = true, .colour = 30}, {.muted = true}}});
    session.video_clips({"Second", {{.position = 1LL << 45, .muted_late = true}}});
    session.freeze_render({.name = "Gtr-03", .source_offset = 5, .length = 70000, .start = 9});
    session.freeze_render({.name = "Gtr-a", .length = 1}).freeze_render({.name = "Gtr 2"});
    session.freeze_render({.name = "Gtr", .length = 1ULL << 40, .start = 1});
    session.freeze_render({.name = "Gtr", .length = 7, .start = 960000, .start_in_ticks = true});
    session.picture({29.97, 3});
    return session.colour_schemes(4, 5).alternate_playlist("Gtr.01", 7).image();
}

TEST(Tables, WhatTheBuilderWritesIsRead) {
    const Bytes image = whole_session();
    const auto groups = over(image, readGroups);
    ASSERT_EQ(groups.size(), 5U) << "three mix groups, and two of them as edit groups";
    EXPECT_EQ(groups[3].name, all_tracks_group);
    EXPECT_EQ(groups[0].members, (std::vector<std::int32_t>{0, 1, 2, 3}));
    EXPECT_EQ(groups[0].vca_master, -1);
    EXPECT_EQ(groups[1].name + groups[4].name, "DrumsDrums");
    EXPECT_EQ(groups[1].members, (std::vector<std::int32_t>{0, 2}));
    EXPECT_EQ(groups[1].kind, 1);
    EXPECT_EQ(groups[1].slot, 3U);
    EXPECT_EQ(groups[1].vca_master, 2);
    EXPECT_TRUE(groups[1].active && !groups[2].active && groups[1].has_attributes);
    EXPECT_EQ(groups[1].attributes[1] - groups[1].attributes[2], 1);

    const FolderTable folders = {{track_identity(0), {track_identity(1), track_identity(2)}},
                                 {track_identity(2), {}}};
    EXPECT_EQ(over(image, readFolderTable), folders);
    EXPECT_EQ(over(image, vca_slots), (VcaSlots{{2, static_cast<std::uint32_t>(-35)}, {3, 60}}));
    EXPECT_EQ(over(image, readAltPlaylists).at(0).value, 7U);
    EXPECT_EQ(over(image, readColourSchemes).clip, 5);

    const auto renders = readFreezeRenders(BlockIndex(ByteView(image)), Names{"Gtr", "Gtr-03", ""});
    ASSERT_EQ(renders.size(), 2U);
    EXPECT_EQ(renders.at("Gtr-03").at(0).source_offset, 5);
    ASSERT_EQ(renders.at("Gtr").size(), 3U);
    EXPECT_EQ(renders.at("Gtr")[0].length, 70000);
    EXPECT_EQ(renders.at("Gtr")[0].start, 9);
    EXPECT_EQ(renders.at("Gtr")[1].start, 0) << "its length takes six bytes";
    EXPECT_EQ(renders.at("Gtr")[2].length, 7);
    EXPECT_EQ(renders.at("Gtr")[2].start, 1000000960000.0) << "its start takes eight bytes";

    EXPECT_EQ(over(image, readVideoFiles), (Names{"Film.MOV", "Cut.mxf"}));
    const std::string folder = "Disk/Sessions/Built/Video Files/";
    EXPECT_EQ(over(image, readVideoPaths),
              (Paths{{"Film.MOV", folder + "Film.MOV"}, {"Cut.mxf", folder + "Cut.mxf"}}));
    EXPECT_EQ(over(image, readVideoRate), 29.97);
    EXPECT_EQ(over(image, readVideoQuality), 3);
    const auto video = over(image, readVideoClips);
    EXPECT_EQ(video.track_names, (Names{"Film", "Second"}));
    ASSERT_EQ(video.clips.size(), 3U);
    EXPECT_EQ(video.clips[0].region + video.clips[2].track_index, 2U);
    EXPECT_EQ(video.clips[0].position, 90);
    EXPECT_EQ(video.clips[0].colour, 30);
    EXPECT_TRUE(video.clips[0].locked && !video.clips[1].locked);
    EXPECT_EQ(video.clips[2].position, 35184372088832.0);
    EXPECT_TRUE(!video.clips[0].muted && video.clips[1].muted && video.clips[2].muted);
}

TEST(ReadGroups, ARecordOutsideItsLimitsIsAChanceMatch) {
    const auto of = [](std::size_t name_bytes, std::size_t members, char letter = 'x') {
        return over(builder::group_block({.name = std::string(name_bytes, letter),
                                          .members = std::vector<std::uint16_t>(members, 1)}),
                    readGroups)
            .size();
    };
    EXPECT_EQ(of(128, 256), 1U);
    EXPECT_EQ(of(129, 1) + of(0, 1) + of(4, 257) + of(2, 1, '\x1f'), 0U);
    EXPECT_EQ(over(builder::group_block({.name = "Ch\xc3\xb6re"}), readGroups).size(), 1U);
    Bytes broken = builder::group_block({.name = "a", .members = {1}});
    broken[14 + 11 + 2] = 0;  // the terminator
    EXPECT_TRUE(over(broken, readGroups).empty());
}

TEST(ReadFolderTable, ReadsWholeOrFailsWhole) {
    const auto reads = [](std::size_t count, std::size_t folders, std::size_t members,
                          std::size_t rest, std::size_t marker_at = 0) {
        std::vector<builder::FolderSpec> specs(folders);
        if (folders > 0) specs.back().members.resize(members);
        Bytes table = builder::folder_table_block(specs);
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
        Bytes image = builder::alternates_block({{"A", 1}, {"", 2}, {"C", 3}}, counted);
        const auto entries = over(image, readAltPlaylists);
        ASSERT_EQ(entries.size(), 3U);
        EXPECT_EQ(entries[0].name + entries[1].name + entries[2].name, "AC");
        image[(counted ? 13 : 9) + 18 + 3] = 0x7f;  // a name far longer than its entry
        EXPECT_TRUE(over(image, readAltPlaylists).empty());
    }
}

TEST(ReadColourSchemes, StandBehindTheirChildOrAtTheirFixedPlaces) {
    const Bytes full = block(0x2011, ByteWriter().zeros(18).u8(3).zeros(1).u8(7).bytes());
    const struct {
        Bytes image;
        std::optional<std::int32_t> track, clip;
    } cases[] = {{builder::colour_settings_block({3, 7}), 3, 7},
                 {builder::colour_settings_block({3, 7}, false), 3, 7},
                 {block(0x20a2, full), 3, 7},  // nothing stands behind the child
                 {block(0x20a2, ByteWriter().raw(full).u8(9).bytes()), 3, 7},  // one byte does
                 {block(0x20a2, ByteWriter().zeros(27).u8(2).bytes()), 2, std::nullopt},
                 {block(0x20a2, Bytes(27)), std::nullopt, std::nullopt}};
    for (const auto& c : cases) {
        EXPECT_EQ(over(c.image, readColourSchemes).track, c.track);
        EXPECT_EQ(over(c.image, readColourSchemes).clip, c.clip);
    }
}

TEST(ReadVideoPaths, FoldersWithoutATreeAreSortedByTheirNumbers) {
    constexpr std::uint32_t root = 0xffffffff;
    const struct {
        std::vector<builder::FileListEntry> entries;
        Paths paths;
    } cases[] = {
        {{{0, root, "C:\\V"}, {1, 9, "B"}, {1, 2, "A"}, {2, 5, "a.mp4"}, {2, 5, "b.mp4"}},
         {{"a.mp4", "C:/V/A/B/a.mp4"}}},
        {{{1, 2, "b"}, {0, root, "V"}, {1, 0, "a"}, {2, 0, "a.mp4"}}, {{"a.mp4", "V/a/b/a.mp4"}}},
        {{{0, root, "V"}, {0, root, "W"}, {1, 1, "x"}, {2, 2, "a.mp4"}, {2, 0, "a.avi"}},
         {{"a.avi", "V/a.avi"}, {"a.mp4", "W/x/a.mp4"}}},
        {{{0, 3, "V"}, {2, 0, "a.mp4"}}, {}}};
    for (const auto& c : cases) {
        EXPECT_EQ(over(builder::file_entries_block(c.entries), readVideoPaths), c.paths);
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

/// The readers that do more than walk the blocks of a type, against a scan of every byte.
void expect_what_a_byte_scan_finds(const Bytes& bytes, const Names& tracks) {
    const ByteView image{bytes};
    const BlockIndex index(image);
    const auto rows = readStripRows(index).rows;
    VcaSlots slots;
    std::map<std::string, std::size_t> renders, found_renders;
    std::set<std::string> files;
    for (std::size_t p = 0; p + 9 <= image.size(); ++p) {
        if (!isBlockAt(image, p, image.size())) continue;
        const std::size_t size = image.u32(p + 3), type = image.u16(p + 7), end = p + 7 + size;
        for (std::size_t i = 0; type == 0x2514 && size > 12 && i < rows.size(); ++i) {
            const bool inside = rows[i].start < p && p < rows[i].end;
            if (inside && rows[i].type == StripRowType::vca) slots[i] = image.u32(p + 9);
        }
        const bool is_file_list = type == 0x103a && size >= 8 && size <= 4000;
        for (std::size_t q = p + 9; is_file_list && q < end; ++q) {
            const auto name = readCountedText(image, q, 200, end);
            if (!name || name->size() < 5 || !is_session_text(*name)) continue;
            if (name->ends_with(".MOV") || name->ends_with(".mxf")) files.emplace(*name);
        }
        const auto name = readCountedText(image, p + 9, 200, end);
        if (type != 0x2628 || size < 12 || size > 4000 || !name) continue;
        for (const auto& track : tracks) {
            const auto rest = name->substr(std::min(track.size(), name->size()));
            const bool digits = rest.find_first_not_of("0123456789", 1) == std::string_view::npos;
            const bool numbered = rest.size() > 1 && rest[0] == '-' && digits;
            if (name->starts_with(track) && (rest.empty() || numbered)) ++renders[track];
        }
    }
    const auto names = readVideoFiles(index);
    for (const auto& [track, list] : readFreezeRenders(index, tracks)) {
        found_renders[track] = list.size();
    }
    EXPECT_EQ(readVcaSlots(index, rows), slots);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()), files);
    EXPECT_EQ(found_renders, renders);
}

TEST(Tables, DamagedSessionsReadAsAByteScanReadsThem) {
    const Bytes good = whole_session();
    std::mt19937 random(3);
    for (std::size_t round = 0; round < 150 && !testing::Test::HasFailure(); ++round) {
        Bytes bytes = good;
        for (std::size_t i = 0; i < 40 * (round % 8); ++i) {
            bytes[random() % bytes.size()] = std::array<std::uint8_t, 3>{0, 1, 'Z'}[random() % 3];
        }
        if (round % 5 == 4) bytes.resize(random() % bytes.size());
        expect_what_a_byte_scan_finds(bytes, {"Gtr", "Gtr-03", "Film"});
        over(bytes, readGroups), over(bytes, readFolderTable), over(bytes, readAltPlaylists);
        over(bytes, readVideoPaths), over(bytes, readVideoClips), over(bytes, readColourSchemes);
    }
}

TEST(Tables, OfRealSessions) {
    const struct {
        const char* file;
        std::size_t strips;
        std::int32_t clip_scheme;
        std::string track;
        std::size_t renders;
    } sessions[] = {{"RegionTest.ptx", 4, 3, "region_name_region", 3},
                    {"TestPTX.ptx", 5, 5, "monoTone", 2},
                    {"TempoTimeKeySig.ptx", 2, 1, "Audio 1", 0},
                    {"Untitled32.ptx", 0, 1, "", 0}};
    for (const auto& session : sessions) {
        SCOPED_TRACE(session.file);
        TANROVE_REAL_SESSION(image, session.file);
        const BlockIndex index{ByteView(image)};
        const auto groups = readGroups(index);
        ASSERT_EQ(groups.size(), 2U);
        for (const auto& group : groups) {
            EXPECT_EQ(group.name, all_tracks_group);
            EXPECT_EQ(group.members.size(), session.strips);
            EXPECT_TRUE(group.kind == 2 && group.slot == 255 && !group.active);
            EXPECT_EQ(group.vca_master, -1);
            EXPECT_EQ(group.attributes[0] + group.attributes[1] + group.attributes[8], 3);
        }
        EXPECT_EQ(readFolderTable(index), FolderTable());
        EXPECT_EQ(readColourSchemes(index).track, 4);
        EXPECT_EQ(readColourSchemes(index).clip, session.clip_scheme);
        EXPECT_EQ(readVideoQuality(index), 1);
        EXPECT_FALSE(readVideoRate(index).has_value());
        EXPECT_TRUE(readVideoClips(index).track_names.empty() && readVideoPaths(index).empty());
        EXPECT_TRUE(readAltPlaylists(index).empty() && vca_slots(index).empty());
        const Names tracks = {session.track};
        const auto renders = readFreezeRenders(index, tracks);
        EXPECT_EQ(renders.empty() ? 0 : renders.begin()->second.size(), session.renders);
        expect_what_a_byte_scan_finds(image, tracks);
    }
}

}  // namespace
}  // namespace tanrove
