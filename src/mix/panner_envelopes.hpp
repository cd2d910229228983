// The lanes of a panner as envelopes of REAPER's. A parameter there follows from several of Pro
// Tools' lanes at once, so its envelope has a point wherever one of them has.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "mix/panner_plan.hpp"
#include "session/tempo_map.hpp"

namespace tanrove {

/// Most points that are put between those of the lanes in one project, far more than a mix has. A
/// damaged session could otherwise ask for more than the memory holds.
constexpr std::size_t max_added_panner_points = 8'000'000;

/// Plans the panners' envelopes of one project.
class PannerEnvelopePlanner {
public:
    /// `rate_hz` is the session's, above 0.
    PannerEnvelopePlanner(TempoClock clock, double rate_hz,
                          std::size_t points_to_add = max_added_panner_points)
        : clock_(std::move(clock)), rate_hz_(rate_hz), points_left_(points_to_add) {}

    /// An envelope for each parameter that a lane of the plan moves, in the order of the ids.
    std::vector<PannerEnvelope> plan(const PannerPlan& plan);

    /// Moves that are straight lines because no point was left for them.
    int straight_moves() const { return straight_moves_; }

private:
    PannerEnvelope envelope(const PannerParameter& parameter, const std::vector<Lane>& lanes);
    std::vector<double> times_of(const std::vector<const Lane*>& moving);
    std::vector<Lane> in_samples(std::vector<Lane> lanes) const;
    double seconds(double position, bool in_ticks) const;

    TempoClock clock_;
    double rate_hz_;
    std::size_t points_left_;
    int straight_moves_ = 0;
};

}  // namespace tanrove
