// Sessions of Pro Tools 2026 on have the panner as lanes, whose initial values are its settings;
// older ones have the settings in the channel record, and lanes that are not known one by one.
#include "mix/plan_panners.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <set>

#include "base/formatted_text.hpp"
#include "mix/channel_codes.hpp"
#include "mix/track_envelopes.hpp"

namespace tanrove {

namespace {

constexpr double tenths_of_a_db = 10.0;
constexpr std::int32_t behind_first_pair = 2;

/// For each plan whether its output goes into another.
std::vector<bool> plays_into_tracks(const std::vector<TrackPlan>& plans) {
    std::vector<bool> plays(plans.size(), false);
    for (const TrackPlan& plan : plans) {
        for (const ChannelReceive& receive : plan.channel_receives) plays[receive.source] = true;
    }
    return plays;
}

/// For each strip whether a track receives one of its sends, or a key does.
std::vector<bool> sending_strips(const RoutingView& routing) {
    const auto& strips = routing.routes.strips;
    std::vector<bool> sends(strips.size(), false);
    for (std::size_t i = 0; i < strips.size(); ++i) {
        sends[i] = std::ranges::any_of(strips[i].sends, [&](const SendRoute& send) {
            return std::ranges::any_of(send.bus.strip_rows, [&](std::size_t target) {
                return target != i && routing.strips.track_of(target);
            });
        });
    }
    if (!routing.records.carries_keys) return sends;
    for (const KeyBus& key_bus : routing.routes.key_buses) {
        for (const KeyFeed& feed : key_bus.feeds) {
            if (feed.send) sends[feed.strip_row] = true;
        }
    }
    return sends;
}

/// True if the track plays to the hardware over its surround panner, which no track carries on.
bool plays_straight_to_hardware(const TrackPlan& plan, const StripRoute& route) {
    return route.output_is_wide && route.output_is_hardware && !route.wide_bus &&
           plan.mixer.plays_to_parent;
}

const PannerLanes* lanes_of(const Strip& strip, std::size_t panner) {
    return panner < strip.surround_lanes.size() ? &strip.surround_lanes[panner] : nullptr;
}

/// The settings of a strip's first panner, or of its second, which is the right channel's. Each
/// looks for itself: a right channel without lanes stands where the record says, whatever the left
/// one has.
std::optional<PannerNumbers> numbers_of(const Strip* strip, std::size_t panner) {
    if (strip == nullptr) return std::nullopt;
    const PannerLanes* lanes = lanes_of(*strip, panner);
    auto numbers = lanes == nullptr ? strip->stored_panners[panner] : PannerNumbers{};
    for (std::size_t i = 0; numbers && i < numbers->size(); ++i) {
        const double stored = lanes == nullptr ? (*numbers)[i] : (*lanes)[i].initial;
        (*numbers)[i] = static_cast<std::int32_t>(held_panner_value(i, stored));
    }
    return numbers;
}

void set_numbers(PannerPlan& plan, const PannerNumbers& left, const PannerNumbers& right) {
    plan.front_x = left[0];
    plan.rear_x = left[1];
    plan.front_rear = left[2];
    plan.front_divergence = left[3];
    plan.rear_divergence = left[4];
    plan.front_rear_divergence = left[5];
    plan.center_percent = left[6];
    if (!plan.is_stereo) return;
    plan.right_front_x = right[0];
    plan.right_rear_x = right[1];
    plan.right_front_rear = right[2];
    plan.right_front_divergence = right[3];
    plan.right_rear_divergence = right[4];
    plan.right_front_rear_divergence = right[5];
}

/// Of the track, which panner of its strip it plays: a right leg the second.
std::size_t first_panner(const TrackPlan& track) {
    return track.leg_pan > 0 ? 1 : 0;
}

int moving_lanes(const PannerLanes& lanes) {
    return static_cast<int>(std::ranges::count_if(lanes, &Lane::moves));
}

/// Gives one track after the other its panner.
class Panners {
public:
    Panners(PannerEnvelopePlanner& envelopes, PannerTallies& tallies)
        : envelopes_(envelopes), tallies_(tallies) {}

    PannerTry plan(TrackPlan& track, const WideBus& bus, const Strip* strip, bool has_sends) {
        const bool is_leg = track.leg_pan != 0;
        const std::size_t first = first_panner(track);
        const auto left = numbers_of(strip, first);
        const auto second = is_leg ? std::nullopt : numbers_of(strip, 1);
        const bool is_stereo =
            track.width_unknown ? second.has_value() : track.channels == stereo_channels && !is_leg;
        const auto right = is_stereo ? second : left;
        PannerTry result{.track = track.name,
                         .bus = bus.name,
                         .channels = bus.channels,
                         .leg_count = bus.layout.leg_count,
                         .is_placed = !bus.layout.speakers.empty(),
                         .has_settings = left && right,
                         .is_stereo = is_stereo};
        if (left) result.first_numbers = {(*left)[0], (*left)[1], (*left)[2]};
        if (!result.is_placed) {
            ++tallies_.unknown_layouts;
        } else if (!result.has_settings) {
            ++tallies_.without_settings;
        } else {
            PannerPlan& panner = track.panner.emplace();
            panner.channels = static_cast<std::int32_t>(bus.channels);
            panner.speakers = bus.layout.speakers;
            panner.is_stereo = is_stereo;
            if (has_sends) panner.first_channel = behind_first_pair;
            tallies_.with_sends += has_sends ? 1 : 0;
            set_numbers(panner, *left, *right);
            ++(is_stereo ? tallies_.stereo : tallies_.mono);
            plan_lanes(panner, *strip, first);
        }
        return result;
    }

private:
    void plan_lanes(PannerPlan& panner, const Strip& strip, std::size_t number) {
        const std::optional<Lane>& lfe = strip.surround_master_lane;
        panner.has_lfe = lfe.has_value();
        if (lfe) panner.lfe_db = lfe->initial / tenths_of_a_db;
        const PannerLanes* lanes = lanes_of(strip, number);
        if (panner.is_stereo || lanes == nullptr) return;
        if (may_copy(*lanes, lfe)) {
            panner.lanes.assign(lanes->begin(), lanes->end());
            if (lfe) panner.lfe_lane = *lfe;
            plan_envelopes(panner);
        } else {
            tallies_.lanes_past_limit += moving_lanes(*lanes) + (lfe && lfe->moves() ? 1 : 0);
        }
    }

    /// True the first time that a panner is planned, and as long as copies of its points are left.
    bool may_copy(const PannerLanes& lanes, const std::optional<Lane>& lfe) {
        if (copied_.insert(&lanes).second) return true;
        std::size_t points = lfe ? lfe->points.size() : 0;
        for (const Lane& lane : lanes) points += lane.points.size();
        if (points > copied_points_left_) return false;
        copied_points_left_ -= points;
        return true;
    }

    void plan_envelopes(PannerPlan& panner) {
        panner.envelopes = envelopes_.plan(panner);
        tallies_.straight_moves = envelopes_.straight_moves();
        for (const PannerEnvelope& envelope : panner.envelopes) {
            ++tallies_.envelopes;
            tallies_.envelope_points += static_cast<int>(envelope.points.size());
        }
    }

    PannerEnvelopePlanner& envelopes_;
    PannerTallies& tallies_;
    std::set<const PannerLanes*> copied_;
    std::size_t copied_points_left_ = max_copied_points;
};

/// What the tracks of a strip have of its panners.
struct PannersOfStrip {
    std::array<bool, max_panners> is_panned = {};  ///< a track of that side has one
    std::array<bool, max_panners> is_played = {};  ///< its lanes are on a track
};

/// Lanes of a mono or stereo strip that move and are on none of its tracks. In front of a surround
/// bus the pans of a strip without panner lanes are its panner's.
int lanes_left_out(const Strip& strip, const PannersOfStrip& panners) {
    int count = strip.short_panner_moves + strip.unknown_panner_moves;
    bool plays_lfe = false;
    for (std::size_t i = 0; i < strip.surround_lanes.size(); ++i) {
        if (!panners.is_played[i]) count += moving_lanes(strip.surround_lanes[i]);
        plays_lfe |= panners.is_played[i];
    }
    const auto& lfe = strip.surround_master_lane;
    if (lfe && lfe->moves() && !plays_lfe) ++count;
    if (strip.surround) return count;
    const auto& [left, right] = panners.is_panned;
    if ((left || right) && strip.pan_lane.moves()) ++count;
    if (left && strip.dual_pan_lane.moves()) ++count;
    if (right && strip.pan_right_lane.moves()) ++count;
    return count;
}

}  // namespace

std::vector<PannerTry> plan_panners(std::vector<TrackPlan>& plans, const RoutingView& routing,
                                    PannerEnvelopePlanner& envelopes, PannerTallies& tallies) {
    Panners panners(envelopes, tallies);
    const std::vector<bool> plays = plays_into_tracks(plans);
    const std::vector<bool> sends = sending_strips(routing);
    std::vector<PannerTry> tries;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const TrackStrip& strip = routing.strips.of(i);
        if (!strip.row || plans[i].channels > stereo_channels) continue;
        const StripRoute& route = routing.routes.strips[*strip.row];
        if (route.taken_width > static_cast<std::size_t>(stereo_channels)) continue;
        if (plays_straight_to_hardware(plans[i], route)) {
            tallies.straight_to_hardware.push_back(plans[i].name);
        }
        if (!plays[i] || !route.wide_bus) continue;
        tries.push_back(panners.plan(plans[i], routing.routes.wide_buses[*route.wide_bus],
                                     strip.strip, sends[*strip.row]));
    }
    return tries;
}

void count_panner_lanes_left_out(const std::vector<TrackPlan>& plans, const TrackStrips& strips,
                                 PannerTallies& tallies) {
    std::map<const Strip*, PannersOfStrip> panners;  // of the strips that are not counted yet
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const Strip* strip = strips.of(i).strip;
        if (strip == nullptr) continue;
        PannersOfStrip& own = panners[strip];
        if (!plans[i].panner) continue;
        const std::size_t side = first_panner(plans[i]);
        own.is_panned[side] = true;
        if (plans[i].leg_pan == 0) own.is_panned.fill(true);
        if (!plans[i].panner->lanes.empty()) own.is_played[side] = true;
    }
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const Strip* strip = strips.of(i).strip;
        const auto own = panners.find(strip);
        if (own == panners.end()) continue;
        const bool is_wide = plans[i].channels > stereo_channels;
        tallies.lanes_left_out +=
            is_wide ? strip->short_panner_moves : lanes_left_out(*strip, own->second);
        panners.erase(own);  // legs share their strip
    }
}

std::string panner_tries_text(const std::vector<PannerTry>& tries) {
    TextBuffer text;
    for (const PannerTry& one : tries) {
        const auto& numbers = one.first_numbers;
        text.print("SURR route %s -> %s W %d legs %d ok %d have %d stereo %d v %d %d %d\n",
                   one.track.c_str(), one.bus.c_str(), static_cast<int>(one.channels),
                   static_cast<int>(one.leg_count), one.is_placed ? 1 : 0, one.has_settings ? 1 : 0,
                   one.is_stereo ? 1 : 0, numbers[0], numbers[1], numbers[2]);
    }
    return text.text();
}

}  // namespace tanrove
