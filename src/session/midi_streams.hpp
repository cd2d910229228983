// The note streams of a session. MIDI clips hold no notes of their own: each plays a part of one of
// these streams, which it names by its place in the list.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/byte_view.hpp"
#include "session/block_tree.hpp"
#include "session/record_forms.hpp"

namespace tanrove {

/// A note. Times are ticks, or samples where the clip lies on a sample-based track.
struct MidiEvent {
    std::int64_t position = 0;  ///< from the stream's origin; below 0 for a note stored before it
    std::int64_t length = 0;
    std::uint8_t note = 0;
    std::uint8_t velocity = 0;
};

/// One stream. Its first note stands at the origin.
struct MidiStream {
    std::uint64_t origin = tick_origin;  ///< as stored; `tick_origin` where there are no notes
    std::int64_t end = 0;                ///< the greatest position plus length
    std::vector<MidiEvent> events;
};

/// All streams, in the order in which regions count them; an empty stream counts too. `tree` is
/// the image's. A note list that is longer than its block is read as far as the block goes.
std::vector<MidiStream> read_midi_streams(ByteView image, std::span<const BlockNode> tree);

}  // namespace tanrove
