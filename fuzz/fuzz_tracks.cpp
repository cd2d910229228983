// The readers of tracks: strip rows, strip table, track list, displays, names.
#include "fuzz/reader_promises.hpp"
#include "session/strip_rows.hpp"
#include "session/track_displays.hpp"
#include "session/track_names.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::tracks);

    const auto rows = readStripRows(index).rows;
    std::size_t start = 0;
    for (const StripRow& row : rows) {
        promise(row.start >= start && row.start < row.end && row.end <= size, "rows ascend inside");
        start = row.start + 1;
    }
    promise(readTrackDisplays(index, rows).size() == rows.size(), "a display for each row");
    promise(readTrackColours(index, rows).size() <= rows.size(), "a colour for a row at most");
    for (const TrackName& track : read_track_names(index)) {
        promise(!track.name.empty() && track.channels.size() <= 64, "tracks have names and widths");
    }
    return 0;
}
