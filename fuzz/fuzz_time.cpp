// The readers of the time frame: tempo, meter, memory locations, timecode, grid.
#include "fuzz/reader_promises.hpp"
#include "session/memory_locations.hpp"
#include "session/meter_map.hpp"
#include "session/tempo_map.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const BlockIndex index(input_view(data, size));
    promise_family(index, ReaderFamily::time);

    const TempoMap map = readTempoMap(index).points;
    const double default_bpm = readDefaultTempo(index);
    promise(default_bpm > 0, "there is always a tempo");
    const TempoClock clock(map, default_bpm);
    double seconds = clock.seconds(0);
    for (const TempoPoint& point : map) {
        promise(point.bpm > 0 && clock.seconds(point.tick) >= seconds, "time goes forward");
        seconds = clock.seconds(point.tick);
    }
    for (const MeterPoint& meter : readMeterMap(index)) {
        promise(meter.numerator > 0 && meter.denominator > 0, "meters are meters");
    }
    for (const MemoryLocation& location : readMemoryLocations(index)) {
        promise(location.kind <= LocationKind::selection, "locations are of a kind");
    }
    return 0;
}
