// MIDI playlists: what MIDI clips lie on which track.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/playlists.hpp"

namespace tanrove {

/// The edit list of one MIDI playlist: parallel lists, one entry a placement.
struct MidiPlaylistDetail {
    std::string name;
    bool is_read = true;                    ///< false: it breaks a limit, and only keeps its place
    bool in_ticks = false;                  ///< true: positions are ticks; false: samples
    std::vector<std::uint32_t> region_ids;  ///< a region, or a clip group
    std::vector<std::int32_t> colours;      ///< `no_colour` for none
    std::vector<std::uint32_t> is_fade;
    std::vector<std::uint32_t> overlap;   ///< 1 to 3, `overlap_over_next` and so on
    std::vector<std::uint32_t> in_group;  ///< not 0: `region_ids` holds a clip group's index
    std::vector<std::uint32_t> muted;
    std::vector<std::uint32_t> locked;
    /// Samples, or ticks as their distance from the origin, whichever side of it they lie on.
    std::vector<std::uint64_t> positions;
};

/// All MIDI playlists (0x1057): records with their counts, and details in step with them. One of a
/// list (0x1058) that cannot be read keeps its place there without placements.
struct MidiPlaylists {
    Playlists playlists;
    std::vector<MidiPlaylistDetail> details;
};

MidiPlaylists readMidiPlaylists(const BlockIndex& index);

/// How many rows with a clip group the MIDI playlists of each name hold.
std::map<std::string, int> readMidiClipCounts(const BlockIndex& index);

/// One placement of a MIDI playlist, whatever the playlist's kind.
struct MidiPlaylistRow {
    std::string playlist;
    std::uint32_t region = 0;
    std::uint64_t position = 0;  ///< as stored
};

std::vector<MidiPlaylistRow> readMidiPlaylistRows(const BlockIndex& index);

}  // namespace tanrove
