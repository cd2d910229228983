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
    /// Place of the path that this one is a part of, as stored: it counts the inputs, the hardware
    /// outputs and then the session's own paths.
    std::optional<std::uint16_t> parent;
    std::uint64_t parent_identity = 0;  ///< own paths only; 0 if it is a part of none
    /// Own paths only: the hardware's that it plays to, or played to on other machines.
    std::vector<std::uint64_t> hardware;
    std::uint8_t width_code = 0;  ///< 0 mono, 1 stereo, 6 is 5.1
    std::size_t position = 0;
    bool own = false;     ///< of the session's own path table, where all are of type 2
    bool mapped = false;  ///< an own path that plays to the hardware, or a part of one

    std::uint64_t identity() const {
        return std::uint64_t{identity_high} << 32 | std::uint64_t{identity_low};
    }
};

/// All paths: the session's own first, then, in order of position, what stands beside them: the
/// hardware's, and every bus where the session has no table of its own. Of those the second of two
/// that say the same is left out.
std::vector<IoPath> readIoPaths(const BlockIndex& index);

}  // namespace tanrove
