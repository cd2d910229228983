// The table of alternate playlists. The program tells alternates by their playlists' names; this is
// for those who look into a session (tools/session_dump).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct AltPlaylistEntry {
    std::string name;
    std::uint32_t value = 0;  ///< as stored
};

/// The table's entries in their order, up to the first that does not fit. Empty where the session
/// has no table or an empty one.
std::vector<AltPlaylistEntry> readAltPlaylists(const BlockIndex& index);

}  // namespace tanrove
