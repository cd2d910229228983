// The polarity that the Trims of a track give it. Two inversions cancel; REAPER's track has one
// switch for all of its channels, and a small JS inverts one side alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "plugins/fx_slot.hpp"
#include "standins/trim.hpp"

namespace tanrove {

/// One Trim of the track, in the order of its inserts.
struct TrackTrim {
    std::vector<TrimChannel> channels;  ///< not empty
    bool plays = true;                  ///< neither bypassed nor inactive
};

enum class InvertedSide : std::uint8_t { none, left, right };

struct TrackPolarity {
    bool inverts_track = false;  ///< all of its channels
    InvertedSide one_side = InvertedSide::none;
    int switched_off = 0;      ///< Trims that would invert, and do not play
    bool cancels_out = false;  ///< two inverting Trims or more leave the track upright
    bool mixed_wide = false;   ///< wider than stereo: not all channels alike
};

/// `channel_count`: of the track, 1 or more.
TrackPolarity track_polarity(const std::vector<TrackTrim>& trims, std::size_t channel_count);

/// The slot that inverts one side, first in its chain; nullopt where there is none to invert.
std::optional<FxSlot> one_sided_slot(InvertedSide side, std::string_view track_name);

/// The slot that inverts both sides.
FxSlot both_sides_slot(std::string_view track_name);

}  // namespace tanrove
