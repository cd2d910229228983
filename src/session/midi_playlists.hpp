// MIDI playlists: what MIDI clips lie on which track.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/playlists.hpp"

namespace tanrove {

/// All MIDI playlists (0x1057): records with their counts, and details in step with them. One of a
/// list (0x1058) that cannot be read keeps its place there without rows. Positions in ticks are
/// distances from the origin, whichever side of it they lie on.
struct MidiPlaylists {
    Playlists playlists;
    std::vector<PlaylistDetail> details;
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
