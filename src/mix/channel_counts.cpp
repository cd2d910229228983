// Channel counts. REAPER gives a track an even number of channels, 2 to 128.
#include "mix/channel_counts.hpp"

#include <algorithm>

namespace tanrove {

namespace {

constexpr int stereo_channels = 2;
constexpr int pair_code = 1024;  // of a receive: the pairs that it brings stand above ten bits

/// The channels that REAPER has for so many of the session's.
int reaper_channels(int channels) {
    return std::min(channels + channels % 2, max_track_channels);
}

/// REAPER's code for a receive of all channels of its source; 0 brings the first pair.
int width_code(int source_channels, int target_channels) {
    const int width = reaper_channels(source_channels);
    if (width <= stereo_channels || width > target_channels) return 0;
    return width / 2 * pair_code;
}

void settle_count(TrackPlan& plan, int taken_width, RoutingTallies& tallies) {
    int channels = std::max(stereo_channels, reaper_channels(plan.channels));
    if (taken_width > stereo_channels) {
        channels = std::max(channels, reaper_channels(taken_width));
        ++tallies.wide_auxes;
    }
    if (!plan.key_receives.empty()) {
        const int keys = static_cast<int>(plan.key_receives.size());
        channels = std::max(channels, reaper_channels(2 * keys + stereo_channels));
        plan.parent_gets_first_pair = plan.mixer.plays_to_parent;
        if (plan.parent_gets_first_pair) ++tallies.tracks_passing_first_pair;
    }
    plan.written_channels = channels;
}

}  // namespace

void settle_channel_counts(std::vector<TrackPlan>& plans, const RoutingView& routing,
                           RoutingTallies& tallies) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const auto strip = routing.strips.strip_of(i);
        // A bus plays into the first plan of its strip.
        const bool takes_bus = strip && routing.strips.plan_of(*strip) == i;
        const std::size_t width = takes_bus ? routing.routes[*strip].taken_width : 0;
        settle_count(plans[i], static_cast<int>(width), tallies);
    }
    for (TrackPlan& plan : plans) {
        for (ChannelReceive& receive : plan.channel_receives) {
            receive.width_code = width_code(plans[receive.source].channels, plan.written_channels);
        }
    }
}

}  // namespace tanrove
