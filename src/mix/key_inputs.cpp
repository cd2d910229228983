// Wires key inputs. A plug-in listens to one pair of its track's channels, so that plug-ins with
// the same source share it.
#include "mix/key_inputs.hpp"

#include <algorithm>
#include <optional>
#include <utility>

namespace tanrove {

namespace {

constexpr int pair_channels = 2;
constexpr int key_mode = 1;     // in front of the source's fader: the key is what its bus brings
constexpr int output_mode = 0;  // behind the fader

/// Wires the keys of one track.
class KeyWiring {
public:
    KeyWiring(TrackPlan& plan, std::size_t plan_index, int own_channels, const RoutingView& routing,
              const SendEnvelope& envelope)
        : plan_(plan),
          plan_index_(plan_index),
          own_channels_(own_channels),
          routing_(routing),
          envelope_(envelope) {}

    /// The place of the key's pair among the track's; nullopt where it leads nowhere, or the track
    /// has no channel left.
    std::optional<std::size_t> wire(const KeyRoute& key) {
        const Source source{key.strip_row, key.key_bus};
        const auto known = std::ranges::find(sources_, source);
        const auto place = static_cast<std::size_t>(known - sources_.begin());
        if (known != sources_.end()) return place;
        std::vector<ReceivePlan> receives = receives_of(key);
        if (receives.empty() || channel_of(place) + pair_channels > max_track_channels) {
            return std::nullopt;
        }
        sources_.push_back(source);
        for (ReceivePlan& receive : receives) {
            receive.destination_channel = channel_of(place);
            plan_.key_receives.push_back(std::move(receive));
        }
        return place;
    }

    int channel_of(std::size_t place) const {
        return own_channels_ + pair_channels * static_cast<int>(place);
    }

private:
    using Source = std::pair<std::optional<std::size_t>, std::optional<std::size_t>>;

    std::vector<ReceivePlan> receives_of(const KeyRoute& key) const {
        std::vector<ReceivePlan> receives;
        if (key.strip_row) {
            if (const auto source = other_plan(*key.strip_row)) {
                receives.push_back({.source = *source, .mode = key_mode, .envelopes = {}});
            }
        } else if (key.key_bus) {
            for (const KeyFeed& feed : routing_.routes.key_buses[*key.key_bus].feeds) {
                if (const auto source = other_plan(feed.strip_row)) {
                    receives.push_back(receive_of_feed(feed, *source));
                }
            }
        }
        return receives;
    }

    ReceivePlan receive_of_feed(const KeyFeed& feed, std::size_t source) const {
        if (!feed.send) return {.source = source, .mode = output_mode, .envelopes = {}};
        const auto row = routing_.routes.strips[feed.strip_row].routing_row;
        return receive_of(source, routing_.records.rows[*row].sends[*feed.send], envelope_);
    }

    /// The track of a strip, if it is written and another one.
    std::optional<std::size_t> other_plan(std::size_t strip_row) const {
        const auto plan = routing_.strips.track_of(strip_row);
        return plan == plan_index_ ? std::nullopt : plan;
    }

    TrackPlan& plan_;
    std::size_t plan_index_;
    int own_channels_;
    const RoutingView& routing_;
    const SendEnvelope& envelope_;
    std::vector<Source> sources_;  ///< in the order of their pairs
};

/// Wires the keys of a track and returns how many of them stay without a source.
int wire_keys(KeyWiring& wiring, const StripRoute& route, TrackPlan& plan,
              RoutingTallies& tallies) {
    int unresolved = 0;
    for (const KeyRoute& key : route.keys) {
        const auto pair = wiring.wire(key);
        auto& channel = plan.key_channels.emplace_back();
        if (!pair) {
            ++unresolved;
            continue;
        }
        channel = wiring.channel_of(*pair);
        ++(*pair == 0 ? tallies.keys_on_first_pair : tallies.keys_on_further_pairs);
    }
    return unresolved;
}

}  // namespace

void plan_key_inputs(std::vector<TrackPlan>& plans, const RoutingView& routing,
                     const SendEnvelope& envelope, RoutingTallies& tallies) {
    tallies.keys_left_out = !routing.records.carries_keys;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const auto row = routing.strips.of(i).row;
        if (!row) continue;
        TrackPlan& plan = plans[i];
        const int own = own_channels(plans, i, routing);
        KeyWiring wiring(plan, i, own, routing, envelope);
        const int unresolved = wire_keys(wiring, routing.routes.strips[*row], plan, tallies);
        tallies.unresolved_keys += unresolved;
        if (plan.key_receives.empty()) continue;
        // A plug-in without its own source hears the first one.
        for (auto& channel : plan.key_channels) channel = channel.value_or(own);
        if (unresolved == 0) continue;
        tallies.misled_keys += unresolved;
        tallies.tracks_of_misled_keys.push_back(plan.name);
    }
}

}  // namespace tanrove
