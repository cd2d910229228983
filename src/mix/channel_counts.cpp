// Channel counts. REAPER gives a track an even number of channels, 2 to 128. A track plays all of
// them to its parent, and the parent loses those that it does not have.
#include "mix/channel_counts.hpp"

#include <algorithm>

#include "mix/channel_codes.hpp"

namespace tanrove {

namespace {

/// The channels that REAPER has for so many of the session's.
int reaper_channels(int channels) {
    return std::min(channels + channels % 2, max_track_channels);
}

/// REAPER's code for a receive of all channels of its source; 0 brings the first pair.
int width_code(int source_channels, int target_channels) {
    const int width = reaper_channels(source_channels);
    return width > target_channels ? 0 : receive_width_code(width);
}

/// The first channel that a track plays to its output.
int first_output_channel(const TrackPlan& plan) {
    return plan.has_surround_panner() ? plan.panner->first_channel : 0;
}

/// How many channels it plays there: those of its panner, where it has one.
int output_width(const TrackPlan& plan) {
    const int own = std::max(plan.channels, stereo_channels);
    return plan.has_surround_panner() ? plan.panner->channels : own;
}

/// The code of what a track plays into its output.
int output_code(const TrackPlan& source, int target_channels) {
    const int code = width_code(output_width(source), target_channels);
    return code == 0 ? 0 : code + first_output_channel(source);
}

/// The channels of a track up to the last of its panner's; 0 where it has none.
int panner_channels(const TrackPlan& plan) {
    if (!plan.has_surround_panner()) return 0;
    return first_output_channel(plan) + reaper_channels(plan.panner->channels);
}

/// Channels of the bus that a track takes, 0 for none. A bus plays into the first plan of its
/// strip.
int taken_width(std::size_t plan, const RoutingView& routing) {
    const auto row = routing.strips.of(plan).row;
    if (!row || routing.strips.track_of(*row) != plan) return 0;
    return static_cast<int>(routing.routes.strips[*row].taken_width);
}

void settle_count(TrackPlan& plan, int own, RoutingTallies& tallies) {
    plan.written_channels = own;
    for (const ReceivePlan& key : plan.key_receives) {
        plan.written_channels =
            std::max(plan.written_channels, key.destination_channel + stereo_channels);
    }
    if (plan.key_receives.empty() || !plan.mixer.plays_to_parent) return;
    plan.parent_channels = own;
    if (own == stereo_channels) ++tallies.tracks_passing_first_pair;
}

/// Makes each folder as wide as the widest track that plays through it, and returns how wide the
/// widest is that plays to the master.
int widen_folders(std::vector<TrackPlan>& plans) {
    constexpr std::size_t master = static_cast<std::size_t>(-1);
    std::vector<std::size_t> parents;
    std::vector<std::size_t> open = {master};
    for (std::size_t i = 0; i < plans.size(); ++i) {
        parents.push_back(open.back());
        if (plans[i].folder.depth > 0) open.push_back(i);
        for (int depth = plans[i].folder.depth; depth < 0 && open.size() > 1; ++depth) {
            open.pop_back();
        }
    }
    int widest = stereo_channels;
    for (std::size_t i = plans.size(); i-- > 0;) {
        if (!plans[i].mixer.plays_to_parent) continue;
        const int brought = plans[i].parent_channels.value_or(plans[i].written_channels);
        int& parent = parents[i] == master ? widest : plans[parents[i]].written_channels;
        parent = std::max(parent, brought);
    }
    return widest;
}

}  // namespace

void settle_unknown_widths(std::vector<TrackPlan>& plans, const RoutingView& routing) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const int taken = taken_width(i, routing);
        if (!plans[i].width_unknown || taken <= stereo_channels) continue;
        plans[i].channels = taken;
        plans[i].width_unknown = false;
    }
}

int own_channels(const std::vector<TrackPlan>& plans, std::size_t plan,
                 const RoutingView& routing) {
    return std::max({stereo_channels, reaper_channels(plans[plan].channels),
                     panner_channels(plans[plan]), reaper_channels(taken_width(plan, routing))});
}

void settle_channel_counts(std::vector<TrackPlan>& plans, const RoutingView& routing,
                           RoutingTallies& tallies) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        if (taken_width(i, routing) > stereo_channels) ++tallies.wide_auxes;
        settle_count(plans[i], own_channels(plans, i, routing), tallies);
    }
    tallies.master_channels = widen_folders(plans);
    for (TrackPlan& plan : plans) {
        std::erase_if(plan.channel_receives, [&](const ChannelReceive& receive) {
            return receive.source_channel.value_or(0) >= output_width(plans[receive.source]);
        });
        for (ChannelReceive& receive : plan.channel_receives) {
            const TrackPlan& source = plans[receive.source];
            receive.width_code =
                receive.source_channel
                    ? single_channel + first_output_channel(source) + *receive.source_channel
                    : output_code(source, plan.written_channels);
        }
        for (ReceivePlan& receive : plan.receives) {
            receive.width_code = width_code(plans[receive.source].channels, plan.written_channels);
        }
    }
}

}  // namespace tanrove
