// What the readers find in the real sessions: how many records each, and the numbers that Pro Tools
// shows for them.
#include "support/real_sessions.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "reading.hpp"
#include "session/buses.hpp"
#include "session/fades.hpp"
#include "session/midi_track_settings.hpp"
#include "session/playlists.hpp"
#include "session/routing.hpp"
#include "session/strip_lanes.hpp"
#include "session/track_displays.hpp"
#include "slow_scan.hpp"
#include "support/all_readers.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using Texts = std::vector<std::string>;

TEST(RealSessions, EveryReaderFindsItsRecords) {
    const std::pair<const char*, const char*> sessions[] = {
        {"RegionTest.ptx",
         "readStripRows 4, readStripTable 4, read_track_names 4, readTrackTable 4, "
         "readTrackColours 0, readBuses 15, readIoPaths 51, readRouting 4, read_channel_records 4, "
         "readFades 6, readRegionStarts 3, readPlaylists 6, readSessionLists tracks 9, "
         "readMidiOutputs 0, readGroups 2, readVideoClips 0, readVideoQuality 1"},
        {"TestPTX.ptx",
         "readStripRows 5, read_track_names 2, readStrips 5, readIoPaths 236, readRouting 2, "
         "readLane 12, readRegionStarts 4, readMidiChunks 3, readMidiPlaylists 3, "
         "readMidiPlaylistRows 3, readMidiClipCounts 0, readFreezeRenders 1, "
         "readInstrumentLinks 0, readAltPlaylists 0"},
        {"TempoTimeKeySig.ptx",
         "read_track_names 2, readPlaylists 2, readRegionStarts 7, readLane 8"},
        {"Untitled32.ptx", "readStripRows 0, readMidiOutputs 1, readIoPaths 42"},
    };
    for (const auto& [file, expected] : sessions) {
        SCOPED_TRACE(file);
        TANROVE_REAL_SESSION(image, file);
        const BlockIndex index{ByteView(image)};
        std::string found = ", ";
        for (const auto& reading : read_everything(index)) {
            found += fields(reading.reader, reading.records) + ", ";
        }
        std::istringstream facts(expected);
        for (std::string fact; std::getline(facts >> std::ws, fact, ',');) {
            EXPECT_NE(found.find(", " + fact + ", "), std::string::npos) << fact;
        }
        std::size_t block_count = 0;
        for (std::size_t p = 0; p + 9 <= image.size(); ++p) {
            const bool has_type = p != first_block_at;
            if (has_type && isBlockAt(index.image(), p, image.size())) ++block_count;
        }
        EXPECT_EQ(index.blocks().all().size(), block_count);
    }
}

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

SessionLists lists_of(const Bytes& image) {
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
    const ByteView view(image);
    readSessionLists(BlockIndex(view), parse_list_tree(view), {}, lists, tracks);
    return lists;
}

Texts placements_text(const Bytes& image) {
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
    const ByteView view(image);
    readSessionLists(BlockIndex(view), parse_list_tree(view), {}, lists, tracks);
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

    TANROVE_REAL_SESSION(times, "TempoTimeKeySig.ptx");
    std::vector<std::int64_t> starts;
    for (const auto& row : lists_of(times).placements) {
        const bool in_ticks = row.index != 0;
        starts.push_back(row.start - (in_ticks ? static_cast<std::int64_t>(tick_origin) : 0));
    }
    EXPECT_EQ(starts, (std::vector<std::int64_t>{0, 327278, 507498, 573648, 845598, 225358698,
                                                 234572658, 3120000, 7200000, 13920000, 7342800000,
                                                 7695600000, 7718400000, 7752720000}));
}

TEST(RealSessions, MidiClipsPlayTheNotesOfTheirStreams) {
    TANROVE_REAL_SESSION(image, "TestPTX.ptx");
    const auto lists = lists_of(image);
    Texts clips;
    for (const ClipTrack& clip : lists.midi_placements) {
        const Region& region = lists.midi_regions.at(clip.region_index);
        std::string text =
            fields(lists.midi_track_rows.at(clip.index).name, region.name, clip.start,
                   region.source_offset, region.length, "stream", region.midi_stream) +
            ":";
        const auto stream = static_cast<std::size_t>(region.midi_stream);
        for (const MidiEvent& note : lists.midi_streams.at(stream).events) {
            text += fields("", note.note) + '@' + shown(note.position / 240000);
            EXPECT_EQ(note.velocity, 80);
        }
        clips.push_back(text);
    }
    EXPECT_EQ(clips, (Texts{"MIDI 1 MIDI 1-01 0 0 3840000 stream 1: 64@0 64@1 64@2 59@4 59@5 59@6 "
                            "64@8 64@9 64@10",
                            "MIDI 2 MIDI 2-01 0 0 3840000 stream 0: 48@0 48@1 48@2 48@3 48@4 48@5 "
                            "52@6 52@7 52@8 52@9 52@10 53@11 53@12 53@13 53@14 53@15",
                            "MIDI 3 MIDI 3-01 0 0 11520000 stream 2: 67@0 73@10 64@23 68@37"}));
}

}  // namespace
}  // namespace tanrove
