// Everything one conversion reads from a session, in the session's own units, decided by no one.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "mix/strip_insert.hpp"
#include "plugins/plugin_insert.hpp"
#include "ptformat/ptformat.hpp"
#include "session/audio_file_folders.hpp"
#include "session/block_index.hpp"
#include "session/clip_gains.hpp"
#include "session/clip_groups.hpp"
#include "session/colour_schemes.hpp"
#include "session/fades.hpp"
#include "session/folder_table.hpp"
#include "session/grid_and_nudge.hpp"
#include "session/groups.hpp"
#include "session/hardware_inserts.hpp"
#include "session/loop_records.hpp"
#include "session/master_strip.hpp"
#include "session/memory_locations.hpp"
#include "session/meter_map.hpp"
#include "session/midi_chunks.hpp"
#include "session/midi_outputs.hpp"
#include "session/midi_playlists.hpp"
#include "session/midi_track_settings.hpp"
#include "session/pitch_shifts.hpp"
#include "session/playlists.hpp"
#include "session/real_time_properties.hpp"
#include "session/region_starts.hpp"
#include "session/session_lists.hpp"
#include "session/session_settings.hpp"
#include "session/strip_rows.hpp"
#include "session/strip_table.hpp"
#include "session/strips.hpp"
#include "session/tempo_map.hpp"
#include "session/timecode.hpp"
#include "session/track_displays.hpp"
#include "session/track_name_set.hpp"
#include "session/track_table.hpp"
#include "session/vca_slots.hpp"
#include "session/video_clips.hpp"
#include "session/warp_maps.hpp"

namespace tanrove {

/// The clip data: regions, tracks and what lies on them.
struct ClipRecords {
    std::vector<AudioFileEntry> files;
    SessionLists lists;
    std::vector<TrackTableRow> track_rows;
    AudioFileFolders folders;
    Playlists playlists;
    std::vector<PlaylistDetail> details;
    std::vector<FadeRecord> fades;
    std::vector<RegionStart> region_starts;
    ClipGains gains;
    ClipGroups clip_groups;
    WarpMaps warp_maps;
    PitchShifts pitch_shifts;
    std::vector<LoopRecord> loops;
};

/// The time frame.
struct TimeRecords {
    TempoMap tempo_map;  ///< empty where one tempo holds throughout
    double tempo_bpm = default_tempo_bpm;
    bool first_tempo_refused = false;
    TempoBreak tempo_breaks_off;
    std::vector<MeterPoint> meters;
    std::vector<MemoryLocation> locations;
    std::optional<FrameRate> frame_rate;
    std::optional<ExtendedTimecode> extended_timecode;
    std::optional<GridAndNudge> grid;
    AudioFormat audio_format = AudioFormat::unknown;
    std::optional<BitDepth> bit_depth;
    std::optional<int> pan_depth;
};

/// The mixer's list of strips, and the session's track table beside it.
struct StripRecords {
    StripRows strips;
    std::vector<StripTableEntry> table;
    SessionTrackTable track_table;
    TrackNameSet inactive_names;
    TrackNameSet voice_off_names;
    std::vector<GroupRecord> groups;
    VcaSlots vca_slots;
    std::optional<FolderTable> folder_table;
    std::vector<TrackDisplay> displays;  ///< one a strip row
    std::vector<PluginInsert> inserts;
    std::vector<std::optional<std::size_t>> insert_rows;  ///< the strip row of each
    std::vector<HardwareInsert> hardware_inserts;
    std::vector<StripInsert> strip_inserts;  ///< those and the hardware inserts, by strip
    bool click_is_on = false;
    MasterStrips masters;
    ColourSchemes colour_schemes;
    std::vector<TrackColour> colours;  ///< of the tracks that have one
};

/// What the clips of MIDI tracks play, how they lie there, and what their tracks do with it.
struct MidiRecords {
    std::vector<MidiChunk> chunks;
    std::vector<PlaylistDetail> playlists;
    std::vector<MidiPlaylistRow> playlist_rows;
    std::vector<MidiOutput> outputs;
    std::map<std::string, int> clip_groups;     ///< on the MIDI playlists of each name
    std::vector<MidiTrackSettings> settings;    ///< in step with the strip rows
    std::vector<RealTimeProperties> real_time;  ///< likewise
    std::size_t other_lanes = 0;                ///< automation of MIDI tracks beside their mute
};

/// The picture: its tracks, its movies and where these lay.
struct VideoRecords {
    VideoClips clips;
    std::vector<VideoRegion> regions;
    VideoInfo info;
    std::map<std::string, std::string> paths;  ///< of movies, by file name
};

/// `file` gives the audio file list, and its own regions and tracks for an image whose lists the
/// program's reader refuses.
ClipRecords read_clips(const PTFFormat& file, const BlockIndex& index);

/// `tempo_override` above 0 takes the place of the session's tempo; a map of several tempos stands.
/// A map whose first event stands behind the origin opens with that event's tempo.
TimeRecords read_time(const BlockIndex& index, double tempo_override);

StripRecords read_strip_records(const BlockIndex& index, const ClipRecords& clips);

MidiRecords read_midi(const BlockIndex& index, const StripRecords& strips);
VideoRecords read_video(const BlockIndex& index);

/// Plug-ins on the strip of this row.
int insert_count(const StripRecords& records, std::size_t row);

/// The mixer's strips with their automation lanes.
std::vector<Strip> read_mixer(const BlockIndex& index, const StripRecords& strips);

}  // namespace tanrove
