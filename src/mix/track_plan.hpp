// One track as it will be written, every decision taken.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "timeline/clip_item.hpp"

namespace tanrove {

/// An alternate playlist kept as a lane of its track.
struct LanePlan {
    std::string name;
    std::vector<ClipItem> clips;
};

/// REAPER's item timebase of a track; beats count for the position only.
enum class TrackTimebase : std::int8_t { unknown = -1, time = 0, beats_position = 2 };

/// The mixer's values of a track, in REAPER's units.
struct MixerPlan {
    double gain = 1;  ///< linear
    double pan = 0;   ///< -1 left to +1 right
    double dual_pan_left = -1;
    double dual_pan_right = 1;
    int automation_mode = 0;  ///< REAPER's: 0 trim/read, 1 read, 2 touch, 3 write, 4 latch
    bool soloed = false;
    bool solo_safe = false;
    bool polarity_inverted = false;
    bool plays_to_parent = true;  ///< reaches its folder or the master, not only its sends
};

struct TrackPlan {
    std::string name;           ///< written to the project
    std::string session_name;   ///< as Pro Tools shows it; empty on a split alternate
    std::string lane_parent;    ///< name of the strip of an alternate playlist that has one
    std::string original_name;  ///< name before the lane suffix was appended
    std::vector<LanePlan> lanes;
    double leg_pan = 0;  ///< -1 or +1 on an unmerged left or right leg
    bool is_midi = false;
    std::vector<ClipItem> clips;  ///< ordered by `start`
    bool is_alternate = false;    ///< another playlist of a track, not on its lanes
    bool is_lane_child = false;   ///< a "?" record
    std::string lane_child_parent;
    bool inactive = false;
    bool voice_off = false;

    int channels = 1;  ///< 2 for a merged pair, the legs of a fold, the width of a bare strip
    bool is_bare_strip = false;  ///< made for a strip or folder that no channel of clips belongs to
    int folded_width = 0;        ///< legs of a surround fold, else 0
    TrackTimebase timebase = TrackTimebase::unknown;
    bool muted = false;
    bool strip_is_mono = false;  ///< decides the pan mode
    bool unmatched_alternate = false;
    int height_pixels = 0;  ///< in the arrange window; 0 where the session has none
    MixerPlan mixer;
};

}  // namespace tanrove
