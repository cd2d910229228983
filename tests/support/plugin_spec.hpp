// The plain description of the plug-ins on a track of a built session.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"

namespace tanrove::builder {

/// The automation of one control.
struct PluginLaneSpec {
    struct Point {
        std::int64_t position = 0;  ///< samples, or ticks from the session's origin
        std::int32_t value = 0;     ///< -2^30 to 2^30 over the range of the control
    };

    std::string name = "Gain";
    std::uint32_t index = 1;
    std::string id = "0";  ///< empty: an older part, which has none
    std::int32_t default_value = 0;
    std::vector<Point> points = {};
    bool in_ticks = false;
    bool is_bypass = false;
    std::uint8_t steps = 0;  ///< none for a control that moves freely
};

/// One plug-in.
struct InsertSpec {
    std::string code = "DigiTest";  ///< maker and product
    std::uint8_t channels = 2;
    Bytes state = {};         ///< all chunks; none: one chunk of small bytes
    std::size_t padding = 0;  ///< zeros in the block behind the state
    bool active = true;
    bool bypassed = false;
    std::optional<std::uint16_t> key_input = {};  ///< none: the slot has no record of it
    std::vector<PluginLaneSpec> lanes = {};
};

/// One name of the session's plug-ins.
struct PluginNameSpec {
    std::string name;
    std::string code;  ///< maker and product
    std::string build = "Poly";
};

}  // namespace tanrove::builder
