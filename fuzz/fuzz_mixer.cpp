// The readers of the mixer: channels, strips, routing, buses, I/O paths, hardware inserts.
#include <algorithm>

#include "fuzz/reader_promises.hpp"
#include "session/buses.hpp"
#include "session/channel_records.hpp"
#include "session/io_paths.hpp"
#include "session/routing.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::mixer);

    for (const ChannelRecord& channel : read_channel_records(index)) {
        promise(channel.fader_db >= -145 && channel.fader_db <= 12.5, "faders are in range");
        promise(channel.at < channel.end && channel.end <= size, "records lie in the image");
    }
    const auto buses = readBuses(index);
    promise(std::is_sorted(buses.begin(), buses.end()), "buses are sorted");
    const auto paths = readIoPaths(index);
    for (const IoPath& path : paths) promise(path.channels.size() <= 16, "paths are not wider");
    const auto rows = readStripRows(index).rows;
    const auto routing = readRouting(index, rows, paths);
    for (const RoutingRow& row : routing) promise(row.strip_row < rows.size(), "rows are strips'");
    return 0;
}
