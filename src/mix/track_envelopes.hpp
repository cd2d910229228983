// The session's automation lanes as REAPER's envelopes: times in seconds, values in REAPER's units,
// and volume ramps that follow Pro Tools' fader.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/automation_lanes.hpp"
#include "session/tempo_map.hpp"

namespace tanrove {

struct EnvelopeTallies {
    int followed_ramps = 0;    ///< volume ramps that were given points between their breakpoints
    int ramp_points = 0;       ///< all those points
    int lanes_past_limit = 0;  ///< lanes that are not written a further time
    int ramps_past_limit = 0;  ///< ramps that stay straight although they should follow the fader
};

/// Most points that are added to the ramps of one project, far more than a mix has: 8,000 on each
/// of a thousand tracks. A damaged session could otherwise ask for more than the memory holds; its
/// further ramps stay straight.
constexpr std::size_t max_ramp_points = 8'000'000;

/// Most breakpoints that are written a second time: the legs of a strip that could not be merged
/// have its lanes each. A damaged session could otherwise give every lane to ten thousand legs.
constexpr std::size_t max_copied_points = 4'000'000;

/// Plans the envelopes of one project: of its tracks, its sends and its master.
class EnvelopePlanner {
public:
    /// `rate_hz` is the session's, above 0.
    EnvelopePlanner(TempoClock clock, double rate_hz)
        : clock_(std::move(clock)), rate_hz_(rate_hz) {}

    /// The lane as the envelope `block`, active and not armed. It opens at time 0 with the lane's
    /// initial value; a lane without points gives none, likewise one whose copies are used up. The
    /// lanes must stay where they are while the planner lives.
    EnvelopePlan plan(std::string block, EnvelopeKind kind, const Lane& lane,
                      EnvelopeTallies& tallies);

private:
    bool may_plan(const Lane& lane);
    EnvelopePlan plan_in_order(std::string block, EnvelopeKind kind, const Lane& lane,
                               EnvelopeTallies& tallies);
    double seconds(const Lane& lane, double position) const;
    void follow_ramp(const Lane& lane, const LanePoint& from, const LanePoint& to,
                     std::vector<EnvelopePoint>& points, EnvelopeTallies& tallies);

    TempoClock clock_;
    double rate_hz_;
    std::size_t ramp_points_left_ = max_ramp_points;
    std::size_t copied_points_left_ = max_copied_points;
    std::set<const Lane*> planned_;
};

}  // namespace tanrove
