// A lane 0x260a, of a block size of 32 at least:
//
//   9    u8 1, u8 'F', u16 1
//   13   u32 bytes that follow offset 17, less two
//   17   u8 1 on a lane of a tick-based track
//   25   u16 count of points
//   27   5 bytes, the tick origin on a lane of a tick-based track
//   35   i16 initial value
//   37   the points, 6 bytes each: u32 position, i16 value
//
// The positions of a lane in samples count from the session's start. Those of a lane in ticks count
// from the tick origin, but for the few points in front of it and on it: there the 32 bits are the
// low ones of 10^12 plus the tick.
//
// A lane group 0x260c holds lanes; an empty one holds none.
#include "session/automation_lanes.hpp"

#include <algorithm>

#include "session/first_enclosing.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t lane_group_type = 0x260c;

constexpr double hard_left = -100;
constexpr double hard_right = 100;

constexpr std::uint32_t min_lane_size = 32;
constexpr std::size_t count_at = 25;
constexpr std::size_t ticks_mark_at = 27;
constexpr std::size_t ticks_mark_width = 5;
constexpr std::size_t initial_at = 35;
constexpr std::size_t points_at = 37;
constexpr std::size_t point_bytes = 6;
constexpr std::size_t value_in_point = 4;
constexpr std::size_t bytes_behind_points = 2;

constexpr std::int64_t tick_origin_low_bits = tick_origin & 0xffffffff;
constexpr std::int64_t ticks_in_front_of_origin = 128;

/// True if a lane stands at `position`.
bool is_lane_at(ByteView image, std::size_t position) {
    return isBlockAt(image, position, image.size()) &&
           image.u16(position + block_content_at) == lane_type &&
           image.u32(position + block_size_at) >= min_lane_size;
}

bool stays_at(const Lane& lane, double value) {
    return lane.initial == value &&
           std::all_of(lane.points.begin(), lane.points.end(),
                       [&](const LanePoint& point) { return point.value == value; });
}

/// The first `limit` blocks of the list that lie wholly between the two positions.
std::vector<Block> first_blocks(const BlockList& list, std::size_t from, std::size_t end,
                                std::size_t limit) {
    std::vector<Block> blocks;
    const Block* block = list.first_inside(from, end);
    for (; block != nullptr && blocks.size() < limit;
         block = list.first_inside(block->at + 1, end)) {
        blocks.push_back(*block);
    }
    return blocks;
}

}  // namespace

double lane_point_position(std::uint32_t stored, bool in_ticks) {
    const auto position = static_cast<std::int64_t>(stored);
    const bool counts_with_origin =
        in_ticks && position >= tick_origin_low_bits - ticks_in_front_of_origin;
    return static_cast<double>(counts_with_origin ? position - tick_origin_low_bits : position);
}

bool readLane(ByteView image, std::size_t position, Lane& lane) {
    if (!is_lane_at(image, position)) return false;
    const std::size_t bytes = image.u32(position + block_size_at) + block_size_base;
    const std::size_t count = image.u16(position + count_at);
    lane.in_ticks = image.number(position + ticks_mark_at, ticks_mark_width) == tick_origin;
    lane.initial = image.i16(position + initial_at);
    if (bytes < points_at + count * point_bytes + bytes_behind_points) return true;
    lane.points.reserve(lane.points.size() + count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = position + points_at + i * point_bytes;
        lane.points.push_back({lane_point_position(image.u32(point), lane.in_ticks),
                               static_cast<double>(image.i16(point + value_in_point))});
    }
    return true;
}

bool stay_hard_panned(const Lane& left, const Lane& right) {
    return stays_at(left, hard_left) && stays_at(right, hard_right);
}

std::optional<double> lane_initial(ByteView image, std::size_t position) {
    if (!is_lane_at(image, position)) return std::nullopt;
    return image.i16(position + initial_at);
}

LaneGroups sortLanes(const BlockIndex& index, std::size_t start, std::size_t end) {
    const std::size_t from = start + block_payload_at;
    std::vector<BlockSpan> spans;
    for (const Block& group :
         first_blocks(index.of_type(lane_group_type), from, end, max_groups_in_span)) {
        spans.push_back(group.span());
    }
    std::vector<std::size_t> positions;
    for (const Block& lane : first_blocks(index.of_type(lane_type), from, end, max_lanes_in_span)) {
        positions.push_back(lane.at);
    }
    LaneGroups lanes;
    lanes.groups.resize(spans.size());
    const auto holders = first_enclosing(spans, positions);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        auto& place = holders[i] == no_span ? lanes.flat : lanes.groups[holders[i]];
        place.push_back(positions[i]);
    }
    for (const auto& group : lanes.groups) lanes.any_group_multiple |= group.size() > 1;
    return lanes;
}

bool LaneReader::is_open_to(std::size_t position, std::size_t owner) const {
    const auto found = owners_.find(position);
    return found == owners_.end() || found->second == owner;
}

bool LaneReader::read(std::size_t position, std::size_t owner, Lane& lane) {
    const bool is_owner = owners_.try_emplace(position, owner).first->second == owner;
    return is_owner && readLane(image_, position, lane);
}

LaneShape lane_shape(const BlockIndex& index, const Block& holder, const LaneGroups& lanes) {
    const Block* child = index.first_child(holder);
    const std::uint8_t stored = child == nullptr ? 0 : index.image().u8(child->end());
    if (stored > 1) return LaneShape::none;
    if (stored == 1) return LaneShape::two_knobs;
    for (const auto& group : lanes.groups) {
        if (group.empty()) continue;
        const bool is_off_centre = lane_initial(index.image(), group.front()).value_or(0) != 0;
        return is_off_centre ? LaneShape::two_knobs : LaneShape::one_knob;
    }
    return LaneShape::one_knob;
}

}  // namespace tanrove
