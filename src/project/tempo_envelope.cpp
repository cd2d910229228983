// Tempo events and meter changes merged into one envelope. A point can carry both; a meter change
// that stands on its own repeats the tempo in force.
#include "project/tempo_envelope.hpp"

#include <algorithm>
#include <cmath>

#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

constexpr double same_place_seconds = 1e-07;
constexpr double same_tempo_bpm = 1e-09;
constexpr std::size_t min_points_with_ramps = 3;

struct MeterMark {
    double position_seconds = 0;
    double bpm = 0;  ///< of the map at that place
    std::int32_t signature = 0;
};

bool differ(double bpm, double other_bpm) {
    return std::abs(bpm - other_bpm) > same_tempo_bpm;
}

int tempo_changes(const TempoMap& map) {
    int changes = 0;
    for (std::size_t i = 1; i < map.size(); ++i) changes += differ(map[i].bpm, map[i - 1].bpm);
    return changes;
}

std::int32_t signature_of(const MeterPoint& meter) {
    return static_cast<std::int32_t>(meter.denominator << 16 | (meter.numerator & 0xFFFF));
}

TempoEnvelope steps_of(const SessionTempo& tempo, const TempoClock& clock) {
    if (tempo.map.size() <= 1) {
        return {{.bpm = tempo.map.empty() ? tempo.bpm : tempo.map.front().bpm}};
    }
    TempoEnvelope steps;
    steps.reserve(tempo.map.size());
    for (const TempoPoint& point : tempo.map) {
        const double position = printable(clock.seconds(point.tick));
        steps.push_back({.position_seconds = position, .bpm = point.bpm});
    }
    return steps;
}

/// The tempo of the last event at or before a tick; the session's where there is none.
double tempo_at(const SessionTempo& tempo, double tick) {
    const auto behind = std::upper_bound(
        tempo.map.begin(), tempo.map.end(), tick,
        [](double wanted, const TempoPoint& point) { return wanted < point.tick; });
    return behind == tempo.map.begin() ? tempo.bpm : std::prev(behind)->bpm;
}

std::vector<MeterMark> marks_of(const SessionTempo& tempo, const TempoClock& clock,
                                const MeterChanges& meters) {
    std::vector<MeterMark> marks;
    marks.reserve(meters.changes.size());
    for (const MeterPoint& meter : meters.changes) {
        const auto tick = static_cast<double>(meter.tick);
        marks.push_back({.position_seconds = printable(clock.seconds(tick)),
                         .bpm = tempo_at(tempo, tick),
                         .signature = signature_of(meter)});
    }
    std::stable_sort(marks.begin(), marks.end(), [](const MeterMark& a, const MeterMark& b) {
        return a.position_seconds < b.position_seconds;
    });
    return marks;
}

/// Puts a signature on a point; `before` is the point before it, nullptr for the first.
void take_signature(TempoEnvelopePoint& point, const TempoEnvelopePoint* before,
                    const MeterMark& mark) {
    const bool changes_tempo = before != nullptr && differ(point.bpm, before->bpm);
    point.signature = mark.signature;
    point.flag = changes_tempo ? TempoPointFlag::tempo_and_meter : TempoPointFlag::meter_only;
}

/// A point for a meter change that no tempo event shares. On a ramp it has the tempo that the ramp
/// has there and goes on as the ramp does, so that the bar lines behind it stay.
TempoEnvelopePoint point_between(const TempoEnvelopePoint* before, const TempoEnvelopePoint* behind,
                                 const MeterMark& mark) {
    TempoEnvelopePoint point{.position_seconds = mark.position_seconds,
                             .bpm = mark.bpm,
                             .signature = mark.signature,
                             .flag = TempoPointFlag::meter_only};
    if (before == nullptr || behind == nullptr || before->shape != TempoShape::ramp) return point;

    const double whole = behind->position_seconds - before->position_seconds;
    const double part = (mark.position_seconds - before->position_seconds) / whole;
    point.bpm = before->bpm + (behind->bpm - before->bpm) * part;
    point.flag = TempoPointFlag::tempo_and_meter;
    point.shape = TempoShape::ramp;
    return point;
}

/// Both lists are in order of time, and so is the result.
TempoEnvelope merged(TempoEnvelope points, const std::vector<MeterMark>& marks) {
    TempoEnvelope all;
    all.reserve(points.size() + marks.size());
    auto next = points.begin();
    for (const MeterMark& mark : marks) {
        const double earliest = mark.position_seconds - same_place_seconds;
        const double latest = mark.position_seconds + same_place_seconds;
        while (next != points.end() && next->position_seconds < earliest) all.push_back(*next++);

        if (!all.empty() && all.back().position_seconds >= earliest) {
            take_signature(all.back(), all.size() > 1 ? &all[all.size() - 2] : nullptr, mark);
        } else if (next != points.end() && next->position_seconds <= latest) {
            take_signature(*next, all.empty() ? nullptr : &all.back(), mark);
        } else {
            all.push_back(point_between(all.empty() ? nullptr : &all.back(),
                                        next == points.end() ? nullptr : &*next, mark));
        }
    }
    all.insert(all.end(), next, points.end());
    return all;
}

}  // namespace

TempoEnvelope plan_tempo_envelope(const SessionTempo& tempo, const TempoClock& clock,
                                  const MeterChanges& meters, bool tempo_ramps,
                                  TempoTallies& tallies) {
    tallies.changes = tempo_changes(tempo.map);
    tallies.first_point_refused = tempo.first_point_refused;
    tallies.breaks_off = tempo.breaks_off;
    tallies.bpm = tempo.bpm;
    tallies.last_bpm = tempo.map.empty() ? tempo.bpm : tempo.map.back().bpm;
    tallies.last_seconds = tempo.map.empty() ? 0 : clock.seconds(tempo.map.back().tick);
    tallies.ramps_wanted = tempo_ramps;
    if (tempo.map.size() <= 1 && meters.changes.empty()) return {};

    TempoEnvelope points = steps_of(tempo, clock);
    if (tempo_ramps && points.size() >= min_points_with_ramps) {
        points = ramps_from_steps(points, tallies.ramps);
    }
    points.front().signature = signature_of(meters.first);
    points.front().flag = TempoPointFlag::tempo_and_meter;
    return merged(std::move(points), marks_of(tempo, clock, meters));
}

}  // namespace tanrove
