// The routing of the strips: what each plays into, what it sends and what it takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "session/automation_lanes.hpp"
#include "session/block_index.hpp"
#include "session/io_paths.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

struct RoutingSend {
    std::string target;  ///< name of the output or bus; empty where it cannot be read
    std::uint64_t target_identity = 0;
    double level_db = 0;
    bool pre_fader = false;
    bool muted = false;  ///< the mute word of the send's channel record
    Lane level_lane;
    Lane mute_lane;
    Lane pan_lane;
    Lane pan_right_lane;
    std::int32_t pan = 0;  ///< -100 left to 100 right; the left knob of a stereo send
    std::int32_t pan_right = 0;
    int pan_kind = 0;  ///< knobs that count: 0 none, 1 mono, 2 stereo
    bool mono_flag = false;
};

struct RoutingRow {
    std::size_t start = 0;  ///< span of the strip row
    std::size_t end = 0;
    std::size_t strip_row = 0;  ///< index among the strip rows
    std::string name;           ///< under which the strip was made
    std::string output_name;    ///< empty where there is none or it cannot be read
    std::uint64_t output_identity = 0;
    bool has_slot = false;    ///< the row holds a send channel of its own
    bool has_output = false;  ///< false on a track that plays into nothing
    std::string input_name;   ///< empty where no path is known for the input
    std::uint32_t input_identity_low = 0;
    std::uint32_t input_identity_high = 0;
    std::uint32_t input_type = 0;
    std::size_t input_position = 0;  ///< of the input's name in the image
    std::vector<RoutingSend> sends;
};

/// One row for each strip row of type 0x261b or 0x2621, in their order. Slots, lanes and inputs
/// belong to the smallest row, or slot, that holds them.
std::vector<RoutingRow> readRouting(const BlockIndex& index, const std::vector<StripRow>& rows,
                                    const std::vector<IoPath>& paths);

}  // namespace tanrove
