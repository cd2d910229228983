// The lanes of a send stand in its slot in one of three ways:
//
//   no groups       level, mute, pan, right pan
//   flat lanes      level, mute; the pans in groups of their own, as on the strip itself
//   in groups       level and mute first in the first group, the pan first in the second
//
// Two flat lanes are level and mute, whatever the groups hold: a surround panner's group has two
// lanes or more as well. Only where there are fewer is everything in groups.
#include "session/send_lanes.hpp"

#include <algorithm>

namespace tanrove {

namespace {

constexpr int stereo_kind = 2;
constexpr std::size_t knob_count = 2;

/// Positions of the lanes by what they move; the pans may be fewer than two.
struct SendLanePlaces {
    std::vector<std::size_t> level_and_mute;
    std::vector<std::size_t> pans;
};

SendLanePlaces places_of(const LaneGroups& lanes) {
    SendLanePlaces places;
    const auto& flat = lanes.flat;
    const std::size_t fixed = std::min<std::size_t>(flat.size(), 2);
    const auto behind_fixed = flat.begin() + static_cast<std::ptrdiff_t>(fixed);
    const bool in_groups = fixed < 2;
    if (lanes.groups.empty()) {
        places.level_and_mute.assign(flat.begin(), behind_fixed);
        places.pans.assign(behind_fixed, flat.end());
    } else if (in_groups) {
        places.level_and_mute = lanes.groups.front();
        if (lanes.groups.size() > 1 && !lanes.groups[1].empty()) {
            places.pans.push_back(lanes.groups[1].front());
        }
    } else {
        places.level_and_mute.assign(flat.begin(), behind_fixed);
        for (const auto& group : lanes.groups) {
            if (!group.empty()) places.pans.push_back(group.front());
        }
    }
    if (places.pans.size() > knob_count) places.pans.resize(knob_count);
    return places;
}

}  // namespace

void read_send_lanes(const BlockIndex& index, const Block& slot, LaneReader& reader,
                     RoutingSend& send) {
    const LaneGroups lanes = sortLanes(index, slot.at, slot.end());
    const SendLanePlaces places = places_of(lanes);
    const auto read = [&](const std::vector<std::size_t>& from, std::size_t place, Lane& lane) {
        return place < from.size() && reader.read(from[place], slot.at, lane);
    };
    read(places.level_and_mute, 0, send.level_lane);
    read(places.level_and_mute, 1, send.mute_lane);
    if (read(places.pans, 0, send.pan_lane)) {
        send.pan = static_cast<std::int32_t>(send.pan_lane.initial);
        send.pan_kind = 1;
    }
    if (read(places.pans, 1, send.pan_right_lane)) {
        send.pan_right = static_cast<std::int32_t>(send.pan_right_lane.initial);
        send.pan_kind = stereo_kind;
    }
    send.mono_flag =
        !lanes.groups.empty() && lane_shape(index, slot, lanes) == LaneShape::two_knobs;
    if (send.pan_kind == stereo_kind && stay_hard_panned(send.pan_lane, send.pan_right_lane)) {
        send.pan_lane.points.clear();
        send.pan_right_lane.points.clear();
        send.pan_kind = 0;
    }
}

}  // namespace tanrove
