// A lane 0x260a, of a block size of 32 at least, holds a record of events at 9 whose values are
// i16. Its first event is the initial value. A record that does not close is read by the fields of
// its first run alone:
//
//   25   u16 count of points
//   27   5 bytes, the tick origin on a lane of a tick-based track
//   35   i16 initial value
//   37   the points, 6 bytes each: u32 position, i16 value
//
// The positions of a lane in samples count from the session's start, those in ticks from the
// session's origin.
//
// A lane group 0x260c holds lanes; an empty one holds none.
#include "session/automation_lanes.hpp"

#include <algorithm>

#include "session/automation_events.hpp"
#include "session/block_types.hpp"
#include "session/first_enclosing.hpp"

namespace tanrove {

namespace {

constexpr double hard_left = -100;
constexpr double hard_right = 100;

constexpr std::uint32_t min_lane_size = 32;
constexpr std::size_t value_width = 2;
constexpr std::size_t initial_at = 35;
constexpr std::size_t points_at = 37;

constexpr std::size_t no_owner = static_cast<std::size_t>(-1);

/// True if a lane stands at `position`.
bool is_lane_at(ByteView image, std::size_t position) {
    return isBlockAt(image, position, image.size()) &&
           image.u16(position + block_content_at) == block_type::lane &&
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

/// Adds the events behind the first, which is the initial value.
void add_points(ByteView image, const EventRecord& record, Lane& lane) {
    lane.in_ticks = record.in_ticks;
    lane.points.reserve(lane.points.size() + record.event_count - 1);
    bool is_initial = true;
    for_each_event(image, record, [&](double position, std::size_t value_at) {
        if (!is_initial)
            lane.points.push_back({position, static_cast<double>(image.i16(value_at))});
        is_initial = false;
    });
}

void add_points_of_first_run(ByteView image, std::size_t at, std::size_t end,
                             std::size_t max_points, Lane& lane) {
    lane.in_ticks =
        image.number(at + first_run_ticks_mark_at, first_run_ticks_mark_width) == tick_origin;
    const std::size_t count = image.u16(at + first_run_count_at);
    const std::size_t bytes = points_at + count * lane_point_bytes + bytes_behind_points;
    if (end - at < bytes || count > max_points) return;
    lane.points.reserve(lane.points.size() + count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = at + points_at + i * lane_point_bytes;
        lane.points.push_back({event_position(image.u32(point), lane.in_ticks),
                               static_cast<double>(image.i16(point + value_in_point))});
    }
}

}  // namespace

bool readLane(ByteView image, std::size_t position, Lane& lane, std::size_t max_points) {
    if (!is_lane_at(image, position)) return false;
    const std::size_t end = position + block_size_base + image.u32(position + block_size_at);
    lane.initial = image.i16(position + initial_at);
    const auto record = read_event_record(image, position + lane_record_at, end, value_width);
    if (!record || record->event_count == 0) {
        add_points_of_first_run(image, position, end, max_points, lane);
    } else if (record->event_count - 1 <= max_points) {
        add_points(image, *record, lane);
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
         first_blocks(index.of_type(block_type::lane_group), from, end, max_groups_in_span)) {
        spans.push_back(group.span());
    }
    std::vector<std::size_t> positions;
    for (const Block& lane :
         first_blocks(index.of_type(block_type::lane), from, end, max_lanes_in_span)) {
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

LaneReader::LaneReader(const BlockIndex& index)
    : image_(index.image()),
      lanes_(index.of_type(block_type::lane)),
      owners_(lanes_.all().size(), no_owner),
      points_left_(image_.size() / lane_point_bytes) {}

std::size_t* LaneReader::owner_of(std::size_t position) {
    const std::size_t place = lanes_.place_from(position);
    const bool is_lane = place < owners_.size() && lanes_.all()[place].at == position;
    return is_lane ? &owners_[place] : nullptr;
}

bool LaneReader::is_open_to(std::size_t position, std::size_t owner) {
    const std::size_t* its_owner = owner_of(position);
    return its_owner == nullptr || *its_owner == no_owner || *its_owner == owner;
}

bool LaneReader::read(std::size_t position, std::size_t owner, Lane& lane) {
    std::size_t* its_owner = owner_of(position);
    if (its_owner == nullptr) return false;
    if (*its_owner == no_owner) *its_owner = owner;
    if (*its_owner != owner) return false;
    const std::size_t before = lane.points.size();
    if (!readLane(image_, position, lane, points_left_)) return false;
    points_left_ -= lane.points.size() - before;
    return true;
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
