// Wires key inputs. A plug-in listens to one pair of its track's channels, so that plug-ins with
// the same source share it.
#include "mix/key_inputs.hpp"

#include <algorithm>

namespace tanrove {

namespace {

constexpr int pair_channels = 2;

/// The place of the source among the track's keys, entered there if it is new; nullopt where the
/// track has no channel left.
std::optional<std::size_t> pair_of(std::size_t source, std::vector<KeyReceive>& keys) {
    const auto known = std::ranges::find(keys, source, &KeyReceive::source);
    const auto place = static_cast<std::size_t>(known - keys.begin());
    if (known != keys.end()) return place;
    if (place == max_key_pairs) return std::nullopt;
    const int channel = pair_channels * (static_cast<int>(place) + 1);
    keys.push_back({.source = source, .destination_channel = channel});
    return place;
}

/// Wires the keys of one track and returns how many of them stay without a source.
int wire_keys(TrackPlan& plan, std::size_t plan_index, const StripRoute& route,
              const StripPlans& strips, RoutingTallies& tallies) {
    int unresolved = 0;
    for (const auto& source_strip : route.keys) {
        const auto source = source_strip ? strips.plan_of(*source_strip) : std::nullopt;
        const bool is_usable = source && *source != plan_index;
        const auto pair = is_usable ? pair_of(*source, plan.key_receives) : std::nullopt;
        if (!pair) {
            ++unresolved;
        } else if (*pair == 0) {
            ++tallies.keys_on_first_pair;
        } else {
            ++tallies.keys_on_further_pairs;
        }
    }
    return unresolved;
}

}  // namespace

void plan_key_inputs(std::vector<TrackPlan>& plans, const RoutingView& routing,
                     RoutingTallies& tallies) {
    tallies.keys_left_out = !routing.records.carries_keys;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const auto strip = routing.strips.strip_of(i);
        if (!strip) continue;
        TrackPlan& plan = plans[i];
        const int unresolved = wire_keys(plan, i, routing.routes[*strip], routing.strips, tallies);
        tallies.unresolved_keys += unresolved;
        if (plan.key_receives.empty()) continue;
        if (unresolved == 0) continue;
        tallies.misled_keys += unresolved;
        tallies.tracks_of_misled_keys.push_back(plan.name);
    }
}

}  // namespace tanrove
