// A lane runs in straight lines, but a product or the least of several lanes does not: where more
// than one of them moves, the way between two points is cut in eight.
#include "mix/panner_envelopes.hpp"

#include <algorithm>
#include <iterator>

namespace tanrove {

namespace {

constexpr int parts_of_gap = 8;

bool is_earlier(const LanePoint& one, const LanePoint& other) {
    return one.position < other.position;
}

/// Walks a lane from left to right.
class LaneWalk {
public:
    explicit LaneWalk(const Lane& lane) : lane_(lane) {}

    /// Goes on to a time, which is not in front of the one before.
    void advance(double time) {
        const auto& points = lane_.points;
        while (next_ < points.size() && points[next_].position < time) ++next_;
        behind_ = next_;
        while (behind_ < points.size() && points[behind_].position == time) ++behind_;
        time_ = time;
    }

    bool jumps() const { return behind_ - next_ > 1; }

    /// Where the lane comes from at this time, and where it goes from there.
    double value_before() const { return behind_ > next_ ? lane_.points[next_].value : between(); }
    double value_behind() const {
        return behind_ > next_ ? lane_.points[behind_ - 1].value : between();
    }

private:
    double between() const {
        const auto& points = lane_.points;
        if (points.empty()) return lane_.initial;
        if (next_ == 0) return points[0].position > 0 ? lane_.initial : points[0].value;
        const LanePoint& from = points[next_ - 1];
        if (next_ == points.size()) return from.value;
        const LanePoint& to = points[next_];
        return from.value +
               (to.value - from.value) * ((time_ - from.position) / (to.position - from.position));
    }

    const Lane& lane_;
    std::size_t next_ = 0;    ///< the first point that is not in front of the time
    std::size_t behind_ = 0;  ///< the first behind it
    double time_ = 0;
};

/// The lanes of a plan as they are heard: ordered, and within Pro Tools' knobs.
std::vector<Lane> held_lanes(const PannerPlan& plan) {
    std::vector<Lane> lanes = plan.lanes;
    lanes.resize(panner_control_count);
    lanes.push_back(plan.lfe_lane);
    for (std::size_t place = 0; place < lanes.size(); ++place) {
        Lane& lane = lanes[place];
        lane.initial = held_panner_value(place, lane.initial);
        for (LanePoint& point : lane.points) point.value = held_panner_value(place, point.value);
        std::ranges::stable_sort(lane.points, is_earlier);
    }
    return lanes;
}

/// The lanes of a strip count all in ticks or all in samples. Should those of one parameter not,
/// they have no unit in common.
bool has_both_units(const PannerParameter& parameter, const std::vector<Lane>& lanes) {
    bool any_in_ticks = false;
    bool any_in_samples = false;
    for (const std::size_t place : parameter.lanes) {
        const Lane& lane = lanes[place];
        if (lane.moves()) (lane.in_ticks ? any_in_ticks : any_in_samples) = true;
    }
    return any_in_ticks && any_in_samples;
}

PannerValues static_values(const std::vector<Lane>& lanes) {
    PannerValues values = {};
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = lanes[i].initial;
    return values;
}

}  // namespace

double PannerEnvelopePlanner::seconds(double position, bool in_ticks) const {
    return std::max(0.0, in_ticks ? clock_.seconds(position) : position / rate_hz_);
}

/// The same lanes, all in samples.
std::vector<Lane> PannerEnvelopePlanner::in_samples(std::vector<Lane> lanes) const {
    for (Lane& lane : lanes) {
        if (!lane.in_ticks) continue;
        for (LanePoint& point : lane.points) {
            point.position = clock_.seconds(point.position) * rate_hz_;
        }
        lane.in_ticks = false;
    }
    return lanes;
}

/// The times of all points of these lanes, each once, and those between them.
std::vector<double> PannerEnvelopePlanner::times_of(const std::vector<const Lane*>& moving) {
    std::vector<double> points;
    for (const Lane* lane : moving) {
        std::vector<double> merged;
        std::vector<double> own;
        for (const LanePoint& point : lane->points) own.push_back(point.position);
        std::ranges::merge(points, own, std::back_inserter(merged));
        points = std::move(merged);
    }
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (moving.size() < 2) return points;

    std::vector<double> times;
    for (std::size_t i = 0; i < points.size(); ++i) {
        times.push_back(points[i]);
        if (i + 1 == points.size()) break;
        if (points_left_ < parts_of_gap - 1) {
            ++straight_moves_;
            continue;
        }
        points_left_ -= parts_of_gap - 1;
        const double gap = points[i + 1] - points[i];
        for (int k = 1; k < parts_of_gap; ++k) {
            times.push_back(points[i] + gap * k / parts_of_gap);
        }
    }
    return times;
}

PannerEnvelope PannerEnvelopePlanner::envelope(const PannerParameter& parameter,
                                               const std::vector<Lane>& lanes) {
    PannerEnvelope envelope{.id = parameter.id,
                            .name = parameter.name,
                            .display = parameter.display,
                            .runs_down = parameter.runs_down,
                            .points = {}};
    std::vector<const Lane*> moving;
    std::vector<LaneWalk> walks;
    for (const std::size_t place : parameter.lanes) {
        if (lanes[place].moves()) moving.push_back(&lanes[place]);
        walks.emplace_back(lanes[place]);
    }
    if (moving.empty()) return envelope;

    PannerValues values = static_values(lanes);
    const bool in_ticks = moving.front()->in_ticks;
    const auto add = [&](double time) {
        envelope.points.push_back(
            {seconds(time, in_ticks), std::clamp(parameter.value(values), 0.0, 1.0)});
    };
    const std::vector<double> times = times_of(moving);
    if (times.front() > 0) add(0);
    for (const double time : times) {
        bool jumps = false;
        for (std::size_t i = 0; i < walks.size(); ++i) {
            walks[i].advance(time);
            jumps = jumps || walks[i].jumps();
            values[parameter.lanes[i]] = walks[i].value_before();
        }
        if (jumps) add(time);
        for (std::size_t i = 0; i < walks.size(); ++i) {
            values[parameter.lanes[i]] = walks[i].value_behind();
        }
        add(time);
    }
    return envelope;
}

std::vector<PannerEnvelope> PannerEnvelopePlanner::plan(const PannerPlan& plan) {
    const std::vector<Lane> lanes = held_lanes(plan);
    std::vector<PannerEnvelope> envelopes;
    for (const PannerParameter& parameter : panner_parameters()) {
        PannerEnvelope planned = has_both_units(parameter, lanes)
                                     ? envelope(parameter, in_samples(lanes))
                                     : envelope(parameter, lanes);
        if (!planned.points.empty()) envelopes.push_back(std::move(planned));
    }
    return envelopes;
}

}  // namespace tanrove
