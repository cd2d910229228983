// The readers of MIDI: streams, regions, chunks, playlists, settings, outputs, links.
#include "fuzz/reader_promises.hpp"
#include "session/block_tree.hpp"
#include "session/midi_chunk_dump.hpp"
#include "session/midi_playlists.hpp"
#include "session/midi_regions.hpp"
#include "session/midi_track_settings.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::midi);

    const BlockTree whole = parseBlockTree(index.image());
    const auto tree = whole.blocks();
    const auto streams = read_midi_streams(index.image(), tree);
    int last = -1;
    for (const Region& region : read_midi_regions(index.image(), tree, streams)) {
        promise(static_cast<std::size_t>(region.midi_stream) < streams.size(), "a region plays");
        promise(region.index > last, "regions ascend");
        last = region.index;
    }
    promise(!midi_chunk_dump(readMidiChunks(index)).empty(), "a dump has its sums");
    const MidiPlaylists playlists = readMidiPlaylists(index);
    promise(playlists.details.size() == playlists.playlists.records.size(), "lists run in step");
    const auto rows = readStripRows(index).rows;
    for (const MidiTrackSettings& settings : readMidiSettings(index, rows)) {
        promise(settings.volume >= -1 && settings.volume <= 127, "settings are MIDI values");
    }
    return 0;
}
