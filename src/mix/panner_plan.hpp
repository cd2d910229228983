// The panner of a mono or stereo track that plays into a surround bus, as Pro Tools has it set, and
// what REAPER's panner has to be told for the same.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "session/automation_lanes.hpp"
#include "session/channel_records.hpp"

namespace tanrove {

/// One automated parameter of REAPER's panner.
struct PannerEnvelope {
    struct Point {
        double seconds = 0;  ///< 0 or later
        double value = 0;    ///< 0 to 1
    };

    std::uint32_t id = 0;
    std::string name;     ///< REAPER's mark of the parameter
    std::string display;  ///< its name as REAPER shows it
    bool runs_down = false;
    std::vector<Point> points;  ///< from time 0 on; two at one time where the value jumps
};

/// What the panner's state holds as the share of the sides: the session knows no other.
constexpr double whole_side = 1;

/// Positions are -100 left or rear to 100 right or front; divergences and the center are
/// percentages.
struct PannerPlan {
    std::int32_t channels = 0;  ///< of the bus
    /// Of the track, from 0, the first that the panner plays on. Sends leave a track on its first
    /// pair, and Pro Tools takes them in front of the panner: it stays behind that pair then.
    std::int32_t first_channel = 0;
    std::vector<std::string> speakers;  ///< of its channels, in their order
    bool is_stereo = false;
    std::int32_t front_x = 0;
    std::int32_t rear_x = 0;
    std::int32_t front_rear = 0;
    std::int32_t front_divergence = 0;
    std::int32_t rear_divergence = 0;
    std::int32_t front_rear_divergence = 0;
    std::int32_t center_percent = 0;
    // The right channel of a stereo track.
    std::int32_t right_front_x = 0;
    std::int32_t right_rear_x = 0;
    std::int32_t right_front_rear = 0;
    std::int32_t right_front_divergence = 0;
    std::int32_t right_rear_divergence = 0;
    std::int32_t right_front_rear_divergence = 0;
    double side_percent = whole_side;
    bool has_lfe = false;
    double lfe_db = 0;
    std::vector<Lane> lanes;  ///< the seven numbers of a mono track as they move, or none
    Lane lfe_lane;            ///< tenths of a dB
    std::vector<PannerEnvelope> envelopes;
};

/// An input of REAPER's panner.
struct PannerInput {
    double x = 0;           ///< -1 left to 1 right
    double y = 0;           ///< -1 rear to 1 front
    double divergence = 0;  ///< 0 wide to 1 in one place
    double lfe_gain = 0;    ///< linear, 0 to 4
};

/// The place of the first input of the panner, or of its second.
PannerInput panner_input(const PannerPlan& plan, bool is_right);

/// The numbers that a parameter of REAPER's panner follows from, in the order of Pro Tools' lanes,
/// the LFE's level behind them.
constexpr std::size_t panner_value_count = panner_control_count + 1;
using PannerValues = std::array<double, panner_value_count>;

/// A parameter of REAPER's panner that Pro Tools' lanes move.
struct PannerParameter {
    std::uint32_t id = 0;
    const char* name = "";
    const char* display = "";
    bool runs_down = false;
    std::vector<std::size_t> lanes;  ///< that it depends on, by their places among the values
    double (*value)(const PannerValues& values) = nullptr;  ///< may leave 0 to 1
};

/// The parameters in the order of their ids.
const std::vector<PannerParameter>& panner_parameters();

/// What the number at this place of the values, as stored, counts as: positions and percentages
/// end where Pro Tools' knobs do.
double held_panner_value(std::size_t place, double stored);

}  // namespace tanrove
