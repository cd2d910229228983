// Placements as items: what becomes a clip, when it plays, and whose record tells.
#include "timeline/place_clips.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <sstream>

#include "base/formatted_text.hpp"
#include "timeline_scene.hpp"

namespace tanrove {
namespace {

using testing_records::region_numbers;
using testing_records::Row;
using testing_records::Scene;

constexpr std::int64_t origin = 1'000'000'000'000;

TEST(PlaceClips, LeavesOutWhatPlaysNoAudio) {
    Scene scene;
    scene.track("Vox").place(0, 0).place(1, 0).place(2, 0).place(3, 96000);
    scene.regions[0].length = 0;
    scene.regions[1].file = -1;
    scene.placements[2].is_clip_group = true;
    scene.placements.emplace_back();  // names no region
    const auto tracks = scene.placed();
    ASSERT_EQ(tracks.size(), 1u);
    EXPECT_EQ(region_numbers(tracks[0].clips), "3 ");
    EXPECT_EQ(tracks[0].clips[0].index_on_track, 0u);
}

TEST(PlaceClips, ReadsNamesAndOffsetsFromTheRegion) {
    struct {
        const char* name;
        const char* file_name;
        std::int64_t offset;
        const char* file;
        const char* kind;
        bool head_of_file;
    } const cases[] = {
        {"take", "Audio Files/a.b.WAV", 63, "a.b.WAV", "wav", true},
        {"take", "C:\\Audio\\x.AIF", 64, "x.AIF", "aif", false},
        {"take-01", "noext", 0, "noext", "", false},
        {"01", "a.wav", 0, "a.wav", "wav", true},
        {"take-", "a.wav", 0, "a.wav", "wav", true},
        {"take-1a", "a.wav", std::int64_t{1} << 40, "a.wav", "wav", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name << ' ' << c.file_name << ' ' << c.offset);
        Scene scene;
        scene.regions[0].name = c.name;
        scene.files[0].name = c.file_name;
        scene.regions[0].source_offset = c.offset;
        const auto tracks = scene.track("Vox").place(0, 0).placed();
        const ClipItem& clip = tracks.at(0).clips.at(0);
        EXPECT_EQ(clip.file, c.file);
        EXPECT_EQ(clip.file_kind(), c.kind);
        EXPECT_EQ(clip.head_of_file, c.head_of_file);
        EXPECT_DOUBLE_EQ(clip.source_offset, static_cast<double>(c.offset) / 48000);
        EXPECT_EQ(clip.source_offset_samples,
                  std::min<std::int64_t>(c.offset, std::numeric_limits<std::uint32_t>::max()));
    }
}

TEST(PlaceClips, PutsStoredPositionsOnTheTimelineInSeconds) {
    struct {
        bool is_tick_based;
        std::int64_t stored;
        double start;
    } const cases[] = {
        {false, 0, 0},
        {false, 72000, 1.5},
        {false, std::int64_t{48000} << 32, 4294967296.0},
        {true, origin, 0},
        {true, origin - 100, 0},               // a hair in front of the origin, not hours behind
        {true, origin + 960000, 1.0},          // one quarter at 60
        {true, origin + 4 * 960000, 3.0},      // two at 60, two at 120
        {true, origin + 7752720000, 4038.875}  // beyond 32 bits of ticks
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.is_tick_based << ' ' << c.stored);
        Scene scene;
        scene.tempo_map = {{0, 60}, {2 * 960000, 120}};
        const Row row{.region_id = 0, .position = static_cast<std::uint64_t>(c.stored)};
        const auto tracks = scene.track_with_rows("Vox", c.is_tick_based, {row}).placed();
        EXPECT_DOUBLE_EQ(tracks.at(0).clips.at(0).start, c.start);
        EXPECT_EQ(tracks.at(0).clips.at(0).stored_position, static_cast<std::uint64_t>(c.stored));
    }
}

TEST(PlaceClips, MovesAClipSoThatItsSyncPointLiesAtItsPosition) {
    Scene scene(2);
    scene.sync_points = {{"clip 0", 72000}, {"clip 1", 24000}};
    scene.track("Vox").place(0, 48000).place(1, 96000);
    const auto tracks = scene.placed();
    const auto& clips = tracks.at(0).clips;
    EXPECT_EQ(clips.at(0).start, 0) << "it would begin in front of the session";
    EXPECT_EQ(snap_offset(clips[0]), 0) << "a sync point behind the clip's end is no place to snap";
    EXPECT_DOUBLE_EQ(clips.at(1).start, 1.5);
    EXPECT_DOUBLE_EQ(snap_offset(clips[1]), 0.5);
    EXPECT_EQ(scene.tallies.sync_points, 2);
    EXPECT_EQ(scene.tallies.sync_table_refused, 0);
}

TEST(PlaceClips, UsesNoSyncTableThatDoesNotNameEveryRegionInTurn) {
    const std::vector<RegionStart> tables[] = {{{"clip 1", 0}, {"clip 0", 24000}},
                                               {{"clip 0", 24000}}};
    for (const auto& table : tables) {
        Scene scene(2);
        scene.sync_points = table;
        const auto tracks = scene.track("Vox").place(0, 96000).placed();
        EXPECT_DOUBLE_EQ(tracks.at(0).clips.at(0).start, 2.0);
        EXPECT_EQ(scene.tallies.sync_points, 0);
        EXPECT_EQ(scene.tallies.sync_table_refused, 1);
    }
}

TEST(PlaceClips, AddsATrackThatTheTableDoesNotKnow) {
    Scene scene;
    scene.track("Vox").place(0, 0);
    scene.placements[0].index = 9;
    const auto tracks = scene.placed();
    ASSERT_EQ(tracks.size(), 2u);
    EXPECT_EQ(tracks[1].name, "");
    EXPECT_EQ(tracks[1].id, 9);
    EXPECT_EQ(tracks[1].clips.size(), 1u);
}

/// The words of a text, which blanks divide.
std::vector<std::string> words_of(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

TEST(PairTracks, FollowsTheRecordsInTheirOrder) {
    struct {
        const char* what;
        const char* tracks;   // a letter for the name, and how many placements
        const char* records;  // a letter for the name, and its rows: clip, fade, group
        const char* paired;   // for each track the record's place
    } const cases[] = {
        {"by count, whatever the names", "O1 B2", "Nc Bcc", "01"},
        {"a record that is passed by stays passed by", "A2 B1", "Bc Acc", "1-"},
        {"fade rows make up for the difference", "A1 B1", "Acf Bc", "01"},
        {"only the first of the name is asked for its fade rows' number", "A1", "Accf Acf", "0"},
        {"a group's record is found by its name", "A1", "Accc Acgc", "1"},
        {"else the first of the name that has a fade row", "A1", "Acc Acff", "1"},
        {"nothing fits", "A5 B1", "Cc", "-0"},
        {"an empty track takes an empty record", "A0 B1", "A Bc", "01"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Scene scene;
        for (const auto& word : words_of(c.tracks)) {
            scene.track(word.substr(0, 1));
            for (int i = 0; i < word[1] - '0'; ++i) scene.place(0, i);
        }
        for (const auto& word : words_of(c.records)) {
            std::vector<Row> rows;
            for (const char kind : word.substr(1)) {
                const std::uint32_t id = kind == 'f' ? 90 : kind == 'g' ? 3 : 0;  // no region is 90
                rows.push_back({.region_id = id, .is_fade = kind == 'f', .in_group = kind == 'g'});
            }
            scene.record(word.substr(0, 1), false, rows);
        }
        std::string paired;
        for (const auto& track : scene.placed())
            paired += track.record ? std::to_string(*track.record) : "-";
        EXPECT_EQ(paired, c.paired);
    }
}

TEST(PairTracks, GoesByNumbersWhereTheListsHaveThem) {
    Scene scene;
    for (const std::uint16_t playlist : std::initializer_list<std::uint16_t>{2, 0, 1}) {
        scene.track("Vox").place(0, 9);
        scene.track_rows.back().playlist = playlist;
    }
    scene.record("Vox", false, {{}}).record("other", true, {{}, {}});
    scene.records[0].number = 0;
    scene.records[1].number = 2;  // the playlist in between could not be read
    const auto tracks = scene.placed();
    EXPECT_EQ(tracks.at(0).record, 1u);
    EXPECT_EQ(tracks.at(1).record, 0u);
    EXPECT_FALSE(tracks.at(2).record) << "its clips stay where they are";
    EXPECT_EQ(tracks[2].clips.size(), 1u);
}

TEST(PairTracks, CountsClipGroupsAmongThePlacements) {
    Scene scene;
    scene.track("A").place(0, 0).place(1, 9);
    scene.placements[1].is_clip_group = true;
    scene.record("A", true, {{.region_id = 0}, {.region_id = 1, .in_group = true}});
    scene.record("B", false, {{.region_id = 0}});
    EXPECT_EQ(scene.placed().at(0).record, 0u);
}

TEST(DecideTimebases, AsksTheRecordThenAllRecordsThenThePositions) {
    struct {
        const char* what;
        std::vector<bool> records;         // tick-based; each of one clip
        std::vector<std::int64_t> stored;  // the one track's, so it pairs only with one clip
        const char* tallies;  // ticks, samples; unpaired, to ticks; by positions alone, or between
    } const cases[] = {
        {"paired", {false}, {origin}, "01 00 00"},
        {"all records are samples", {false, false}, {0, 0}, "01 10 00"},
        {"all records are ticks", {true, true}, {origin, origin}, "10 11 00"},
        {"all are samples, where no sample can be", {false, false}, {origin, origin}, "10 00 01"},
        {"all are ticks, where no tick can be", {true, true}, {48000, 0}, "01 00 01"},
        {"records disagree, half of the positions are large",
         {true, false},
         {origin, 5},
         "10 00 01"},
        {"no records, few are large", {}, {1'000'000'001, 1'000'000'000, 7}, "01 00 10"},
        {"no records, no clips", {}, {}, "10 00 10"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Scene scene;
        scene.track("A");
        for (const auto stored : c.stored) scene.place(0, stored);
        for (const bool is_tick_based : c.records)
            scene.record("R", is_tick_based, {{.region_id = 0}});
        EXPECT_EQ(scene.placed().at(0).tick_based, c.tallies[0] == '1');
        const TimelineTallies& t = scene.tallies;
        EXPECT_EQ(formatted("%d%d %d%d %d%d", t.tick_based_tracks, t.sample_based_tracks,
                            t.unpaired_tracks, t.unpaired_are_tick_based, t.judged_without_records,
                            t.judged_between_records),
                  c.tallies);
    }
}

}  // namespace
}  // namespace tanrove
