// Reads the plug-ins of a chain back from REAPER's text: of a project, of a saved chain, of a track
// template. Written from what REAPER's own files look like, apart from the program's writer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tanrove::builder {

struct ReadParameterPoint {
    double seconds = 0;
    double value = 0;
    int shape = 0;
};

/// A `<PARMENV`.
struct ReadParameterEnvelope {
    std::string parameter;  ///< "3:3"
    std::string name;
    bool active = false;
    int default_shape = 0;
    std::vector<ReadParameterPoint> points = {};
};

/// A place of a chain, from its BYPASS to the line in front of the next one.
struct ReadSlot {
    std::vector<std::string> lines;   ///< the first word of each, a block's once
    std::vector<std::string> tokens;  ///< of the plug-in's line, without quotes
    bool bypassed = false;
    bool offline = false;
    std::string preset_name;
    std::string fxid;
    std::vector<std::string> values;  ///< of a JS
    std::string state;                ///< decoded

    // Of a VST.
    bool has_header = false;  ///< the header is a line of its own, and as long as it says
    std::uint32_t id = 0;
    std::uint32_t magic = 0;
    std::vector<std::uint64_t> pins_in;  ///< of each its channels
    std::vector<std::uint64_t> pins_out;
    std::uint32_t state_bytes = 0;
    std::uint32_t magic_flag = 0;
    std::uint32_t tail_word = 0;
    std::string tail;  ///< decoded

    std::vector<ReadParameterEnvelope> envelopes;
};

std::vector<ReadSlot> read_fx_slots(const std::string& text);

/// The bytes of a line; empty where it is no base64.
std::string base64_bytes(const std::string& line);

}  // namespace tanrove::builder
