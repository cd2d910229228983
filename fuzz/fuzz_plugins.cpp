// The readers of plug-ins: inserts with their states and lanes, parameter maps, names.
#include "fuzz/reader_promises.hpp"
#include "plugins/plugin_inserts.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::plugins);

    std::size_t points = 0;
    for (const PluginInsert& insert : read_plugin_inserts(index)) {
        promise(insert.blockStart < insert.chunkLimit && insert.chunkLimit <= size, "limits");
        promise(insert.chunkOffset + insert.chunkSize <= insert.chunkLimit, "states end in time");
        promise(insert.elckOffset + insert.elckSize <= insert.chunkLimit, "so do chunks");
        promise(insert.keyInput >= -1 && insert.keyInput < 0xffff, "key inputs are short");
        for (const PluginLane& lane : insert.lanes) {
            promise(!lane.name.empty(), "lanes have names");
            points += lane.points.size();
        }
    }
    promise(points <= size / 8, "points are bytes of the image, and of one lane each");
    return 0;
}
