// Where MIDI tracks can send their events: the ports of interfaces and the plug-ins that take MIDI.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// One MIDI output. MIDI tracks name theirs by its place in the list, counted from 1.
struct MidiOutput {
    std::string name;         ///< empty where none is stored
    std::int32_t number = 0;  ///< the stored number, counted from 1; 0 without a name
    bool is_plugin_node = false;
    std::int32_t node_value = 0;  ///< which plug-in; 0 on ports
    std::uint8_t port_code = 0;

    bool operator==(const MidiOutput&) const = default;
};

/// All outputs; one without a name counts too. Empty where the session has none.
std::vector<MidiOutput> readMidiOutputs(const BlockIndex& index);

}  // namespace tanrove
