// One function a family. Strip rows and clip lists, which many families go by, are read once.
#include "tools/all_readers.hpp"

#include "plugins/elck_chunks.hpp"
#include "plugins/plugin_inserts.hpp"
#include "plugins/plugin_names.hpp"
#include "session/alternate_playlists.hpp"
#include "session/audio_file_folders.hpp"
#include "session/automation_lanes.hpp"
#include "session/block_tree.hpp"
#include "session/block_types.hpp"
#include "session/buses.hpp"
#include "session/channel_records.hpp"
#include "session/clip_effects.hpp"
#include "session/clip_gains.hpp"
#include "session/clip_groups.hpp"
#include "session/colour_schemes.hpp"
#include "session/damage_scan.hpp"
#include "session/fades.hpp"
#include "session/folder_table.hpp"
#include "session/freeze_renders.hpp"
#include "session/grid_and_nudge.hpp"
#include "session/groups.hpp"
#include "session/hardware_inserts.hpp"
#include "session/inactive_tracks.hpp"
#include "session/instrument_links.hpp"
#include "session/loop_records.hpp"
#include "session/master_name.hpp"
#include "session/memory_locations.hpp"
#include "session/meter_map.hpp"
#include "session/midi_chunks.hpp"
#include "session/midi_outputs.hpp"
#include "session/midi_playlists.hpp"
#include "session/midi_regions.hpp"
#include "session/midi_track_settings.hpp"
#include "session/midi_tracks.hpp"
#include "session/name_bindings.hpp"
#include "session/output_names.hpp"
#include "session/pitch_shifts.hpp"
#include "session/playlists.hpp"
#include "session/real_time_properties.hpp"
#include "session/region_starts.hpp"
#include "session/routing.hpp"
#include "session/session_settings.hpp"
#include "session/session_version.hpp"
#include "session/strip_lanes.hpp"
#include "session/strip_table.hpp"
#include "session/tempo_map.hpp"
#include "session/timecode.hpp"
#include "session/track_displays.hpp"
#include "session/track_names.hpp"
#include "session/track_table.hpp"
#include "session/vca_slots.hpp"
#include "session/video_clips.hpp"
#include "session/video_files.hpp"
#include "session/warp_maps.hpp"
#include "tools/record_sum.hpp"
#include "tools/record_text.hpp"

namespace tanrove {

namespace {

using tools::record_text;

/// Keeps what the readers of one family gave.
class Readings {
public:
    Readings(ReaderFamily family, bool with_texts) : family_(family), with_texts_(with_texts) {}

    template <typename List>
    void list(std::string_view reader, const List& records) {
        sum_up(reader, static_cast<std::size_t>(std::ranges::distance(records)), records);
        if (!with_texts_) return;
        for (const auto& record : records) all_.back().texts.push_back(record_text(record));
    }
    template <typename Value>
    void value(std::string_view reader, const std::optional<Value>& value) {
        keep(reader, value.has_value() ? 1 : 0, value);
    }
    /// A record that is always there, and how many entries count as read.
    template <typename Record>
    void keep(std::string_view reader, std::size_t records, const Record& record) {
        sum_up(reader, records, record);
        if (with_texts_ && records > 0) all_.back().texts = {record_text(record)};
    }

    std::vector<Reading> take() { return std::move(all_); }

private:
    template <typename Record>
    void sum_up(std::string_view reader, std::size_t records, const Record& record) {
        tools::RecordSum sum;
        sum.add(record);
        all_.push_back({family_, reader, records, sum.bytes(), sum.digest()});
    }

    ReaderFamily family_;
    bool with_texts_;
    std::vector<Reading> all_;
};

using Files = std::span<const AudioFileEntry>;

struct ClipLists {
    SessionLists lists;
    std::vector<TrackTableRow> rows;
};

/// One image, and what several families need of it.
class Session {
public:
    Session(const BlockIndex& blocks, Files library_files) : index(blocks), files(library_files) {}

    const StripRows& strips() {
        if (!strips_) strips_ = readStripRows(index);
        return *strips_;
    }
    std::span<const BlockNode> tree() {
        if (!tree_) tree_ = parse_list_tree(index.image());
        return tree_->blocks();
    }
    const ClipLists& clips() {
        if (!clips_) {
            clips_.emplace();
            readSessionLists(index, tree(), files, clips_->lists, clips_->rows);
        }
        return *clips_;
    }

    const BlockIndex& index;
    Files files;

private:
    std::optional<StripRows> strips_;
    std::optional<BlockTree> tree_;
    std::optional<ClipLists> clips_;
};

std::vector<std::string> current_names(const std::vector<StripRow>& rows) {
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const StripRow& row : rows) names.push_back(row.current_name);
    return names;
}

void read_container(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const SessionVersion version = scanSessionVersion(index);
    out.keep("scanSessionVersion", version.version.empty() ? 0 : 1, version);
    const DamageReport damage = scanDamage(index);
    out.keep("scanDamage", damage.verdict == DamageVerdict::none ? 0 : 1, damage);
    const AudioFormat format = readAudioFormat(index);
    out.keep("readAudioFormat", format == AudioFormat::unknown ? 0 : 1, format);
    out.value("readBitDepth", readBitDepth(index));
    out.value("readPanDepth", readPanDepth(index));
    const int click = readClickSetting(index);
    out.keep("readClickSetting", click < 0 ? 0 : 1, click);
    out.list("readAudioFileFolders", readAudioFileFolders(index));
    const ColourSchemes colours = readColourSchemes(index);
    out.keep("readColourSchemes", colours.track.has_value() ? 1 : 0, colours);
}

void read_blocks(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    out.list("BlockIndex", index.blocks().all());
    out.list("parseBlockTree", parseBlockTree(index.image()).blocks());
}

void read_tracks(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const StripRows& strips = session.strips();
    out.list("readStripRows", strips.rows);
    out.list("readStripTable", readStripTable(index));
    out.list("read_track_names", read_track_names(index));
    out.list("readTrackDisplays", readTrackDisplays(index, strips.rows));
    out.list("readTrackColours", readTrackColours(index, strips.rows));
    std::vector<std::string> names;
    for (const TrackTableRow& row : session.clips().rows) names.push_back(row.name);
    const SessionTrackTable table = readTrackTable(index, names, strips);
    out.keep("readTrackTable", table.names.size(), table);
    std::vector<BindableStrip> bindable;
    for (const StripRow& row : strips.rows) bindable.push_back({row.current_name, row.start + 1});
    out.list("readNameBindings", readNameBindings(index, bindable));
    out.list("readInactiveNames", readInactiveNames(index));
    out.list("readVoiceOffNames", readVoiceOffNames(index, strips.rows));
    const std::string master = readMasterName(index);
    out.keep("readMasterName", master.empty() ? 0 : 1, master);
}

void read_mixer(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const auto& rows = session.strips().rows;
    out.list("read_channel_records", read_channel_records(index));
    const auto buses = readBuses(index);
    out.list("readBuses", buses);
    out.list("readStrips", readStrips(index, rows, current_names(rows), buses));
    const auto paths = readIoPaths(index);
    out.list("readIoPaths", paths);
    const auto routing = readRouting(index, rows, paths);
    out.list("readRouting", routing);
    out.list("readOutputNames", readOutputNames(index));
    out.list("readHardwareInserts", readHardwareInserts(index, rows));
}

void read_lanes(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    std::vector<Lane> lanes;
    std::vector<double> initials;
    for (const Block& block : index.of_type(block_type::lane).all()) {
        if (Lane lane; readLane(index.image(), block.at, lane)) lanes.push_back(std::move(lane));
        if (const auto initial = lane_initial(index.image(), block.at))
            initials.push_back(*initial);
    }
    out.list("readLane", lanes);
    out.list("lane_initial", initials);
    const auto& rows = session.strips().rows;
    auto strips = readStrips(index, rows, current_names(rows), {});
    readStripLanes(index, strips);
    std::size_t placed = 0;
    for (const Strip& strip : strips) placed += static_cast<std::size_t>(strip.lane_count);
    out.keep("readStripLanes", placed, strips);
}

void read_clips(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const ClipLists& clips = session.clips();
    out.list("readSessionLists regions", clips.lists.regions);
    out.list("readSessionLists MIDI regions", clips.lists.midi_regions);
    out.list("readSessionLists tracks", clips.lists.placements);
    out.list("readSessionLists MIDI tracks", clips.lists.midi_placements);
    out.list("readSessionLists MIDI track list", clips.lists.midi_track_rows);
    out.list("readSessionLists streams", clips.lists.midi_streams);
    out.list("readSessionLists track list", clips.rows);
    const auto walks = walk_playlists(index);
    const Playlists playlists = readPlaylists(walks, session.tree());
    out.keep("readPlaylists", playlists.records.size(), playlists);
    out.list("readPlaylistDetails", readPlaylistDetails(index.image(), walks));
    out.list("readFades", readFades(index));
    out.list("readRegionStarts", readRegionStarts(index.image(), session.tree()));
}

void read_clip_tables(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const ClipGains gains = readClipGains(index);
    out.keep("readClipGains", gains.entries.size(), gains);
    const WarpMaps warps = readWarpMaps(index);
    out.keep("readWarpMaps", warps.in_samples.size() + warps.in_ticks.size(), warps);
    out.list("readPitchShifts", readPitchShifts(index));
    out.list("readLoopRecords", readLoopRecords(index));
    const ClipEffects effects = readClipEffects(index);
    out.keep("readClipEffects", effects.records.size(), effects);
    const ClipGroups groups = readClipGroups(index);
    out.keep("readClipGroups clips", groups.clips.size(), groups.clips);
    out.keep("readClipGroups lists", groups.lists.size(), groups.lists);
    out.list("readAltPlaylists", readAltPlaylists(index));
}

void read_time(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const TempoRecords tempo = readTempoMap(index);
    out.keep("readTempoMap", tempo.points.size(), tempo);
    const double default_tempo = readDefaultTempo(index);
    out.keep("readDefaultTempo", default_tempo > 0 ? 1 : 0, default_tempo);
    out.list("readMeterMap", readMeterMap(index));
    out.list("readMemoryLocations", readMemoryLocations(index));
    out.value("readFrameRate", readFrameRate(index));
    out.value("readExtendedTimecode", readExtendedTimecode(index));
    out.value("readGridAndNudge", readGridAndNudge(index));
}

void read_midi(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const ByteView image = index.image();
    const BlockTree whole = parseBlockTree(image);
    const auto tree = whole.blocks();
    const auto& rows = session.strips().rows;
    const auto streams = read_midi_streams(image, tree);
    out.list("read_midi_streams", streams);
    const auto regions = read_midi_regions(image, tree, streams);
    out.list("read_midi_regions", regions);
    out.list("readMidiChunks", readMidiChunks(index));
    const MidiPlaylists playlists = readMidiPlaylists(index);
    out.keep("readMidiPlaylists", playlists.details.size(), playlists);
    out.list("readMidiClipCounts", readMidiClipCounts(index));
    out.list("readMidiPlaylistRows", readMidiPlaylistRows(index));
    const auto tracks = read_midi_track_rows(index);
    out.list("read_midi_track_rows", tracks);
    out.list("read_midi_clips", read_midi_clips(image, tree, tracks, regions));
    out.list("readMidiOutputs", readMidiOutputs(index));
    out.list("readMidiSettings", readMidiSettings(index, rows));
    out.list("readRealTimeProperties", readRealTimeProperties(index, rows));
    out.list("readInstrumentLinks", readInstrumentLinks(index, rows));
}

void read_tables(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const auto& rows = session.strips().rows;
    out.list("readGroups", readGroups(index));
    const auto folders = readFolderTable(index);
    out.keep("readFolderTable", folders ? folders->size() : 0, folders);
    out.list("readVcaSlots", readVcaSlots(index, rows));
    out.list("readVideoFiles", readVideoFiles(index));
    out.list("readVideoPaths", readVideoPaths(index));
    const VideoClips video = readVideoClips(index);
    out.keep("readVideoClips", video.clips.size(), video);
    out.list("read_video_regions", read_video_regions(index));
    out.list("read_movie_list", read_movie_list(index));
    out.value("readVideoRate", readVideoRate(index));
    out.value("readVideoQuality", readVideoQuality(index));
    const auto names = current_names(rows);
    out.list("readFreezeRenders", readFreezeRenders(index, names));
}

void read_plugins(Session& session, Readings& out) {
    const BlockIndex& index = session.index;
    const auto inserts = read_plugin_inserts(index);
    out.list("read_plugin_inserts", inserts);
    std::vector<std::map<std::string, double>> maps;
    for (const PluginInsert& insert : inserts) {
        auto map = read_elck_map(index.image(), insert.blockStart, insert.chunkLimit);
        if (!map.empty()) maps.push_back(std::move(map));
    }
    out.list("read_elck_map", maps);
    out.list("read_plugin_names", read_plugin_names(index));
}

using FamilyReader = void (*)(Session&, Readings&);

constexpr std::array<FamilyReader, reader_family_names.size()> family_readers = {
    read_container,   read_blocks, read_tracks, read_mixer,  read_lanes,  read_clips,
    read_clip_tables, read_time,   read_midi,   read_tables, read_plugins};

std::vector<Reading> read_family_of(Session& session, std::size_t family, bool with_texts) {
    Readings readings(static_cast<ReaderFamily>(family), with_texts);
    family_readers[family](session, readings);
    return readings.take();
}

}  // namespace

std::vector<Reading> read_family(const BlockIndex& index, ReaderFamily family, Files files) {
    Session session(index, files);
    return read_family_of(session, static_cast<std::size_t>(family), false);
}

std::vector<Reading> read_everything(const BlockIndex& index, Files files, bool with_texts) {
    Session session(index, files);
    std::vector<Reading> all;
    for (std::size_t family = 0; family < family_readers.size(); ++family) {
        const auto some = read_family_of(session, family, with_texts);
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

}  // namespace tanrove
