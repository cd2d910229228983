// What the timeline is laid out from: the session's clip records and what the run wants of them.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "session/clip_gains.hpp"
#include "session/clip_groups.hpp"
#include "session/fades.hpp"
#include "session/loop_records.hpp"
#include "session/pitch_shifts.hpp"
#include "session/playlists.hpp"
#include "session/region_starts.hpp"
#include "session/session_lists.hpp"
#include "session/tempo_map.hpp"
#include "session/warp_maps.hpp"

namespace tanrove {

/// The records that placing needs; views on lists that outlive the clips, which bear their names.
struct TimelineInput {
    std::span<const TrackTableRow> track_rows;   ///< the track list, in its order
    std::span<const ClipTrack> placements;       ///< `SessionLists::placements`
    std::span<const Region> regions;             ///< the audio regions
    std::span<const AudioFileEntry> files;       ///< what the regions' `file` counts
    std::span<const PlaylistRecord> records;     ///< playlists: name and timebase
    std::span<const std::uint32_t> clip_counts;  ///< placements of each record
    std::span<const PlaylistDetail> edit_lists;  ///< in step with `records`
    std::span<const FadeRecord> fades;
    const ClipGroups* clip_groups = nullptr;   ///< none: groups are not laid out
    std::span<const RegionStart> sync_points;  ///< one a region where they are of use
    const ClipGains* gains = nullptr;          ///< none: every clip plays its file as it is
    std::span<const LoopRecord> loops;
    const WarpMaps* warp_maps = nullptr;        ///< null: none
    const PitchShifts* pitch_shifts = nullptr;  ///< null: none
    TempoMap tempo_map;                         ///< empty where the session keeps one tempo
    double default_tempo = default_tempo_bpm;
    double rate_hz = 48000;        ///< above 0
    bool keep_fade_clips = false;  ///< leave the rendered files of fades on their tracks
    bool no_stretch = false;       ///< leave every clip at its file's speed
    bool no_fades = false;         ///< bind no fades
    bool plain_fades = false;      ///< write every fade as the nearest that REAPER has
};

}  // namespace tanrove
