// The part of an elastic clip's warp map that the clip plays: how long it lasts on the timeline,
// and which place of the file sounds at which moment of it.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string_view>

#include "session/tempo_map.hpp"
#include "session/warp_maps.hpp"
#include "timeline/clip_item.hpp"

namespace tanrove {

/// A clip's map as it is asked. File places are samples behind the anchor; session times are
/// samples or ticks.
struct ClipWarp {
    const WarpMap* points = nullptr;
    bool in_ticks = false;
    bool ascends = false;  ///< neither time nor file ever runs backwards; only such a map is used
    double anchor_samples = 0;

    /// The file place that sounds at a session time, and the session time of a file place: straight
    /// between neighbouring points and on beyond the outer ones.
    double file_place(double session_time) const;
    double session_time(double file_place) const;
};

/// What a clip plays of its map.
struct WarpSlice {
    const ClipWarp* warp = nullptr;
    double origin_samples = 0;  ///< of the file: where place 0 of the map lies
    double first_place = 0;     ///< in the file
    double end_place = 0;
    double first_time = 0;  ///< of the session, in the map's unit
    double end_time = 0;
    double length = 0;    ///< seconds on the timeline
    bool inside = false;  ///< the clip's window lies wholly inside the map
};

/// The maps of a session beside its clocks. What it is made from must outlive it.
class WarpSlicer {
public:
    /// `bpm` and `rate_hz` are the session's, above 0.
    WarpSlicer(const WarpMaps& maps, const TempoClock& clock, double bpm, double rate_hz);

    /// True if no clip has a map.
    bool empty() const { return warps_.empty(); }

    /// The map of clips of this name; nullptr where they have none.
    const ClipWarp* warp_of(std::string_view clip_name) const;

    /// The slice of a clip that still has its length in the file. Nothing for a clip without a map,
    /// one whose window misses its map, or one that would play 20 times as fast or slow. A window
    /// that reaches beyond its map, as a crossfade's does, goes on at the rate of the map's end.
    std::optional<WarpSlice> slice(const ClipItem& clip) const;

    /// Seconds of the clip's file in front of its head, or behind its tail, that play in
    /// so many seconds of the timeline there. Of an unwarped clip these are the same.
    double source_seconds_before(const ClipItem& clip, double seconds) const;
    double source_seconds_behind(const ClipItem& clip, double seconds) const;

    /// When, in seconds of an item that starts at `start`, a session time of its slice comes.
    double item_seconds(const WarpSlice& slice, double start, double session_time) const;

    /// Where in the file, in seconds, a place of the map lies.
    double file_seconds(const WarpSlice& slice, double file_place) const {
        return (slice.origin_samples + file_place) / rate_hz_;
    }

    double rate_hz() const { return rate_hz_; }
    const TempoClock& clock() const { return clock_; }

private:
    void add_maps(const std::map<std::string, WarpMap>& maps, bool in_ticks, const WarpMaps& all,
                  double bpm);
    double origin_of(const ClipItem& clip, const ClipWarp& warp) const;
    double source_seconds(const WarpSlice& slice, double start, double from, double to) const;

    const TempoClock& clock_;
    double rate_hz_;
    std::map<std::string, ClipWarp, std::less<>> warps_;
};

}  // namespace tanrove
