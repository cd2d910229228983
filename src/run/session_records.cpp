// Calls the readers, family by family.
#include "run/session_records.hpp"

#include <algorithm>

#include "plugins/plugin_inserts.hpp"
#include "run/strip_inserts.hpp"
#include "session/inactive_tracks.hpp"
#include "session/midi_lanes.hpp"
#include "session/pitch_shifts.hpp"
#include "session/strip_lanes.hpp"
#include "session/video_files.hpp"

namespace tanrove {

namespace {

Region region_of(const PTFFormat::Region& stored) {
    Region region;
    region.index = stored.index;
    region.name = stored.name.substr(0, max_region_name);
    region.start = stored.start;
    region.source_offset = stored.source_offset;
    region.length = stored.length;
    region.file_position = stored.start;
    region.file_length = stored.length;
    return region;
}

std::vector<Region> regions_of(const std::vector<PTFFormat::Region>& stored,
                               std::size_t file_count) {
    std::vector<Region> regions;
    regions.reserve(stored.size());
    for (const auto& entry : stored) {
        regions.push_back(region_of(entry));
        if (entry.file_index < file_count) regions.back().file = entry.file_index;
    }
    return regions;
}

std::vector<ClipTrack> tracks_of(const std::vector<PTFFormat::Track>& stored,
                                 std::size_t region_count) {
    std::vector<ClipTrack> tracks;
    tracks.reserve(stored.size());
    for (const auto& entry : stored) {
        const auto place = static_cast<std::uint64_t>(entry.region_index);
        if (place >= no_region || place >= region_count) continue;
        tracks.push_back({
            .start = entry.start,
            .region_index = static_cast<std::uint32_t>(place),
            .index = entry.index,
        });
    }
    return tracks;
}

/// One row for each track that has clips, in the order of its first clip.
std::vector<TrackTableRow> track_rows_of(const std::vector<PTFFormat::Track>& stored) {
    std::vector<TrackTableRow> rows;
    std::vector<bool> seen(0x10000, false);
    for (const auto& track : stored) {
        if (!seen[track.index]) rows.push_back({track.index, std::string(track.name)});
        seen[track.index] = true;
    }
    return rows;
}

/// The library's own lists, for images whose lists the program's reader refuses.
void take_library_lists(const PTFFormat& file, ClipRecords& clips) {
    clips.lists.regions = regions_of(file.regions(), clips.files.size());
    clips.lists.midi_regions = regions_of(file.midi_regions(), 0);
    clips.lists.placements = tracks_of(file.tracks(), clips.lists.regions.size());
    clips.lists.midi_placements = tracks_of(file.midi_tracks(), clips.lists.midi_regions.size());
    clips.lists.midi_track_rows = track_rows_of(file.midi_tracks());
    clips.track_rows = track_rows_of(file.tracks());
}

/// What is read from the tree of lists and from the playlists' walk, which then go. False if the
/// image has no lists to read.
bool read_lists(const BlockIndex& index, ClipRecords& clips) {
    const BlockTree list_tree = parse_list_tree(index.image());
    const auto tree = list_tree.blocks();
    const auto walks = walk_playlists(index);
    clips.playlists = readPlaylists(walks, tree);
    clips.details = readPlaylistDetails(index.image(), walks);
    clips.region_starts = readRegionStarts(index.image(), tree);
    return readSessionLists(index, tree, clips.files, clips.lists, clips.track_rows);
}

}  // namespace

ClipRecords read_clips(const PTFFormat& file, const BlockIndex& index) {
    ClipRecords clips;
    for (const auto& audio : file.audio_files()) clips.files.push_back({audio.name, audio.index});
    if (!read_lists(index, clips)) take_library_lists(file, clips);
    clips.folders = readAudioFileFolders(index);
    clips.fades = readFades(index);
    clips.gains = readClipGains(index);
    clips.clip_groups = readClipGroups(index);
    clips.warp_maps = readWarpMaps(index);
    clips.pitch_shifts = readPitchShifts(index);
    clips.loops = readLoopRecords(index);
    return clips;
}

TimeRecords read_time(const BlockIndex& index, double tempo_override) {
    TimeRecords time;
    TempoRecords tempo = readTempoMap(index);
    time.first_tempo_refused = tempo.first_point_refused;
    time.tempo_breaks_off = tempo.breaks_off;
    const bool has_map = tempo.points.size() > 1;
    const bool opens_late = has_map && tempo.points.front().tick > 0;
    const bool is_first_tempo = tempo.points.size() == 1 || opens_late;
    time.tempo_bpm = is_first_tempo ? tempo.points.front().bpm : readDefaultTempo(index);
    if (tempo_override > 0) time.tempo_bpm = tempo_override;
    if (has_map) time.tempo_map = std::move(tempo.points);
    if (opens_late) {
        time.tempo_map.insert(time.tempo_map.begin(), {0, time.tempo_map.front().bpm});
    }
    time.meters = readMeterMap(index);
    time.locations = readMemoryLocations(index);
    time.frame_rate = readFrameRate(index);
    time.extended_timecode = readExtendedTimecode(index);
    time.grid = readGridAndNudge(index);
    time.audio_format = readAudioFormat(index);
    time.bit_depth = readBitDepth(index);
    time.pan_depth = readPanDepth(index);
    return time;
}

StripRecords read_strip_records(const BlockIndex& index, const ClipRecords& clips) {
    StripRecords records;
    records.strips = readStripRows(index);
    records.table = readStripTable(index);
    std::vector<std::string> clip_track_names;
    for (const auto& row : clips.track_rows) clip_track_names.push_back(row.name);
    records.track_table = readTrackTable(index, clip_track_names, records.strips);
    records.inactive_names = readInactiveNames(index);
    records.voice_off_names = readVoiceOffNames(index, records.strips.rows);
    records.groups = readGroups(index);
    records.vca_slots = readVcaSlots(index, records.strips.rows);
    records.folder_table = readFolderTable(index);
    records.displays = readTrackDisplays(index, records.strips.rows);
    records.inserts = read_plugin_inserts(index);
    records.hardware_inserts = readHardwareInserts(index, records.strips.rows);
    records.insert_rows = strip_rows_of(records.inserts, records.strips.rows);
    records.strip_inserts =
        strip_inserts(records.inserts, records.insert_rows, records.hardware_inserts);
    records.click_is_on = readClickSetting(index) == 1;
    records.masters = read_master_strips(index, records.strips.rows);
    records.colour_schemes = readColourSchemes(index);
    records.colours = readTrackColours(index, records.strips.rows);
    return records;
}

MidiRecords read_midi(const BlockIndex& index, const StripRecords& strips) {
    const auto& rows = strips.strips.rows;
    return {
        .chunks = readMidiChunks(index),
        .playlists = readMidiPlaylists(index).details,
        .playlist_rows = readMidiPlaylistRows(index),
        .outputs = readMidiOutputs(index),
        .clip_groups = readMidiClipCounts(index),
        .settings = readMidiSettings(index, rows),
        .real_time = readRealTimeProperties(index, rows),
        .other_lanes = count_other_midi_lanes(index, rows),
    };
}

VideoRecords read_video(const BlockIndex& index) {
    return {readVideoClips(index), read_video_regions(index), read_video_info(index),
            readVideoPaths(index)};
}

int insert_count(const StripRecords& records, std::size_t row) {
    return static_cast<int>(std::ranges::count(records.insert_rows, std::optional(row)));
}

std::vector<Strip> read_mixer(const BlockIndex& index, const StripRecords& strips) {
    // The sends come with the routing, which knows their buses from the slots themselves.
    std::vector<Strip> mixer = readStrips(index, strips.strips.rows, strips.track_table.names, {});
    readStripLanes(index, mixer);
    return mixer;
}

}  // namespace tanrove
