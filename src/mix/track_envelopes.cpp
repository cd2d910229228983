// Pro Tools moves a fader in a straight line along its throw; REAPER draws a straight line of gain.
// So a volume ramp gets points on the way wherever the two lines would part. All other lanes keep
// the points they have.
#include "mix/track_envelopes.hpp"

#include <algorithm>
#include <utility>

#include "base/fader_law.hpp"
#include "base/ramp_points.hpp"

namespace tanrove {

namespace {

constexpr double tenths_of_a_db = 10.0;
constexpr double lane_muted = 1.0;
constexpr double hundredths = 100.0;

/// The value of a lane in the envelope's unit. REAPER counts pan to the left, the session to the
/// right; REAPER's mute envelope is 1 where the track sounds.
double envelope_value(EnvelopeKind kind, double stored) {
    switch (kind) {
        case EnvelopeKind::volume:
            return gain_of_db(stored / tenths_of_a_db);
        case EnvelopeKind::mute:
            return stored == lane_muted ? 0 : 1;
        case EnvelopeKind::pan:
            return stored == 0 ? 0 : -stored / hundredths;
    }
    return 0;
}

bool in_time_order(const std::vector<LanePoint>& points) {
    return std::is_sorted(points.begin(), points.end(), [](const LanePoint& a, const LanePoint& b) {
        return a.position < b.position;
    });
}

Lane ordered(Lane lane) {
    std::stable_sort(
        lane.points.begin(), lane.points.end(),
        [](const LanePoint& a, const LanePoint& b) { return a.position < b.position; });
    return lane;
}

}  // namespace

double EnvelopePlanner::seconds(const Lane& lane, double position) const {
    return std::max(0.0, lane.in_ticks ? clock_.seconds(position) : position / rate_hz_);
}

/// True the first time that a lane is planned, and as long as copies are left.
bool EnvelopePlanner::may_plan(const Lane& lane) {
    if (planned_.insert(&lane).second) return true;
    if (lane.points.size() > copied_points_left_) return false;
    copied_points_left_ -= lane.points.size();
    return true;
}

EnvelopePlan EnvelopePlanner::plan(std::string block, EnvelopeKind kind, const Lane& lane,
                                   EnvelopeTallies& tallies) {
    const bool is_past_limit = !lane.points.empty() && !may_plan(lane);
    tallies.lanes_past_limit += is_past_limit ? 1 : 0;
    if (lane.points.empty() || is_past_limit) {
        return {.block = std::move(block), .kind = kind, .points = {}};
    }
    if (in_time_order(lane.points)) return plan_in_order(std::move(block), kind, lane, tallies);
    return plan_in_order(std::move(block), kind, ordered(lane), tallies);
}

EnvelopePlan EnvelopePlanner::plan_in_order(std::string block, EnvelopeKind kind, const Lane& lane,
                                            EnvelopeTallies& tallies) {
    EnvelopePlan envelope;
    envelope.block = std::move(block);
    envelope.kind = kind;
    const int shape = kind == EnvelopeKind::mute ? square_shape : linear_shape;
    envelope.points.reserve(lane.points.size() + 1);
    envelope.points.push_back({0, envelope_value(kind, lane.initial), shape});
    const LanePoint* previous = nullptr;  // from the initial value the lane jumps
    for (const LanePoint& point : lane.points) {
        if (kind == EnvelopeKind::volume && previous != nullptr) {
            follow_ramp(lane, *previous, point, envelope.points, tallies);
        }
        envelope.points.push_back(
            {seconds(lane, point.position), envelope_value(kind, point.value), shape});
        previous = &point;
    }
    return envelope;
}

/// Adds the points of a ramp. None comes closer than a sample to the one before it or to the
/// breakpoint: REAPER would round the two together.
void EnvelopePlanner::follow_ramp(const Lane& lane, const LanePoint& from, const LanePoint& to,
                                  std::vector<EnvelopePoint>& points, EnvelopeTallies& tallies) {
    if (from.value == to.value || from.position == to.position) return;
    const double sample = 1 / rate_hz_;
    const double end = seconds(lane, to.position);
    int added = 0;
    for (const RampPoint& step :
         ramp_points(FaderThrow::track, from.value / tenths_of_a_db, to.value / tenths_of_a_db)) {
        const double at =
            seconds(lane, from.position + step.fraction * (to.position - from.position));
        if (at - points.back().seconds < sample || end - at < sample) continue;
        if (ramp_points_left_ == 0) {
            ++tallies.ramps_past_limit;
            break;
        }
        --ramp_points_left_;
        points.push_back({at, gain_of_db(step.db), linear_shape});
        ++added;
    }
    tallies.ramp_points += added;
    tallies.followed_ramps += added > 0 ? 1 : 0;
}

}  // namespace tanrove
