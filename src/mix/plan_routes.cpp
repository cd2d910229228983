// Outputs and sends. What REAPER cannot do as Pro Tools does it is counted here and said in the
// account: a send of a stereo track has one pan knob there, and no pan automation is written.
#include "mix/plan_routes.hpp"

#include <algorithm>
#include <set>

#include "base/fader_law.hpp"
#include "mix/channel_codes.hpp"

namespace tanrove {

namespace {

constexpr int pre_fader_mode = 3;
constexpr int post_fader_mode = 0;
constexpr std::int32_t hard_left = -100;
constexpr std::int32_t hard_right = 100;

/// True of a track that is silent altogether, its sends included.
bool is_silent(const TrackPlan& plan) {
    return plan.inactive || plan.voice_off || plan.unmatched_alternate;
}

/// The tracks that a bus plays into; none where no strip of it is written.
std::vector<std::size_t> plans_behind(const BusRoute& bus, const RoutingView& routing) {
    std::vector<std::size_t> plans;
    for (const std::size_t strip_row : bus.strip_rows) {
        if (const auto plan = routing.strips.track_of(strip_row)) plans.push_back(*plan);
    }
    return plans;
}

/// A part of a surround bus that does not lie on its first channels is played channel by channel.
void receive_output(TrackPlan& target, std::size_t source, const BusRoute& bus) {
    bool is_in_front = true;
    for (std::size_t i = 0; i < bus.places.size(); ++i) is_in_front &= bus.places[i] == i;
    const bool is_mono_part = bus.places.size() == 1;
    if (is_in_front && !is_mono_part) {
        target.channel_receives.push_back({.source = source});
        return;
    }
    for (std::size_t i = 0; i < bus.places.size(); ++i) {
        target.channel_receives.push_back(
            {.source = source,
             .source_channel = static_cast<int>(i),
             .destination_code = single_channel + static_cast<int>(bus.places[i])});
    }
}

void plan_output(std::vector<TrackPlan>& plans, std::size_t source, const StripRoute& route,
                 const RoutingView& routing, RoutingTallies& tallies) {
    TrackPlan& plan = plans[source];
    if (route.leads_astray) tallies.leading_astray.push_back(plan.name);
    if (route.has_no_output) {
        plan.mixer.plays_to_parent = false;
        tallies.without_output.push_back(plan.name);
        return;
    }
    if (route.feeds_keys_alone) plan.mixer.plays_to_parent = false;
    if (!route.output) return;
    auto targets = plans_behind(*route.output, routing);
    if (targets.empty()) return;
    plan.mixer.plays_to_parent = route.stays_on_master;
    std::erase(targets, source);
    if (targets.empty()) return;
    for (const std::size_t target : targets) {
        receive_output(plans[target], source, *route.output);
    }
    ++tallies.outputs_into_buses;
    if (route.output_is_hardware && !route.stays_on_master) {
        tallies.taken_from_hardware.push_back(plan.name);
    }
    if (route.output->way == BusWay::input) ++tallies.outputs_by_input;
    if (route.output->way == BusWay::stereo_pair) ++tallies.outputs_by_pair;
    if (route.output->way == BusWay::part) ++tallies.outputs_by_part;
    if (route.output->legs_part) ++tallies.parted_legs;
}

/// A send that has been switched off stands with its mute on and unmoved.
bool is_off(const RoutingSend& send) {
    return send.mute_lane.points.empty() && send.mute_lane.initial != 0;
}

/// A source of unknown width is stereo if its send has the two knobs of one, or their defaults.
bool is_mono_source(const TrackPlan& plan, const RoutingSend& send) {
    constexpr int two_knobs = 2;
    if (plan.width_unknown) {
        return send.pan_kind != two_knobs &&
               (send.pan != hard_left || send.pan_right != hard_right);
    }
    return plan.channels < stereo_channels;
}

bool has_moved_knobs(const RoutingSend& send) {
    constexpr int one_knob = 1;
    return send.pan_kind != one_knob && (send.pan != hard_left || send.pan_right != hard_right);
}

double pan_of_mono(const RoutingSend& send) {
    return static_cast<double>(std::clamp(send.pan, hard_left, hard_right)) / hard_right;
}

void count_lost_sends(const std::string& track, const StripRoute& route,
                      const std::vector<RoutingSend>& sends, RoutingTallies& tallies) {
    const auto lost = std::ranges::count_if(route.lost_sends,
                                            [&](std::size_t send) { return !is_off(sends[send]); });
    if (lost == 0) return;
    tallies.sends_left_out += static_cast<int>(lost);
    tallies.tracks_of_sends_left_out.push_back(track);
}

/// Collects the sends of all tracks at the tracks they lead to.
class Sends {
public:
    Sends(std::vector<TrackPlan>& plans, const SendEnvelope& envelope, RoutingTallies& tallies)
        : plans_(plans), envelope_(envelope), tallies_(tallies) {}

    void add(std::size_t source, const std::vector<std::size_t>& targets, const SendRoute& route,
             const RoutingSend& send) {
        ReceivePlan receive = receive_of(source, send, envelope_);
        receive.pan = settle_pan(source, route, send);
        for (const std::size_t target : targets) {
            plans_[target].receives.push_back(receive);
            returns_.insert(target);
        }
        ++tallies_.sends;
        tallies_.return_tracks = static_cast<int>(returns_.size());
        if (is_off(send)) ++tallies_.sends_off;
        if (route.bus.legs_part) ++tallies_.parted_legs;
        const bool is_surround_bus = route.bus_width > static_cast<std::size_t>(stereo_channels);
        if (is_surround_bus && plans_[source].channels <= stereo_channels) {
            ++tallies_.sends_into_surround;
        }
    }

private:
    /// REAPER's pan of the send.
    double settle_pan(std::size_t source, const SendRoute& route, const RoutingSend& send) {
        for (const Lane* lane : {&send.pan_lane, &send.pan_right_lane}) {
            if (!lane->points.empty()) ++tallies_.send_pan_lanes;
        }
        if (route.bus.side != 0) return route.bus.side;
        if (route.bus_width == 1) return 0;
        const TrackPlan& plan = plans_[source];
        if (is_mono_source(plan, send)) {
            const double pan = pan_of_mono(send);
            if (pan != 0) ++tallies_.panned_sends;
            return pan;
        }
        if (plan.channels <= stereo_channels && has_moved_knobs(send) &&
            with_moved_knobs_.insert(source).second) {
            tallies_.two_knob_tracks.push_back(plan.name);
        }
        return 0;
    }

    std::vector<TrackPlan>& plans_;
    const SendEnvelope& envelope_;
    RoutingTallies& tallies_;
    std::set<std::size_t> returns_;
    std::set<std::size_t> with_moved_knobs_;
};

/// Automation that is switched off moves nothing.
bool has_level_automation(const TrackPlan& plan) {
    if (plan.mixer.automation_off) return false;
    return std::ranges::any_of(plan.envelopes, [](const EnvelopePlan& envelope) {
        return !envelope.points.empty() &&
               (envelope.block == "VOLENV2" || envelope.block == "MUTEENV");
    });
}

/// True if Pro Tools plays the track's sends although it is muted.
bool is_muted_source(const TrackPlan& plan) {
    return plan.muted && !is_silent(plan);
}

}  // namespace

ReceivePlan receive_of(std::size_t source, const RoutingSend& send, const SendEnvelope& envelope) {
    ReceivePlan receive;
    receive.source = source;
    receive.mode = send.pre_fader ? pre_fader_mode : post_fader_mode;
    receive.gain = gain_of_db(send.level_db);
    receive.muted = is_off(send);
    const auto add = [&](const char* block, EnvelopeKind kind, const Lane& lane) {
        if (lane.points.empty()) return;
        EnvelopePlan planned = envelope(block, kind, lane);
        if (!planned.points.empty()) receive.envelopes.push_back(std::move(planned));
    };
    add("AUXVOLENV", EnvelopeKind::volume, send.level_lane);
    add("AUXMUTEENV", EnvelopeKind::mute, send.mute_lane);
    return receive;
}

void plan_outputs(std::vector<TrackPlan>& plans, const RoutingView& routing,
                  RoutingTallies& tallies) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const auto row = routing.strips.of(i).row;
        if (row) plan_output(plans, i, routing.routes.strips[*row], routing, tallies);
    }
}

void plan_sends(std::vector<TrackPlan>& plans, const RoutingView& routing,
                const SendEnvelope& envelope, RoutingTallies& tallies) {
    Sends receives(plans, envelope, tallies);
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const auto row = routing.strips.of(i).row;
        if (!row) continue;
        const StripRoute& route = routing.routes.strips[*row];
        if (!route.routing_row) continue;
        const std::vector<RoutingSend>& sends = routing.records.rows[*route.routing_row].sends;
        if (!is_silent(plans[i])) count_lost_sends(plans[i].name, route, sends, tallies);
        for (const SendRoute& send : route.sends) {
            auto targets = plans_behind(send.bus, routing);
            std::erase(targets, i);
            if (!targets.empty()) receives.add(i, targets, send, sends[send.send]);
        }
    }
}

void keep_pre_fader_sends(std::vector<TrackPlan>& plans, RoutingTallies& tallies) {
    std::vector<bool> feeds_pre_fader(plans.size(), false);
    for (const TrackPlan& plan : plans) {
        for (const auto* receives : {&plan.key_receives, &plan.receives}) {
            for (const ReceivePlan& receive : *receives) {
                if (receive.mode != post_fader_mode && !receive.muted) {
                    feeds_pre_fader[receive.source] = true;
                }
            }
        }
    }
    for (std::size_t i = 0; i < plans.size(); ++i) {
        TrackPlan& plan = plans[i];
        if (!feeds_pre_fader[i] || !is_muted_source(plan)) continue;
        if (has_level_automation(plan)) {
            tallies.silent_sources.push_back(plan.name);
        } else {
            plan.muted = false;
            plan.mixer.gain = 0;
            tallies.unmuted_sources.push_back(plan.name);
        }
    }
}

}  // namespace tanrove
