// The MIDI clips of a session and the tracks they lie on, for sessions that the program's own list
// reader cannot take.
#pragma once

#include <vector>

#include "ptformat/clip_lists.hpp"
#include "ptformat/container.hpp"
#include "ptformat/ptformat.hpp"

namespace tanrove::ptformat {

/// The MIDI regions: plain ones, then compound ones. All times in ticks; `start` is the ticks'
/// origin, 10^12.
std::vector<PTFFormat::Region> read_midi_regions(const Container& session);

/// One row per clip on a MIDI track, `start` in ticks from the session's origin.
std::vector<PTFFormat::Track> read_midi_tracks(const Container& session,
                                               const std::vector<PTFFormat::Region>& regions,
                                               TrackNames& names);

}  // namespace tanrove::ptformat
