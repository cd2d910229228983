// Fits ramps to runs of tempo steps.
//
// A step stands for the ramp's tempo in the middle of that step, so the ramp goes through the
// middles of the steps: it opens half a step ahead of the run, with the tempo that is in force
// there, and has a point in the middle of each step. The last of them is held to the end of its
// step, where the next tempo of the map closes the ramp.
//
//     steps             ____|        ramp              _.o--|
//                  ____|                          _.o'
//             ____|                          _.o'
//     -------|                        ----o'
//
// Steps are not exactly alike, so each point's tempo is solved from the one before it: what the
// line plays between two points is what the steps play there.
#include "project/tempo_ramps.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tanrove {

namespace {

constexpr double max_step_seconds = 2.0;
constexpr double shortest_like_step = 0.98;  // of the run's first step
constexpr double longest_like_step = 1.02;
constexpr std::size_t min_run_points = 3;

// Past these a solved tempo is no longer the ramp that was drawn.
constexpr double min_ramp_bpm = 1.0;
constexpr double max_ramp_bpm = 1000.0;
constexpr double max_departure = 0.25;  // of the stored tempo
constexpr double min_stretch_seconds = 1e-09;

/// A run of steps: those of the points from `first` on, up to the point `end` at which the last of
/// them ends.
struct Run {
    std::size_t first = 0;
    std::size_t end = 0;
};

double step_seconds(const TempoEnvelope& steps, std::size_t i) {
    return steps[i + 1].position_seconds - steps[i].position_seconds;
}

/// Beats, as a multiple that all steps share.
double step_beats(const TempoEnvelope& steps, std::size_t i) {
    return step_seconds(steps, i) * steps[i].bpm;
}

/// 1 up, -1 down, 0 where the step to the next point changes nothing.
int direction(const TempoEnvelope& steps, std::size_t i) {
    return (steps[i + 1].bpm > steps[i].bpm) - (steps[i + 1].bpm < steps[i].bpm);
}

/// The longest run that starts at this point; nullopt if none does.
std::optional<Run> run_at(const TempoEnvelope& steps, std::size_t first) {
    if (steps.size() - first < min_run_points) return std::nullopt;
    const double length = step_seconds(steps, first);
    const int way = direction(steps, first);
    if (!(length > 0 && length <= max_step_seconds) || way == 0) return std::nullopt;

    const auto is_like = [](double step, double first_step) {
        return step >= shortest_like_step * first_step && step <= longest_like_step * first_step;
    };
    const double beats = step_beats(steps, first);
    const auto is_like_the_first = [&](std::size_t i) {
        return is_like(step_beats(steps, i), beats) || is_like(step_seconds(steps, i), length);
    };
    std::size_t last = first + 1;
    while (last + 1 < steps.size() && direction(steps, last) == way && is_like_the_first(last)) {
        ++last;
    }
    if (last - first + 1 < min_run_points) return std::nullopt;
    // The last point's own step belongs to the ramp as well where it is not a hold.
    const bool last_is_a_step = last + 1 < steps.size() && is_like_the_first(last);
    return Run{first, last_is_a_step ? last + 1 : last};
}

bool is_within_bounds(double solved_bpm, double stored_bpm) {
    return solved_bpm >= min_ramp_bpm && solved_bpm <= max_ramp_bpm &&
           std::abs(solved_bpm - stored_bpm) <= max_departure * stored_bpm;
}

/// Half a step ahead of the run, from the tempo in force there. Where the point before stands
/// there or behind it, the ramp opens on the run's first point.
TempoEnvelopePoint opening_of(const TempoEnvelope& steps, const Run& run,
                              const TempoEnvelope& written) {
    TempoEnvelopePoint opening = steps[run.first];
    const double ahead = opening.position_seconds - step_seconds(steps, run.first) / 2;
    if (!written.empty() && ahead - written.back().position_seconds >= min_stretch_seconds) {
        opening.position_seconds = ahead;
        opening.bpm = written.back().bpm;
    }
    opening.shape = TempoShape::ramp;
    return opening;
}

/// The tempo at the end of a line over `seconds` that is then held for `held_seconds`, so that both
/// together play `played` (tempo times seconds): (from + to) / 2 * seconds + to * held = played.
double tempo_at_end(double from_bpm, double seconds, double held_seconds, double played) {
    return (2 * played - from_bpm * seconds) / (seconds + 2 * held_seconds);
}

/// The ramp's points from the opening to the last middle; nullopt if a tempo leaves the bounds.
std::optional<TempoEnvelope> ramp_over(const TempoEnvelope& steps, const Run& run,
                                       const TempoEnvelopePoint& opening) {
    TempoEnvelope ramp{opening};
    double held_bpm = opening.bpm;  // what the steps play from the last ramp point on
    for (std::size_t i = run.first; i < run.end; ++i) {
        const TempoEnvelopePoint& from = ramp.back();
        const TempoEnvelopePoint& step = steps[i];
        const double half = step_seconds(steps, i) / 2;
        const double middle = step.position_seconds + half;
        const double seconds = middle - from.position_seconds;
        if (!(seconds >= min_stretch_seconds)) return std::nullopt;

        // The last middle is held, and makes up on the way for what holding it differs by.
        const bool is_last = i + 1 == run.end;
        const double held_seconds = is_last ? half : 0;
        const double played = held_bpm * (step.position_seconds - from.position_seconds) +
                              step.bpm * (half + held_seconds);
        const double bpm = tempo_at_end(from.bpm, seconds, held_seconds, played);
        if (!is_within_bounds(bpm, step.bpm)) return std::nullopt;
        ramp.push_back({.position_seconds = middle,
                        .bpm = bpm,
                        .shape = is_last ? TempoShape::step : TempoShape::ramp});
        held_bpm = step.bpm;
    }
    return ramp;
}

/// Seconds from a point until `played` (tempo times seconds) has been played. With tempo a + c * t
/// that is the root of a * t + c * t^2 / 2 = played, in the form that is stable for small c.
double seconds_until(const TempoEnvelopePoint& from, const TempoEnvelopePoint* next,
                     double played) {
    if (next == nullptr || from.shape == TempoShape::step) return played / from.bpm;
    const double seconds = next->position_seconds - from.position_seconds;
    const double slope = (next->bpm - from.bpm) / seconds;
    const double end_bpm_squared = from.bpm * from.bpm + 2 * slope * played;
    return 2 * played / (from.bpm + std::sqrt(std::max(end_bpm_squared, 0.0)));
}

/// What is played from a point to the next: tempo times seconds.
double played_between(const TempoEnvelopePoint& from, const TempoEnvelopePoint& to) {
    const double end_bpm = from.shape == TempoShape::ramp ? to.bpm : from.bpm;
    return (from.bpm + end_bpm) / 2 * (to.position_seconds - from.position_seconds);
}

/// How far apart, at most, the two maps put the beat on which a tempo event of the session stands.
double greatest_difference_seconds(const TempoEnvelope& steps, const TempoEnvelope& ramps) {
    double greatest = 0;
    double played = 0;           // by the steps, up to step `i`
    double played_to_point = 0;  // by the ramps, up to point `at`
    std::size_t at = 0;
    for (std::size_t i = 1; i < steps.size(); ++i) {
        played += played_between(steps[i - 1], steps[i]);
        while (at + 1 < ramps.size()) {
            const double to_next = played_to_point + played_between(ramps[at], ramps[at + 1]);
            if (to_next > played) break;
            played_to_point = to_next;
            ++at;
        }
        const TempoEnvelopePoint* next = at + 1 < ramps.size() ? &ramps[at + 1] : nullptr;
        const double there =
            ramps[at].position_seconds + seconds_until(ramps[at], next, played - played_to_point);
        greatest = std::max(greatest, std::abs(there - steps[i].position_seconds));
    }
    return greatest;
}

}  // namespace

TempoEnvelope ramps_from_steps(const TempoEnvelope& steps, RampTallies& tallies) {
    TempoEnvelope written;
    written.reserve(steps.size() + 2);
    std::size_t i = 0;
    while (i < steps.size()) {
        const std::optional<Run> run = run_at(steps, i);
        if (!run) {
            written.push_back(steps[i++]);
            continue;
        }
        const auto ramp = ramp_over(steps, *run, opening_of(steps, *run, written));
        if (ramp) {
            ++tallies.written;
            written.insert(written.end(), ramp->begin(), ramp->end());
        } else {
            ++tallies.left_as_steps;
            written.insert(written.end(), steps.begin() + static_cast<std::ptrdiff_t>(run->first),
                           steps.begin() + static_cast<std::ptrdiff_t>(run->end));
        }
        i = run->end;  // closes this ramp, and may open the next
    }
    if (tallies.written > 0) {
        tallies.greatest_difference_seconds = greatest_difference_seconds(steps, written);
    }
    return written;
}

}  // namespace tanrove
