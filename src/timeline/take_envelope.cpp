// Pro Tools' curves as straight lines of gain: between two points REAPER's envelope runs straight.
#include "timeline/take_envelope.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "base/fader_law.hpp"
#include "base/ramp_points.hpp"
#include "timeline/fade_curve.hpp"
#include "timeline/stretch_markers.hpp"

namespace tanrove {
namespace {

constexpr double same_time = 1e-9;  // seconds

// A fade is cut in equal steps, and its ends, where curves are steep, in finer ones.
constexpr int fade_steps = 128;
constexpr int fine_steps = 1024;
constexpr int fine_steps_at_an_end = 7;

// Between those, a curve that still leaves its straight lines audibly is halved again: a strongly
// lifted fade-in is half way up after a hundredth of its length.
constexpr double unheard_ratio = 0.0055;  // 0.05 dB
constexpr double silence = 0.0005;        // -66 dB: below it nobody hears the way
constexpr int max_halvings = 40;

/// The level on a drawn line: straight along the clip fader's throw.
double level_between(double from_db, double to_db, double fraction) {
    const double from = fader_position(FaderThrow::clip, from_db);
    const double to = fader_position(FaderThrow::clip, to_db);
    return fader_db(FaderThrow::clip, from + fraction * (to - from));
}

TakeGainPoint point_between(const TakeGainPoint& before, const TakeGainPoint& behind,
                            double seconds) {
    const double fraction = (seconds - before.seconds) / (behind.seconds - before.seconds);
    return {seconds, level_between(before.db, behind.db, fraction)};
}

/// True if the fade is still the one whose curve was found to need the envelope, and has room.
bool fits_envelope(const ClipFade& fade, double item_length) {
    return fade.length > 0 && std::abs(fade.length - fade.spec_length) <= same_time &&
           fade.length <= item_length + same_time;
}

/// The fade as the item has it. One that the envelope plays joins its `curves`.
ItemFade settle_fade(const ClipFade& fade, FadeSide side, double item_length,
                     std::vector<FadeCurve>& curves, TakeTallies& tallies) {
    if (fade.as_envelope && fits_envelope(fade, item_length)) {
        const double start = side == FadeSide::fade_in ? 0 : item_length - fade.length;
        curves.push_back({side, fade.spec, start, fade.length});
        ++tallies.fades_as_envelope;
        return {.shape = fade.shape, .length = 0, .curve = fade.curve};
    }
    if (fade.as_envelope) {
        ++tallies.fades_as_nearest_shape;
        const auto form = normal_form(fade.spec, side);
        if (form && form->type == fade_type::step) ++tallies.steps_as_nearest_shape;
    }
    return {.shape = fade.shape, .length = fade.length, .curve = fade.curve};
}

/// The gain of a take at each moment of its item: its fades and its drawn line multiplied.
class TakeGain {
public:
    TakeGain(double playrate, std::span<const FadeCurve> curves,
             std::span<const TakeGainPoint> line)
        : playrate_(playrate), curves_(curves), line_(line) {}

    double at(double seconds) const {
        double gain = line_.empty() ? 1 : line_gain(seconds * playrate_);
        for (const FadeCurve& curve : curves_) gain *= gain_on(curve, seconds - curve.start);
        return gain;
    }

private:
    // Both ends are met exactly: a step stands on one of them.
    static double gain_on(const FadeCurve& curve, double seconds) {
        const bool is_in = curve.side == FadeSide::fade_in;
        if (is_in ? seconds > curve.length + same_time : seconds < -same_time) return 1;
        double fraction = seconds / curve.length;
        if (seconds < same_time) fraction = 0;
        if (seconds > curve.length - same_time) fraction = 1;
        return fade_gain(curve.spec, curve.side, fraction);
    }

    double line_gain(double source_seconds) const {
        const auto behind =
            std::ranges::upper_bound(line_, source_seconds, {}, &TakeGainPoint::seconds);
        if (behind == line_.begin()) return gain_of_db(line_.front().db);
        if (behind == line_.end()) return gain_of_db(line_.back().db);
        return gain_of_db(point_between(*(behind - 1), *behind, source_seconds).db);
    }

    double playrate_;
    std::span<const FadeCurve> curves_;
    std::span<const TakeGainPoint> line_;
};

/// Draws a take's gain from point to point, as closely as it takes; what the take's own volume
/// already does is taken off each point.
class EnvelopePen {
public:
    EnvelopePen(const TakeGain& gain, double fixed_gain, double playrate, double sample,
                std::vector<EnvelopePoint>& points)
        : gain_(gain),
          fixed_gain_(fixed_gain),
          playrate_(playrate),
          sample_(sample),
          points_(points) {}

    void draw_to(double seconds) {
        const Place next{seconds, gain_.at(seconds)};
        if (!points_.empty()) refine(last_, next, max_halvings);
        put(next);
        last_ = next;
    }

private:
    struct Place {
        double seconds = 0;
        double gain = 0;
    };

    void put(const Place& place) {
        points_.push_back(
            {.seconds = place.seconds * playrate_, .value = place.gain / fixed_gain_, .shape = 0});
    }

    void refine(const Place& from, const Place& to, int halvings) {
        if (halvings == 0 || to.seconds - from.seconds <= sample_ || runs_straight(from, to))
            return;
        const double middle = from.seconds + (to.seconds - from.seconds) / 2;
        const Place half{middle, gain_.at(middle)};
        refine(from, half, halvings - 1);
        put(half);
        refine(half, to, halvings - 1);
    }

    bool runs_straight(const Place& from, const Place& to) const {
        for (const double along : {0.25, 0.5, 0.75}) {
            const double gain = gain_.at(from.seconds + along * (to.seconds - from.seconds));
            const double drawn = from.gain + along * (to.gain - from.gain);
            if (gain > silence && std::abs(drawn - gain) > unheard_ratio * gain) return false;
        }
        return true;
    }

    const TakeGain& gain_;
    double fixed_gain_;
    double playrate_;
    double sample_;
    std::vector<EnvelopePoint>& points_;
    Place last_;
};

void add_fade_times(std::vector<double>& times, double start, double length, double sample) {
    for (int i = 0; i <= fade_steps; ++i) times.push_back(start + length * i / fade_steps);
    for (int i = 1; i <= fine_steps_at_an_end; ++i) {
        times.push_back(start + length * i / fine_steps);
        times.push_back(start + length - length * i / fine_steps);
    }
    if (sample >= length) return;
    times.push_back(start + sample);
    times.push_back(start + length - sample);
}

}  // namespace

const TakePlan& TakePlanner::plan(const ClipItem& clip) {
    plan_.playrate = has_stretch_map(clip) || clip.playrate <= 0 ? 1 : clip.playrate;
    plan_.has_volume = clip.has_clip_gain || clip.take_pan != 0 || clip.polarity_inverted;
    plan_.gain = clip.has_clip_gain ? gain_of_db(clip.gain->clip_gain_db) : 1;
    plan_.envelope.clear();

    const ClipFades& fades = *clip.fades;
    curves_ = fades.fade_curves;
    plan_.fade_in = settle_fade(fades.fade_in, FadeSide::fade_in, clip.length, curves_, tallies_);
    plan_.fade_out =
        settle_fade(fades.fade_out, FadeSide::fade_out, clip.length, curves_, tallies_);
    if (curves_.empty() && clip.gain->gain_envelope.empty()) return plan_;

    keep_gain_line(clip);
    follow_ramps();
    if (gain_.empty() && clip.gain->gain_envelope.size() > 1)
        plan_.gain *= gain_of_db(level_beside(clip) - clip.gain->fixed_gain_db);
    if (!gain_.empty()) ++tallies_.gain_envelopes;
    if (!curves_.empty()) {
        write_with_fades(clip);
    } else {
        write_gain_alone(clip.gain->fixed_gain_db);
    }
    return plan_;
}

/// A point keeps its place on the waveform, also where markers bend time.
TakeGainPoint TakePlanner::point_of(const ClipItem& clip, const ClipGainLinePoint& point) const {
    const double source_seconds = point.position * sample_;
    return {has_stretch_map(clip) ? item_position_of(clip.stretch->stretch_markers, source_seconds)
                                  : source_seconds - clip.source_offset,
            point.gain_db};
}

/// The level at which a line that lies wholly to one side of the item passes it.
double TakePlanner::level_beside(const ClipItem& clip) const {
    const auto& line = clip.gain->gain_envelope;
    const bool lies_before = point_of(clip, line.back()).seconds <= same_time;
    return lies_before ? line.back().gain_db : line.front().gain_db;
}

// Pro Tools plays the line through its whole length; REAPER's envelope lives inside the item, so
// the line is cut where it crosses the item's edges.
void TakePlanner::keep_gain_line(const ClipItem& clip) {
    kept_.clear();
    const double end = clip.length * plan_.playrate;
    const auto& line = clip.gain->gain_envelope;
    for (std::size_t i = 0; i < line.size() && line.size() > 1; ++i) {
        const TakeGainPoint point = point_of(clip, line[i]);
        if (point.seconds < -same_time) {
            if (i + 1 == line.size()) break;
            const TakeGainPoint next = point_of(clip, line[i + 1]);
            if (next.seconds > same_time) kept_.push_back(point_between(point, next, 0));
        } else if (point.seconds > end + same_time) {
            if (i == 0) break;
            const TakeGainPoint previous = point_of(clip, line[i - 1]);
            if (previous.seconds < end - same_time)
                kept_.push_back(point_between(previous, point, end));
            break;
        } else {
            kept_.push_back({std::clamp(point.seconds, 0.0, end), point.db});
        }
    }
    if (kept_.size() < 2) kept_.clear();
}

void TakePlanner::follow_ramps() {
    gain_.clear();
    for (const TakeGainPoint& to : kept_) {
        const std::size_t before = gain_.size();
        if (before > 0 && to.seconds - gain_.back().seconds >= 2 * sample_) {
            const TakeGainPoint from = gain_.back();
            for (const RampPoint& point : ramp_points(FaderThrow::clip, from.db, to.db)) {
                const double at = from.seconds + point.fraction * (to.seconds - from.seconds);
                if (at - gain_.back().seconds < sample_ || to.seconds - at < sample_) continue;
                gain_.push_back({at, point.db});
            }
        }
        const auto added = static_cast<int>(gain_.size() - before);
        tallies_.gain_ramp_points += added;
        if (added > 0) ++tallies_.gain_ramps;
        gain_.push_back(to);
    }
}

void TakePlanner::write_gain_alone(double fixed_db) {
    for (const TakeGainPoint& point : gain_)
        plan_.envelope.push_back(
            {.seconds = point.seconds, .value = gain_of_db(point.db - fixed_db), .shape = 0});
}

void TakePlanner::write_with_fades(const ClipItem& clip) {
    const TakeGain gain(plan_.playrate, curves_, gain_);
    times_.assign({0, clip.length});
    for (const FadeCurve& curve : curves_) {
        add_fade_times(times_, curve.start, curve.length, sample_);
    }
    for (const TakeGainPoint& point : gain_) times_.push_back(point.seconds / plan_.playrate);
    std::ranges::sort(times_);

    const double fixed_gain = gain_.empty() ? 1 : gain_of_db(clip.gain->fixed_gain_db);
    EnvelopePen pen(gain, fixed_gain, plan_.playrate, sample_, plan_.envelope);
    double last = -1;
    for (const double time : times_) {
        const double seconds = std::clamp(time, 0.0, clip.length);
        if (seconds - last < same_time) continue;
        pen.draw_to(seconds);
        last = seconds;
    }
}

}  // namespace tanrove
