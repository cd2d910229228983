#include "mix/master_fader.hpp"

#include <cmath>

#include "base/fader_law.hpp"

namespace tanrove {

namespace {

/// A master fader closer to 0 dB than this stands at rest: the order of fader and plug-ins is then
/// no matter.
constexpr double rest_db = 0.05;

}  // namespace

MasterPlan plan_master(const MasterInput& input, EnvelopePlanner& planner,
                       LevelTallies& level_tallies, MasterTallies& tallies) {
    MasterPlan plan;
    tallies.master_faders = static_cast<int>(input.masters.count);
    if (input.masters.count == 0) return plan;
    const Strip& strip = input.masters.first;
    const bool is_automated = !input.automation_off && !strip.volume_lane.points.empty();
    plan.has_fader = true;
    plan.automation_off = input.automation_off;
    plan.name = strip.name;
    plan.muted = strip.muted;
    plan.fader_db = strip.fader_db;
    plan.gain = is_automated ? 1 : gain_of_db(strip.fader_db);
    EnvelopeTallies& points = level_tallies.envelopes;
    plan.envelopes = {
        planner.plan("MASTERVOLENV2", EnvelopeKind::volume, strip.volume_lane, points),
        planner.plan("MASTERMUTEENV", EnvelopeKind::mute, strip.mute_lane, points)};
    for (EnvelopePlan& envelope : plan.envelopes) envelope.active = !input.automation_off;
    if (input.automation_off) level_tallies.automation_off.push_back(strip.name);

    const bool moved = is_automated || std::abs(strip.fader_db) >= rest_db;
    const bool order_matters = moved && input.insert_count > 0;
    plan.wants_own_track = order_matters && !input.plain_master;
    tallies.name = strip.name;
    tallies.insert_count = input.insert_count;
    tallies.is_automated = is_automated;
    tallies.is_moved_before_plugins = order_matters && input.plain_master;
    return plan;
}

void place_master_track(MasterPlan& master, std::size_t master_row, const TrackStrips& strips,
                        const std::vector<TrackPlan>& tracks) {
    for (std::size_t row = master_row + 1; row < strips.mixer().rows.size(); ++row) {
        const auto track = strips.track_of(row);
        if (!track) continue;
        master.track_in_front_of = tracks[*track].name;
        return;
    }
}

}  // namespace tanrove
