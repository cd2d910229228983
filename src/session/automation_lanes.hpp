// Automation lanes. A lane does not say what it moves: that comes from its place among the lanes of
// its strip or send.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

constexpr std::size_t lane_point_bytes = 6;

struct LanePoint {
    double position = 0;  ///< samples, or ticks from the session's origin (`Lane::in_ticks`)
    double value = 0;     ///< as stored: tenths of a dB; -100 to 100 for pan; 0 and 1 for mute
};

struct Lane {
    std::vector<LanePoint> points;
    double initial = 0;     ///< in the unit of the values
    bool in_ticks = false;  ///< the times are ticks: a lane of a tick-based track

    bool moves() const { return !points.empty(); }
};

/// Stands for "however many points there are".
constexpr std::size_t any_points = static_cast<std::size_t>(-1);

/// Reads the lane at `position` into `lane`: a lane read twice adds to its points. Does nothing and
/// gives false if no lane stands there; one whose points do not fit its block, or are more than
/// `max_points`, gives its initial value alone.
bool readLane(ByteView image, std::size_t position, Lane& lane,
              std::size_t max_points = any_points);

/// True if the lanes of two pan knobs, which are hard left and hard right, never leave them.
bool stay_hard_panned(const Lane& left, const Lane& right);

/// The initial value alone of the lane at `position`; nullopt if no lane stands there.
std::optional<double> lane_initial(ByteView image, std::size_t position);

/// The lanes of one span by their groups: positions, ascending.
struct LaneGroups {
    std::vector<std::size_t> flat;  ///< in no group
    std::vector<std::vector<std::size_t>> groups;
    bool any_group_multiple = false;  ///< a group holds more than one lane: a surround panner's
};

/// A wide strip with two surround panners has some forty lanes; what stands behind these limits in
/// one span is damage: further lanes are left out, and those of further groups count as flat.
constexpr std::size_t max_lanes_in_span = 256;
constexpr std::size_t max_groups_in_span = 64;

/// The lanes and groups that lie wholly in the payload of a block from `start` to `end`. A lane
/// belongs to the first group that holds it.
LaneGroups sortLanes(const BlockIndex& index, std::size_t start, std::size_t end);

/// Reads lanes for many owners. Each lane goes to the first owner that asks for it, so that the
/// points of a damaged session, whose spans overlap, are not handed out over and over; and all of
/// them together have no more points than the image has room for.
class LaneReader {
public:
    explicit LaneReader(const BlockIndex& index);

    /// True if no other owner has the lane.
    bool is_open_to(std::size_t position, std::size_t owner);

    /// Fills `lane`; false if no lane stands there, or another owner has it.
    bool read(std::size_t position, std::size_t owner, Lane& lane);

private:
    /// Whose the lane at this position is; null where none stands.
    std::size_t* owner_of(std::size_t position);

    ByteView image_;
    const BlockList& lanes_;
    std::vector<std::size_t> owners_;  ///< of each lane
    std::size_t points_left_;
};

/// How a strip's or a send's group lanes are to be counted.
enum class LaneShape : std::int8_t {
    master = -1,    ///< takes none, and has no trim
    one_knob = 0,   ///< the first group lane
    two_knobs = 1,  ///< the first lanes of two groups
    none = 2,
};

/// The shape of the span of `holder`, which is no master fader's and whose lanes are `lanes`.
LaneShape lane_shape(const BlockIndex& index, const Block& holder, const LaneGroups& lanes);

}  // namespace tanrove
