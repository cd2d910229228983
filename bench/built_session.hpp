// The sessions that the benchmarks run on: made once a size, of tracks full of short clips.
#pragma once

#include <cstddef>

#include "support/session_builder.hpp"

namespace tanrove::bench {

/// `tracks` mono tracks of `clips_per_track` clips each, one tempo change a bar.
builder::SessionBuilder session_of(std::size_t tracks, std::size_t clips_per_track);

/// The same number of clips, each over or crossfaded with the next.
builder::SessionBuilder edited_session_of(std::size_t tracks, std::size_t clips_per_track);

/// Two instrument tracks of `clips` MIDI clips together, each with a stream of `notes_per_clip`
/// notes.
builder::SessionBuilder midi_session_of(std::size_t clips, std::size_t notes_per_clip);

}  // namespace tanrove::bench
