// The strips: fader, pan and mute of every track, in the order of the session's track table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/automation_lanes.hpp"
#include "session/block_index.hpp"
#include "session/channel_records.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// A send as far as the channel records and the texts around them tell it. The mix plays
/// `RoutingSend`, which has the name from the send's own slot.
struct SendLevel {
    std::string target;  ///< name of the bus found nearest to the record
    double level_db = 0;
};

/// Lanes of one surround panner, in the order of its numbers.
using PannerLanes = std::array<Lane, panner_control_count>;

struct Strip {
    std::string name;
    double fader_db = 0;
    std::int32_t pan = 0;  ///< -100 left to 100 right; the left knob of a stereo strip
    std::int32_t pan_right = 0;
    bool muted = false;
    bool present = false;  ///< the session has a record of this strip
    /// The strip is a MIDI track's: it has a mute and no more.
    bool midi_only = false;
    /// Position of the payload of its channel record, or of a MIDI strip's mixer record.
    std::size_t channel_position = 0;
    std::vector<SendLevel> sends;

    // The automation, filled by `readStripLanes`.
    Lane volume_lane;
    Lane mute_lane;
    Lane pan_lane;
    Lane pan_right_lane;
    Lane trim_lane;  ///< trim
    bool stereo = false;
    /// What the pan lanes say before their first points; nullopt where there is no such lane.
    std::optional<double> pan_left_lane_value;
    std::optional<double> pan_right_lane_value;
    std::int32_t lane_count = 0;       ///< lanes that have a place on the strip
    std::int32_t pan_point_total = 0;  ///< points of both pan lanes of a stereo strip that moves
    Lane dual_pan_lane;                ///< the left one of them: `pan_lane` has no points then
    bool surround = false;
    std::optional<Lane> surround_master_lane;  ///< the LFE level of its panners, where it is stored
    std::vector<PannerLanes> surround_lanes;   ///< one or two panners
    /// Lanes that move in groups of more than one and less than a panner's.
    int short_panner_moves = 0;
    /// Lanes of a surround strip that move and are neither these nor known controls: past a
    /// panner's, of a third panner, alone in a group, between the LFE level and the trim.
    int unknown_panner_moves = 0;
    /// The panners' numbers in the channel record of a strip that has no lanes for them.
    std::array<std::optional<PannerNumbers>, max_panners> stored_panners = {};
};

/// One strip a name of the track table. Where the rows carry the table's names in its order, a
/// record belongs to the strip whose row it stands in; else to the name that stands last in front
/// of it, or the next strip that has none. `buses` are the names a send can lead to.
std::vector<Strip> readStrips(const BlockIndex& index, const std::vector<StripRow>& rows,
                              std::span<const std::string> track_names,
                              const std::vector<std::string>& buses);

}  // namespace tanrove
