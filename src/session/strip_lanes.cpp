// The lanes of a strip stand in the first send channel 0x260d of its row, or in the row itself
// where it has none:
//
//   flat    volume, mute; a third one is the trim, and stands behind the groups
//   groups  pan: one group of a lane a knob, a mono strip's second group empty. A strip with a
//           surround panner has a group of at least seven lanes for each input, and of four flat
//           lanes or more the third is the panner's LFE level. Sessions of before Pro Tools 2026
//           have three, or groups of fewer lanes.
//
// Without groups the lanes stand in a row: volume, mute, pan; trim; and of five the fourth is the
// right pan, the fifth the trim.
//
// A MIDI strip has one lane, its mute.
#include "session/strip_lanes.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>

#include "base/formatted_text.hpp"
#include "session/block_types.hpp"
#include "session/channel_records.hpp"
#include "session/enclosing_blocks.hpp"

namespace tanrove {

namespace {

constexpr std::array<std::uint16_t, 4> holder_types = {block_type::audio_row,
                                                       block_type::master_row, block_type::midi_row,
                                                       block_type::instrument_row};

constexpr std::size_t flat_lanes_with_lfe = 4;
constexpr std::size_t stereo_flat_lanes = 5;
constexpr double tenths = 10.0;
constexpr std::int32_t hard_left = -100;
constexpr std::int32_t hard_right = 100;

/// Gives the lanes of one strip their places on it.
class StripLanes {
public:
    StripLanes(LaneReader& reader, std::size_t owner, Strip& strip)
        : reader_(reader), owner_(owner), strip_(strip) {}

    void assign(const LaneGroups& lanes, LaneShape shape) {
        const auto first = first_of(lanes);
        if (first && !reader_.is_open_to(*first, owner_)) return;
        if (lanes.any_group_multiple) assign_surround(lanes);
        if (lanes.groups.empty()) {
            assign_by_count(lanes.flat);
        } else {
            assign_by_origin(lanes, shape);
        }
    }

private:
    static std::optional<std::size_t> first_of(const LaneGroups& lanes) {
        if (!lanes.flat.empty()) return lanes.flat.front();
        for (const auto& group : lanes.groups) {
            if (!group.empty()) return group.front();
        }
        return std::nullopt;
    }

    /// The first lane is the volume's in every form.
    void read_volume(std::size_t position) {
        const bool was_read = reader_.read(position, owner_, strip_.volume_lane);
        if (was_read && !strip_.volume_lane.moves()) {
            strip_.fader_db = strip_.volume_lane.initial / tenths;
        }
    }

    void read_left_pan(std::size_t position) {
        const bool was_read = reader_.read(position, owner_, strip_.pan_lane);
        if (was_read) strip_.pan_left_lane_value = strip_.pan_lane.initial;
    }

    void read_right_pan(std::size_t position) {
        const bool was_read = reader_.read(position, owner_, strip_.pan_right_lane);
        if (was_read) strip_.pan_right_lane_value = strip_.pan_right_lane.initial;
    }

    void assign_surround(const LaneGroups& lanes) {
        strip_.surround = true;
        const std::span<const std::size_t> flat = lanes.flat;
        if (flat.size() >= flat_lanes_with_lfe) {
            Lane lfe;
            const bool was_read = reader_.read(flat[2], owner_, lfe);
            if (was_read) strip_.surround_master_lane = std::move(lfe);
            const std::size_t unknown = flat.size() - flat_lanes_with_lfe;
            strip_.unknown_panner_moves +=
                count_moves(flat.subspan(flat_lanes_with_lfe - 1, unknown));
        }
        for (const auto& group : lanes.groups) assign_panner(group);
    }

    void assign_panner(std::span<const std::size_t> group) {
        const bool is_short = group.size() > 1 && group.size() < panner_control_count;
        const bool has_place = strip_.surround_lanes.size() < max_panners;
        if (group.size() >= panner_control_count && has_place) {
            auto& panner = strip_.surround_lanes.emplace_back();
            for (std::size_t i = 0; i < panner.size(); ++i) {
                reader_.read(group[i], owner_, panner[i]);
            }
            group = group.subspan(panner.size());
        }
        int& moves = is_short ? strip_.short_panner_moves : strip_.unknown_panner_moves;
        moves += count_moves(group);
    }

    int count_moves(std::span<const std::size_t> positions) {
        int moves = 0;
        for (const std::size_t position : positions) {
            Lane lane;
            reader_.read(position, owner_, lane);
            moves += lane.moves() ? 1 : 0;
        }
        return moves;
    }

    void assign_by_origin(const LaneGroups& lanes, LaneShape shape) {
        const auto& flat = lanes.flat;
        if (!flat.empty()) read_volume(flat[0]);
        if (flat.size() > 1) reader_.read(flat[1], owner_, strip_.mute_lane);
        const int knobs = shape == LaneShape::two_knobs ? 2 : shape == LaneShape::one_knob ? 1 : 0;
        int taken = 0;
        for (const auto& group : lanes.groups) {
            if (group.empty() || taken == knobs) continue;
            if (taken == 0) read_left_pan(group.front());
            if (taken == 1) read_right_pan(group.front());
            ++taken;
        }
        strip_.stereo = taken == 2;
        const bool has_trim = flat.size() > 2 && shape != LaneShape::master;
        if (has_trim) reader_.read(flat.back(), owner_, strip_.trim_lane);
        const int flat_count = static_cast<int>(std::min<std::size_t>(flat.size(), 2));
        strip_.lane_count = flat_count + taken + (has_trim ? 1 : 0);
    }

    void assign_by_count(const std::vector<std::size_t>& flat) {
        const std::size_t count = flat.size();
        strip_.stereo = count == stereo_flat_lanes;
        if (count > 0) read_volume(flat[0]);
        if (count > 1) reader_.read(flat[1], owner_, strip_.mute_lane);
        if (count > 2) read_left_pan(flat[2]);
        if (strip_.stereo) read_right_pan(flat[3]);
        const bool has_trim = count == stereo_flat_lanes - 1 || strip_.stereo;
        if (has_trim) reader_.read(flat.back(), owner_, strip_.trim_lane);
        strip_.lane_count = static_cast<std::int32_t>(count);
    }

    LaneReader& reader_;
    std::size_t owner_;
    Strip& strip_;
};

/// Pan lanes of a stereo strip that only repeat hard left and hard right carry no move. Those that
/// move are a pair, and go apart as one. Each keeps its initial value.
void clean_stereo_pan(Strip& strip) {
    if (!strip.stereo) return;
    const bool is_hard_panned = strip.pan == hard_left && strip.pan_right == hard_right;
    if (is_hard_panned && stay_hard_panned(strip.pan_lane, strip.pan_right_lane)) {
        strip.pan_lane.points.clear();
        strip.pan_right_lane.points.clear();
        return;
    }
    const std::size_t points = strip.pan_lane.points.size() + strip.pan_right_lane.points.size();
    if (points == 0) return;
    strip.pan_point_total = static_cast<std::int32_t>(points);
    strip.dual_pan_lane = strip.pan_lane;
    strip.pan_lane.points.clear();
}

void read_midi_lane(const BlockIndex& index, LaneReader& reader, std::size_t owner, Strip& strip) {
    const Block* mixer = index.at(strip.channel_position - block_payload_at);
    const Block* lane = mixer == nullptr ? nullptr : index.first_child(*mixer, block_type::lane);
    if (lane == nullptr) return;
    reader.read(lane->at, owner, strip.mute_lane);
    strip.lane_count = 1;
}

/// The present strips in order of their records.
std::vector<std::size_t> strips_by_position(const std::vector<Strip>& strips) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        if (strips[i].present) order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return strips[a].channel_position < strips[b].channel_position;
    });
    return order;
}

}  // namespace

void read_lanes_of_row(const BlockIndex& index, const Block& row, bool is_master,
                       LaneReader& reader, std::size_t owner, Strip& strip) {
    const Block* channel = index.first_child(row, block_type::send_channel);
    const Block& holder = channel != nullptr ? *channel : row;
    const LaneGroups lanes = sortLanes(index, holder.at, holder.end());
    const LaneShape shape = is_master ? LaneShape::master : lane_shape(index, holder, lanes);
    StripLanes(reader, owner, strip).assign(lanes, shape);
    clean_stereo_pan(strip);
}

void readStripLanes(const BlockIndex& index, std::vector<Strip>& strips) {
    const auto order = strips_by_position(strips);
    std::vector<std::size_t> positions;
    positions.reserve(order.size());
    for (const std::size_t i : order) positions.push_back(strips[i].channel_position);
    const auto rows = index.of_types(holder_types);
    const auto holders = smallest_enclosing(rows, positions);
    // A master fader holds an audio row of its own, which then is the smallest.
    const auto masters = smallest_enclosing(index.of_type(block_type::master_row).all(), positions);

    LaneReader reader(index);
    for (std::size_t i = 0; i < order.size(); ++i) {
        Strip& strip = strips[order[i]];
        if (strip.midi_only) {
            read_midi_lane(index, reader, order[i], strip);
        } else if (holders[i] != nullptr) {
            read_lanes_of_row(index, *holders[i], masters[i] != nullptr, reader, order[i], strip);
        }
    }
}

std::string strip_lanes_text(const std::vector<Strip>& strips) {
    TextBuffer text;
    for (const Strip& strip : strips) {
        const auto& volume = strip.volume_lane;
        const auto& mute = strip.mute_lane;
        const auto& pan = strip.pan_lane.points.empty() ? strip.dual_pan_lane : strip.pan_lane;
        if (volume.points.empty() && mute.points.empty() && pan.points.empty()) continue;
        text.print("LANES %s | fader %.1f dB | vol %d pt init %.0f | mute %d pt | pan %d pt\n",
                   strip.name.c_str(), strip.fader_db, static_cast<int>(volume.points.size()),
                   volume.initial, static_cast<int>(mute.points.size()),
                   static_cast<int>(pan.points.size()));
        for (const LanePoint& point : volume.points) {
            text.print("LANES   vol %14.0f %8.0f\n", point.position, point.value);
        }
    }
    return text.text();
}

}  // namespace tanrove
