// The MIDI regions: named stretches of the note streams, and the groups that stand for one.
#pragma once

#include <span>
#include <vector>

#include "base/byte_view.hpp"
#include "session/block_tree.hpp"
#include "session/midi_streams.hpp"
#include "session/session_lists.hpp"

namespace tanrove {

/// The regions, plain ones first. `start` is the tick origin; `source_offset` is how far behind the
/// region's head the stream's first note lies, below 0 where it lies before; `midi_stream` names
/// the stream, whose notes are not copied: many regions may play one stream.
/// A region whose record or stream does not exist is left out and keeps its number: `index`
/// ascends, with a gap there.
std::vector<Region> read_midi_regions(ByteView image, std::span<const BlockNode> tree,
                                      std::span<const MidiStream> streams);

}  // namespace tanrove
