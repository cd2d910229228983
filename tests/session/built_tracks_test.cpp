// Whole built sessions: tracks and clips as described come back from all lists in step.
#include <gtest/gtest.h>

#include "session/audio_file_folders.hpp"
#include "session/clip_effects.hpp"
#include "session/clip_gains.hpp"
#include "session/clip_groups.hpp"
#include "session/fades.hpp"
#include "session/loop_records.hpp"
#include "session/midi_playlists.hpp"
#include "session/midi_tracks.hpp"
#include "session/pitch_shifts.hpp"
#include "session/playlists.hpp"
#include "session/region_starts.hpp"
#include "session/session_lists.hpp"
#include "session/warp_maps.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ClipSpec;
using builder::SessionBuilder;
using builder::TrackKind;
using builder::TrackSpec;
using Texts = std::vector<std::string>;

const std::vector<AudioFileEntry> files = {{"vox.wav", 0}, {"pad.L.wav", 1}, {"pad.R.wav", 2}};

ClipSpec clip(const std::string& region, std::int64_t position, std::int64_t length) {
    ClipSpec spec;
    spec.region = region;
    spec.position = position;
    spec.length = length;
    return spec;
}

TrackSpec vox() {
    ClipSpec sync = clip("Vox-01", 96000, 24000);
    sync.source_offset = 4000;
    sync.sync_samples = 500;
    sync.gain = {{0, -3.0F}, {9600, 1.5F}};
    sync.pitch.semitones = -2;
    sync.loop = builder::LoopSpec{.count = 3};
    ClipSpec fade;
    fade.is_fade = true;
    fade.position = 120000;
    fade.fade = {.kind = 2, .pre = 480, .length = 480};
    ClipSpec deleted = clip("Vox-02", 500000, 1000);
    deleted.deleted = true;
    ClipSpec group;
    group.clip_group = 0;
    group.position = 700000;
    return {.name = "Vox",
            .clips = {sync, fade, deleted, group},
            .alternates = {{"Vox.01", {clip("Vox-03", 10, 2000)}}}};
}

TrackSpec pad() {
    ClipSpec wide = clip("Pad", 7752720000, 48000);
    wide.file_index = 1;
    wide.file_per_channel = true;
    wide.warp = builder::WarpSpec{.points = {{0, 0}, {960000, 24000}}, .in_ticks = true};
    return {.name = "Pad", .channels = 2, .tick_based = true, .clips = {wide, wide}};
}

TEST(BuiltTracks, ComeBackInStepFromEveryList) {
    const Bytes image = SessionBuilder()
                            .track(vox())
                            .track({.name = "Echo", .kind = TrackKind::aux})
                            .track({.name = "Empty"})
                            .track(pad())
                            .image();
    const BlockIndex index{ByteView(image)};
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
    ASSERT_TRUE(readSessionLists(index, files, lists, tracks));

    std::map<std::size_t, std::string> track_names;
    for (const auto& track : tracks) track_names.emplace(track.id, track.name);
    Texts rows;
    for (const auto& row : lists.tracks) {
        const Region region = row.is_clip_group ? Region() : lists.regions.at(row.region_index);
        const std::string file =
            region.file < 0 ? "" : files.at(static_cast<std::size_t>(region.file)).name;
        rows.push_back(std::to_string(row.index) + ' ' + track_names.at(row.index) + ' ' +
                       region.name + ' ' + file + " @" + std::to_string(row.start));
    }
    const std::string far = " @1007752720000";
    EXPECT_EQ(rows, (Texts{"0 Vox Vox-01 vox.wav @96000", "0 Vox Vox-01 vox.wav @120000",
                           "0 Vox Vox-02 vox.wav @500000", "0 Vox   @700000",
                           "1 Pad Pad.L pad.L.wav" + far, "1 Pad Pad.L pad.L.wav" + far,
                           "2 Pad Pad.R pad.R.wav" + far, "2 Pad Pad.R pad.R.wav" + far,
                           "3 Vox Vox-03 vox.wav @10"}))
        << "the fade's row joins the region of its number until the edit list tells it apart";
    EXPECT_EQ(lists.regions.at(0).source_offset, 4000);

    Texts names;
    for (const auto& track : tracks) names.push_back(std::to_string(track.id) + ' ' + track.name);
    EXPECT_EQ(names, (Texts{"0 Vox", "4 Empty", "1 Pad", "2 Pad", "3 Vox"}));

    Texts playlists;
    for (const auto& detail : readPlaylistDetails(index)) {
        playlists.push_back(detail.name + ' ' + std::to_string(detail.region_ids.size()));
    }
    EXPECT_EQ(playlists, (Texts{"Vox 3", "Empty 0", "Pad 2", "Pad 2", "Vox.01 1"}))
        << "a deleted placement has no row";
    EXPECT_EQ(readPlaylists(index).clip_counts, (std::vector<std::uint32_t>{4, 0, 2, 2, 1}));

    const auto starts = readRegionStarts(index);
    ASSERT_EQ(starts.size(), lists.regions.size());
    for (std::size_t i = 0; i < starts.size(); ++i) {
        EXPECT_EQ(starts[i].name, lists.regions[i].name);
        EXPECT_EQ(starts[i].sync_samples, i == 0 ? 500U : 0U);
    }
    ASSERT_EQ(readFades(index).size(), 1U);
    EXPECT_EQ(readFades(index)[0].length, 480);
}

SessionBuilder whole_session() {
    ClipSpec fade;
    fade.is_fade = true;
    fade.fade.length = 20;
    return SessionBuilder()
        .track(vox())
        .track(pad())
        .clip_group({.name = "Chorus",
                     .length = 2010,
                     .members = {clip("Vox-02", 0, 1000), clip("Vox-03", 10, 2000), fade}})
        .top_level(builder::effects_block({{7, {{"Gain", 5}}}}))
        .top_level(builder::midi_playlist_block({.name = "Keys", .placements = {{}}}, true));
}

TEST(BuiltTracks, CarryGainWarpPitchLoopsAndGroups) {
    const Bytes image = whole_session().image();
    const BlockIndex index{ByteView(image)};
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
    ASSERT_TRUE(readSessionLists(index, files, lists, tracks));
    EXPECT_EQ(readFirstClipGains(index), (std::map<std::string, double>{{"Vox-01", -3}}));
    EXPECT_EQ(readPitchShifts(index), (std::map<std::string, double>{{"Vox-01", -2}}));
    EXPECT_EQ(readWarpMaps(index).in_ticks.size(), 2U) << "one for each leg";
    const auto loops = readLoopRecords(index);
    ASSERT_EQ(loops.size(), 1U);
    EXPECT_EQ(loops[0].key, loop_key(96000, 0));
    const auto groups = readClipGroups(index, lists.regions);
    ASSERT_EQ(groups.clips.size(), 1U);
    EXPECT_EQ(groups.clips[0].table_index, 0);
    ASSERT_EQ(groups.lists.size(), 1U);
    EXPECT_EQ(lists.regions.at(groups.lists[0].members.at(1).id).name, "Vox-03");
    EXPECT_TRUE(groups.lists[0].members.at(2).is_fade);
    EXPECT_EQ(readPlaylists(index).records.size(), 4U) << "the group's list lies on no track";
}

/// What all readers together have read: never more than the bytes could hold.
std::size_t records_read(ByteView image) {
    const BlockIndex index{image};
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
    readSessionLists(index, files, lists, tracks);
    std::size_t count = lists.regions.size() + lists.tracks.size() + tracks.size();
    EXPECT_EQ(readRegionStarts(index).size(), lists.regions.size());
    const auto details = readPlaylistDetails(index);
    EXPECT_EQ(readPlaylists(index).records.size(), details.size());
    for (const auto& detail : details) count += detail.positions.size();
    count += readFades(index).size() + readAudioFileFolders(index).size();
    const auto gains = readClipGains(index);
    for (const auto& [name, entry] : gains.entry_of_clip) count += gains.entries.at(entry).size();
    for (const auto& [name, map] : readWarpMaps(index).in_ticks) count += map.size();
    count += readPitchShifts(index).size() + readLoopRecords(index).size();
    const auto groups = readClipGroups(index, lists.regions);
    for (const auto& clip : groups.clips) {
        EXPECT_LT(clip.table_index, static_cast<std::int32_t>(groups.lists.size()));
    }
    for (const auto& list : groups.lists) count += list.members.size();
    count += readClipEffects(index).records.size();
    return count + readMidiPlaylists(index).details.size() + readMidiPlaylistRows(index).size() +
           readMidiClipCounts(index).size() + readMidiTrackRows(index).size();
}

TEST(BuiltTracks, EveryCutOfASessionIsReadWithoutHarm) {
    const Bytes image = whole_session().image();
    const std::size_t whole = records_read(ByteView(image));
    EXPECT_GT(whole, 40U);
    for (std::size_t size = 0; size < image.size(); size += 11) {
        ASSERT_LE(records_read(ByteView(image).window(0, size)), whole);
    }
}

TEST(BuiltTracks, EverySizeWordMayLie) {
    const Bytes good = whole_session().image();
    const BlockIndex index{ByteView(good)};
    for (const Block& b : index.blocks().all()) {
        SCOPED_TRACE(b.at);
        for (const std::uint32_t size : {0U, 1U, b.size - 1, b.size + 1, 0xffffffffU}) {
            Bytes image = good;
            for (std::size_t i = 0; i < 4; ++i) {
                image[b.at + 3 + i] = static_cast<std::uint8_t>(size >> (8 * i));
            }
            ASSERT_LE(records_read(ByteView(image)), image.size() / 8);
        }
    }
}

}  // namespace
}  // namespace tanrove
