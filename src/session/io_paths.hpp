// The I/O paths: inputs, outputs and buses, with the channels they run on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Values of `IoPath::type`.
constexpr std::uint32_t input_path_type = 0;
constexpr std::uint32_t output_path_type = 1;
constexpr std::uint32_t bus_path_type = 2;
constexpr std::uint32_t insert_path_type = 3;
constexpr std::uint32_t other_output_path_type = 6;

struct IoPath {
    std::uint32_t identity_low = 0;  ///< both 0 if the record has none
    std::uint32_t identity_high = 0;
    std::uint32_t type = 0;
    std::string name;
    std::vector<std::uint16_t> channels;  ///< at most 16
    /// Place of the path that this one is a part of, as stored. Sessions that were opened on other
    /// hardware count paths that they do not hold, so that it names the wrong one there: tell a
    /// bus's legs by their channels.
    std::optional<std::uint16_t> parent;
    std::uint8_t width_code = 0;  ///< 0 mono, 1 stereo, 6 is 5.1
    std::size_t position = 0;
};

/// All paths, in order of position; the second of two that say the same is left out.
std::vector<IoPath> readIoPaths(const BlockIndex& index);

}  // namespace tanrove
