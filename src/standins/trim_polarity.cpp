// Counts, channel by channel, the Trims that play and invert: an odd number turns the channel over.
#include "standins/trim_polarity.hpp"

#include <algorithm>
#include <functional>

#include "standins/js_slots.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t polarity_seed = 0x504f4c00;
constexpr int least_that_cancel = 2;

bool inverts_any(const TrackTrim& trim, std::size_t channel_count) {
    for (std::size_t i = 0; i < channel_count; ++i) {
        if (trim_channel(trim.channels, i).inverted) return true;
    }
    return false;
}

}  // namespace

TrackPolarity track_polarity(const std::vector<TrackTrim>& trims, std::size_t channel_count) {
    TrackPolarity polarity;
    std::vector<bool> is_odd(channel_count, false);
    int inverting = 0;
    for (const TrackTrim& trim : trims) {
        if (!inverts_any(trim, channel_count)) continue;
        if (!trim.plays) {
            ++polarity.switched_off;
            continue;
        }
        ++inverting;
        for (std::size_t i = 0; i < channel_count; ++i) {
            if (trim_channel(trim.channels, i).inverted) is_odd[i] = !is_odd[i];
        }
    }
    const bool left = is_odd.front();
    const bool right = channel_count > 1 ? is_odd[1] : left;
    polarity.inverts_track = left && right;
    polarity.mixed_wide = channel_count > 2 && std::ranges::any_of(is_odd, [&](bool odd) {
                              return odd != is_odd.front();
                          });
    if (left != right) polarity.one_side = left ? InvertedSide::left : InvertedSide::right;
    polarity.cancels_out =
        inverting >= least_that_cancel && std::ranges::none_of(is_odd, std::identity());
    return polarity;
}

namespace {

std::uint32_t seed_of(std::string_view track_name) {
    const std::uint32_t first_byte =
        track_name.empty() ? 0 : static_cast<std::uint8_t>(track_name.front());
    return first_byte << 16 ^ static_cast<std::uint32_t>(track_name.size()) ^ polarity_seed;
}

}  // namespace

FxSlot both_sides_slot(std::string_view track_name) {
    return polarity_slot("Trim", "", seed_of(track_name));
}

std::optional<FxSlot> one_sided_slot(InvertedSide side, std::string_view track_name) {
    if (side == InvertedSide::none) return std::nullopt;
    const bool is_left = side == InvertedSide::left;
    return js_slot("IX/StereoPhaseInvert",
                   is_left ? "Trim polarity, left channel (Channel Polarity Control)"
                           : "Trim polarity, right channel (Channel Polarity Control)",
                   is_left ? "1" : "2", seed_of(track_name));
}

}  // namespace tanrove
