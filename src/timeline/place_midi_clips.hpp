// When the MIDI clips of each track play: their timebase, and which of two overlapping clips gives
// way. What they play is made from this.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/midi_playlists.hpp"
#include "session/session_lists.hpp"
#include "session/tempo_map.hpp"
#include "timeline/midi_tallies.hpp"

namespace tanrove {

/// The records that placing needs; views on lists that outlive the call.
struct MidiPlacingInput {
    std::span<const TrackTableRow> tracks;      ///< the MIDI and instrument tracks
    std::span<const ClipTrack> placements;      ///< `SessionLists::midi_tracks`
    std::span<const Region> regions;            ///< the MIDI regions
    std::span<const PlaylistDetail> playlists;  ///< their edit lists
    std::span<const MidiPlaylistRow> rows;      ///< positions as stored
    double rate_hz = 48000;                     ///< above 0
};

/// A MIDI clip in the unit of its stream: ticks, 960,000 to a quarter note, or samples.
struct PlacedMidiClip {
    std::uint32_t region = 0;        ///< place in the regions
    bool in_samples = false;         ///< its track is sample-based
    std::int64_t position = 0;       ///< from the session's origin, 0 or more
    std::int64_t length = 0;         ///< above 0
    std::int64_t source_offset = 0;  ///< from the clip's head to its stream's first note
    double start = 0;                ///< seconds
    double length_seconds = 0;
    bool muted = false;
    bool locked = false;
    std::int32_t colour_place = -2;
};

struct PlacedMidiTrack {
    std::string name;
    std::optional<bool> tick_based;     ///< nullopt where the session does not tell
    std::vector<PlacedMidiClip> clips;  ///< ordered by position
};

/// One entry a track, in their order. Clip groups and clips of no length make no clip.
std::vector<PlacedMidiTrack> place_midi_clips(const MidiPlacingInput& input,
                                              const TempoClock& clock, MidiTallies& tallies);

}  // namespace tanrove
