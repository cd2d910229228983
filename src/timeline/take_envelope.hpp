// What an item plays on top of its file: REAPER's own fades, the take's rate and fixed volume, and
// the one volume envelope in which drawn clip gain and the fades that REAPER cannot make meet.
#pragma once

#include <vector>

#include "timeline/clip_item.hpp"
#include "timeline/envelope_point.hpp"

namespace tanrove {

struct TakeTallies {
    int gain_envelopes = 0;          ///< items whose envelope holds drawn clip gain
    int gain_ramps = 0;              ///< ramps of it that gained points on their way
    int gain_ramp_points = 0;        ///< those points
    int fades_as_envelope = 0;       ///< fades that the envelope plays
    int fades_as_nearest_shape = 0;  ///< fades that an edit kept out of the envelope
    int steps_as_nearest_shape = 0;  ///< of those: jumps, which REAPER slopes
};

/// A fade as REAPER's item has it.
struct ItemFade {
    double shape = 0;
    double length = 0;  ///< seconds; 0 too where the envelope plays the fade
    double curve = 0;
};

/// Everything of an item that its clip alone does not say.
struct TakePlan {
    ItemFade fade_in;
    ItemFade fade_out;
    double playrate = 1;                  ///< 1 where stretch markers carry the rate
    bool has_volume = false;              ///< the take has a volume line of its own
    double gain = 1;                      ///< linear, of that line
    std::vector<EnvelopePoint> envelope;  ///< in source time; empty for none
};

/// A point of drawn gain. A line's levels are absolute; the envelope is written relative to the
/// take's volume, so that the two together are the line.
struct TakeGainPoint {
    double seconds =
        0;  ///< of source time, from the item's start; of the item's where it has markers
    double db = 0;
};

/// Plans takes, one at a time, with memory that is kept from one to the next.
class TakePlanner {
public:
    TakePlanner(double rate_hz, TakeTallies& tallies) : sample_(1 / rate_hz), tallies_(tallies) {}

    /// Valid until the next call.
    const TakePlan& plan(const ClipItem& clip);

    /// What it has counted so far.
    TakeTallies& tallies() { return tallies_; }

private:
    TakeGainPoint point_of(const ClipItem& clip, const ClipGainLinePoint& point) const;
    double level_beside(const ClipItem& clip) const;
    void keep_gain_line(const ClipItem& clip);
    void follow_ramps();
    void write_gain_alone(double fixed_db);
    void write_with_fades(const ClipItem& clip);

    double sample_;  // seconds
    TakeTallies& tallies_;
    TakePlan plan_;
    std::vector<TakeGainPoint> kept_;
    std::vector<TakeGainPoint> gain_;  // `kept_` with what its ramps gained
    std::vector<FadeCurve> curves_;    // that the envelope plays
    std::vector<double> times_;
};

}  // namespace tanrove
