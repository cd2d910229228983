// Reads the routing, and joins the key inputs of plug-ins with their strips and buses.
#include "run/routing_records.hpp"

#include "session/instrument_links.hpp"
#include "session/output_names.hpp"

namespace tanrove {

namespace {

/// A plug-in names its key by the number of an output; the outputs themselves say which bus it is.
/// REAPER's master hears no key, so those of a master fader's plug-ins ask for no bus.
std::vector<KeyInput> key_inputs(const BlockIndex& index, const StripRecords& strips) {
    const auto bus_of_output = readOutputNames(index);
    std::vector<KeyInput> keys;
    for (std::size_t i = 0; i < strips.inserts.size(); ++i) {
        const PluginInsert& insert = strips.inserts[i];
        const auto row = strips.insert_rows[i];
        if (insert.keyInput < 0 || !row) continue;
        if (strips.strips.rows[*row].type == StripRowType::master) continue;
        KeyInput key{.strip_row = *row, .bus = {}, .bus_identity = 0};
        const auto bus = bus_of_output.find(static_cast<std::uint16_t>(insert.keyInput));
        if (bus != bus_of_output.end()) {
            key.bus = bus->second.name;
            key.bus_identity = bus->second.identity;
        }
        keys.push_back(std::move(key));
    }
    return keys;
}

}  // namespace

RoutingRecords read_routing_records(const BlockIndex& index, const StripRecords& strips) {
    RoutingRecords records;
    records.paths = readIoPaths(index);
    records.rows = readRouting(index, strips.strips.rows, records.paths);
    records.keys = key_inputs(index, strips);
    return records;
}

void note_unroutable(const BlockIndex& index, const std::vector<StripRow>& strips,
                     const std::vector<HardwareInsert>& hardware, RoutingTallies& tallies) {
    for (const HardwareInsert& insert : hardware) {
        tallies.hardware_inserts.push_back(insert.track + ": " + insert.name);
    }
    for (const InstrumentLink& link : readInstrumentLinks(index, strips)) {
        tallies.tracks_of_instruments.push_back(link.midi_track);
    }
}

}  // namespace tanrove
