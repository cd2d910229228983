// A slot part 0x260f holds the lane 0x260b of one control: at 9 a record of events whose values are
// i32, the first of them the default. A record that does not close is read by the fields of its
// first run alone:
//
//   25   u16 count of points
//   27   5 bytes, not 0 on a lane of a tick-based track
//   35   i32 default value
//   39   the points, 8 bytes each: u32 position, i32 value
//
// Values count in 2^-31, with 0 in the middle of the control's range: -2^30 is its lower end, 2^30
// its upper one. Right behind the lane stand, in the slot part:
//
//   0    u32 count of 1 to 128, the control's name
//   -    u32 index
//   -    8 bytes: the first is 1 on a bypass, the fourth the number of steps, 0 for no steps
//   -    u32 count of 1 to 127, the plug-in's id of the control; older parts end here
#include "plugins/plugin_lanes.hpp"

#include <algorithm>
#include <optional>

#include "session/automation_events.hpp"
#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t min_lane_bytes = 39;
constexpr std::size_t value_width = 4;
constexpr std::size_t default_at = 35;
constexpr std::size_t points_at = 39;
constexpr std::size_t point_bytes = 8;

constexpr std::size_t count_bytes = 4;
constexpr std::size_t max_name_bytes = 128;
constexpr std::size_t bypass_behind_name = 4;
constexpr std::size_t steps_behind_name = 7;
constexpr std::size_t id_behind_name = 12;
constexpr std::size_t max_id_bytes = 127;

// The least that a lane and its label take of the image.
constexpr std::size_t min_labelled_lane = min_lane_bytes + bytes_behind_points + count_bytes + 1;

/// A stored value as a share of the range, not cut to 0 and 1.
double share(std::int32_t stored) {
    constexpr double whole_range = 2147483648.0;
    return static_cast<double>(stored) / whole_range + 0.5;
}

std::optional<std::string_view> label_text(ByteView part, std::size_t at, std::size_t most) {
    const auto text = readCountedText(part, at, most, part.size());
    if (!text || text->empty() || !is_ascii_text(*text)) return std::nullopt;
    return text;
}

/// Reads name, index and id at `at`; false where no name stands there. `part` ends with the slot
/// part.
bool read_label(ByteView part, std::size_t at, PluginLane& lane) {
    const auto name = label_text(part, at, max_name_bytes);
    if (!name) return false;
    const std::size_t behind_name = at + count_bytes + name->size();
    lane.name = *name;
    lane.index = part.u32(behind_name);
    lane.is_bypass = part.u8(behind_name + bypass_behind_name) == 1;
    lane.steps = part.u8(behind_name + steps_behind_name);
    lane.id = label_text(part, behind_name + id_behind_name, max_id_bytes).value_or("");
    return true;
}

void add_points(ByteView image, const EventRecord& record, PluginLane& lane) {
    lane.in_ticks = record.in_ticks;
    lane.points.reserve(record.event_count - 1);
    bool is_default = true;
    for_each_event(image, record, [&](double position, std::size_t value_at) {
        if (!is_default) lane.points.push_back({position, share(image.i32(value_at))});
        is_default = false;
    });
}

void add_points_of_first_run(ByteView image, const Block& block, std::size_t count,
                             PluginLane& lane) {
    lane.in_ticks =
        image.number(block.at + first_run_ticks_mark_at, first_run_ticks_mark_width) != 0;
    lane.points.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = block.at + points_at + i * point_bytes;
        lane.points.push_back(
            {event_position(image.u32(at), lane.in_ticks), share(image.i32(at + value_in_point))});
    }
}

/// The lane in this slot part. `points_left` is how many points the image can still hold.
std::optional<PluginLane> read_lane(const BlockIndex& index, const Block& part,
                                    std::size_t& points_left) {
    const ByteView image = index.image();
    const Block* block = index.first_child(part, block_type::control_lane);
    if (block == nullptr) return std::nullopt;
    const std::size_t bytes = block->end() - block->at;
    if (bytes < min_lane_bytes) return std::nullopt;
    PluginLane lane;
    if (!read_label(image.window(0, part.end()), block->end(), lane)) return std::nullopt;
    lane.default_value = share(image.i32(block->at + default_at));

    const auto record =
        read_event_record(image, block->at + lane_record_at, block->end(), value_width);
    const bool is_whole = record && record->event_count > 0;
    const std::size_t count =
        is_whole ? record->event_count - 1 : image.u16(block->at + first_run_count_at);
    if (count > points_left) return std::nullopt;
    if (is_whole) {
        add_points(image, *record, lane);
    } else {
        if (bytes < points_at + count * point_bytes + bytes_behind_points) return std::nullopt;
        add_points_of_first_run(image, *block, count, lane);
    }
    points_left -= count;
    return lane;
}

}  // namespace

void read_plugin_lanes(const BlockIndex& index, std::span<PluginInsert> inserts) {
    std::size_t points_left = index.image().size() / point_bytes;
    std::size_t lanes_left = index.image().size() / min_labelled_lane;
    for (const Block& part : index.of_type(block_type::slot_part).all()) {
        if (lanes_left == 0) return;
        const auto behind = std::lower_bound(
            inserts.begin(), inserts.end(), part.at,
            [](const PluginInsert& insert, std::size_t at) { return insert.blockStart < at; });
        if (behind == inserts.begin() || part.at >= std::prev(behind)->slot_end) continue;
        auto lane = read_lane(index, part, points_left);
        if (!lane) continue;
        std::prev(behind)->lanes.push_back(std::move(*lane));
        --lanes_left;
    }
}

}  // namespace tanrove
