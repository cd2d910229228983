// Cuts a ramp at the corners of the throw, where the level bends, and each piece into steps that
// are small enough for straight lines of gain to pass for straight lines of level.
#include "base/ramp_points.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tanrove {
namespace {

constexpr double max_step_db = 1.5;
constexpr double max_steps_of_a_piece = 200;
constexpr double standstill = 1e-12;  // of the fader, in positions
constexpr double corner_margin = 1e-9;

// A ramp of one step needs no points, unless it crosses a corner where the throw turns so sharply
// that a straight line would miss it by more than this: deep down, a tenth of the throw is 7 dB.
constexpr double unheard_bend_db = 0.05;

struct Ramp {
    FaderThrow fader;
    double from_db;
    double to_db;
    double from;  ///< fader positions
    double to;

    double fraction_of(double position) const { return (position - from) / (to - from); }

    bool crosses(double corner) const {
        return corner > std::min(from, to) + corner_margin &&
               corner < std::max(from, to) - corner_margin;
    }

    bool bends_at(const FaderCorner& corner) const {
        const double straight_db = from_db + fraction_of(corner.position) * (to_db - from_db);
        return std::abs(corner.db - straight_db) > unheard_bend_db;
    }
};

// What lies behind `start` and before `end`, in equal steps of the fader.
void add_steps(const Ramp& ramp, double start, double end, std::vector<RampPoint>& points) {
    const double span_db = std::abs(fader_db(ramp.fader, start) - fader_db(ramp.fader, end));
    const double wanted = std::ceil(span_db / max_step_db);
    const auto steps = static_cast<int>(std::clamp(wanted, 1.0, max_steps_of_a_piece));
    for (int i = 1; i < steps; ++i) {
        const double position = start + (end - start) * i / steps;
        points.push_back({ramp.fraction_of(position), fader_db(ramp.fader, position)});
    }
}

}  // namespace

std::vector<RampPoint> ramp_points(FaderThrow fader, double from_db, double to_db) {
    if (!std::isfinite(from_db) || !std::isfinite(to_db)) return {};
    const Ramp ramp{fader, from_db, to_db, fader_position(fader, from_db),
                    fader_position(fader, to_db)};
    if (std::abs(ramp.to - ramp.from) < standstill) return {};

    const bool one_step = std::abs(from_db - to_db) <= max_step_db;
    const auto corners = fader_corners(fader);
    std::vector<RampPoint> points;
    double piece_start = ramp.from;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const bool falls = ramp.to > ramp.from;
        const FaderCorner& corner = falls ? corners[i] : corners[corners.size() - 1 - i];
        if (!ramp.crosses(corner.position) || (one_step && !ramp.bends_at(corner))) continue;
        if (!one_step) add_steps(ramp, piece_start, corner.position, points);
        points.push_back({ramp.fraction_of(corner.position), corner.db});
        piece_start = corner.position;
    }
    if (!one_step) add_steps(ramp, piece_start, ramp.to, points);
    return points;
}

}  // namespace tanrove
