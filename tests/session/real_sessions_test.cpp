// What the readers find in the real sessions: the numbers that Pro Tools shows.
#include "support/real_sessions.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "reading.hpp"
#include "session/buses.hpp"
#include "session/fades.hpp"
#include "session/midi_track_settings.hpp"
#include "session/playlists.hpp"
#include "session/routing.hpp"
#include "session/session_lists.hpp"
#include "session/strip_lanes.hpp"
#include "session/track_displays.hpp"

namespace tanrove {
namespace {

using namespace builder;
using Texts = std::vector<std::string>;

TEST(RealSessions, OutputsAndBusesStandInThePathTable) {
    const std::pair<const char*, const char*> sessions[] = {
        {"RegionTest.ptx",
         "48 own, 1 on hardware, 15 buses from Bus 1-2, outputs: Monitors mapped; "},
        {"TempoTimeKeySig.ptx",
         "39 own, 1 on hardware, 12 buses from Bus 1-2, outputs: Out 1-2 mapped; "},
        {"TestPTX.ptx",
         "23 own, 1 on hardware, 1 buses from QT BOUNCE, outputs: Main 51.Stereo mapped; "},
        {"Untitled32.ptx", "39 own, 1 on hardware, 12 buses from Bus 1-2, outputs: "},
        {"protools-texts/RobinHood.ptx",
         "55 own, 23 on hardware, 0 buses from -, outputs: Alt Mix mapped; "},
        {"protools-texts/TestExport.ptx",
         "228 own, 2 on hardware, 67 buses from Bus 101-102, outputs: Out 1-2 mapped; "},
    };
    for (const auto& [file, expected] : sessions) {
        TANROVE_REAL_SESSION(image, file);
        const BlockIndex index{ByteView(image)};
        const auto paths = readIoPaths(index);
        const auto buses = readBuses(index);
        std::set<std::string> outputs;
        for (const auto& row : readRouting(index, readStripRows(index).rows, paths)) {
            const auto path = std::ranges::find(paths, row.output_identity, &IoPath::identity);
            ASSERT_NE(path, paths.end()) << file << row.name;
            outputs.insert(path->name + (path->own && path->mapped ? " mapped; " : "; "));
        }
        std::set<std::uint64_t> hardware;
        for (const IoPath& path : paths) {
            if (!path.own) hardware.insert(path.identity());
        }
        const auto is_here = [&](std::uint64_t identity) { return hardware.contains(identity); };
        const auto on_hardware = std::ranges::count_if(
            paths, [&](const IoPath& path) { return std::ranges::any_of(path.hardware, is_here); });
        std::string text = fields(std::ranges::count(paths, true, &IoPath::own), "own,",
                                  on_hardware, "on hardware,", buses.size(), "buses from",
                                  buses.empty() ? "-" : buses.front()) +
                           ", outputs: ";
        for (const auto& output : outputs) text += output;
        EXPECT_EQ(text, expected) << file;
    }
}

/// Rows of the strips as the session shows them.
Texts strips_text(const Bytes& image) {
    const BlockIndex index{ByteView(image)};
    const auto rows = readStripRows(index).rows;
    const auto displays = readTrackDisplays(index, rows);
    const auto midi = readMidiSettings(index, rows);
    Texts names;
    for (const StripRow& row : rows) names.push_back(row.current_name);
    auto strips = readStrips(index, rows, names, {});
    readStripLanes(index, strips);
    Texts texts;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Strip& strip = strips[i];
        texts.push_back(rows[i].original_name + ", " + names[i] + ": " +
                        fields(strip.fader_db, strip.pan, strip.pan_right_lane.initial) +
                        (strip.muted ? " muted" : "") + (strip.stereo ? " stereo" : "") +
                        (strip.volume_lane.in_ticks ? " ticks" : "") + ", " +
                        fields(displays[i].height, "row", displays[i].display_row) + ", MIDI " +
                        fields(midi[i].volume, midi[i].pan, midi[i].patch));
    }
    return texts;
}

TEST(RealSessions, StripsHaveTheNumbersThatProToolsShows) {
    TANROVE_REAL_SESSION(times, "TempoTimeKeySig.ptx");
    TANROVE_REAL_SESSION(tones, "TestPTX.ptx");
    TANROVE_REAL_SESSION(regions, "RegionTest.ptx");
    EXPECT_EQ(strips_text(times),
              (Texts{"Audio 1, Audio 1: 0 0 0 muted, 92 row 1, MIDI -1 -1 -1",
                     "Audio 2, Audio 2: 0 0 0 ticks, 92 row 2, MIDI -1 -1 -1"}));
    EXPECT_EQ(strips_text(tones),
              (Texts{"monoTone, monoTone: 0 0 0, 92 row 1, MIDI -1 -1 -1",
                     "stereoTone, stereoTone: 0 -100 100 stereo, 92 row 2, MIDI -1 -1 -1",
                     "MIDI 1, MIDI 1: 0 0 0, 300 row 3, MIDI 96 64 -1",
                     "MIDI 2, MIDI 2: 0 0 0, 300 row 4, MIDI 96 64 -1",
                     "MIDI 3, MIDI 3: 0 0 0, 300 row 5, MIDI 96 64 -1"}));
    EXPECT_EQ(strips_text(regions),
              (Texts{"mysticMountain_Act1.L, Track_Name: 0 -100 0, 36 row 1, MIDI -1 -1 -1",
                     "Audio 1, Audio 1: 0 0 0, 36 row 2, MIDI -1 -1 -1",
                     "Audio 2, Audio 2: 0 -100 100 stereo, 36 row 3, MIDI -1 -1 -1",
                     "Audio 3, Audio 3: 0 -100 100 stereo, 36 row 4, MIDI -1 -1 -1"}));
}

Texts placements_text(const Bytes& image) {
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
    const ByteView view(image);
    readSessionLists(BlockIndex(view), parse_list_tree(view).blocks(), {}, lists, tracks);
    std::map<std::size_t, std::string> names;
    for (const auto& track : tracks) names.emplace(track.id, track.name);
    Texts text;
    for (const auto& row : lists.placements) {
        const Region& r = lists.regions.at(row.region_index);
        text.push_back(fields(row.index, names.at(row.index), r.name, r.source_offset) + '+' +
                       fields(r.length, "") + "@" + shown(row.start));
    }
    return text;
}

TEST(RealSessions, ClipsLieWhereProToolsShowsThem) {
    TANROVE_REAL_SESSION(regions, "RegionTest.ptx");
    // Two rows are fades whose numbers are regions' too; the edit lists tell them apart.
    EXPECT_EQ(placements_text(regions),
              (Texts{"0 Track_Name region_name_region-01 0+2650000 @0",
                     "1 Audio 1 region_name_region-01 0+2650000 @0",
                     "1 Audio 1 region_name_region-03 950000+1290000 @2650000",
                     "2 Audio 2 region_name_region-01 0+2650000 @0",
                     "3 Audio 2 region_name_region-01 0+2650000 @0",
                     "4 Audio 3 region_name_region-03 950000+1290000 @950000",
                     "4 Audio 3 region_name_region 0+5910132 @2240000",
                     "5 Audio 3 region_name_region-03 950000+1290000 @950000",
                     "5 Audio 3 region_name_region-01 0+2650000 @2240000"}));
    std::vector<double> fades;
    for (const auto& fade : over(regions, readFades)) {
        fades.push_back(fade.kind == FadeKind::fade_in ? -fade.length : fade.length);
    }
    EXPECT_EQ(fades, (std::vector<double>{290000, 290000, 450000, -490000, -230000, -230000}));
    std::vector<std::uint32_t> fade_rows;
    const auto walks = over(regions, walk_playlists);
    for (const auto& playlist : readPlaylistDetails(ByteView(regions), walks)) {
        for (const PlacementRow& row : playlist.rows) {
            if (row.is_fade) fade_rows.push_back(row.region_id);
        }
    }
    EXPECT_EQ(fade_rows, (std::vector<std::uint32_t>{3, 2, 4, 0, 5, 1}));
}

}  // namespace
}  // namespace tanrove
