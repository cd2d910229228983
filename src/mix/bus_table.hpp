// Which strips take which bus. Pro Tools routes by buses, REAPER from track to track: every output,
// send and key input finds its tracks here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "mix/path_lookup.hpp"
#include "session/io_paths.hpp"
#include "session/routing.hpp"
#include "session/strip_rows.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

/// What led from a bus to the strips that take it.
enum class BusWay : std::uint8_t {
    input,        ///< the strip's input is the bus
    leg,          ///< its input is one of the bus's legs
    stereo_pair,  ///< its input is the stereo bus that this one is a leg of
    part,         ///< its input is the surround bus that this one is a part of
};

struct BusRoute {
    std::vector<std::size_t> strip_rows;  ///< indices among the strip rows, one at least
    BusWay way = BusWay::input;
    bool legs_part = false;  ///< other legs are taken by other strips; these take the first
    int side = 0;            ///< of a leg in its stereo bus: -1 left, 1 right
    /// Of a part, the places of its channels in the surround bus.
    std::vector<std::size_t> places = {};
};

class BusTable {
public:
    /// Strips on one bus that all receive it; what stands behind these is damage.
    static constexpr std::size_t max_takers = 32;

    /// Auxes and instrument tracks pass on what comes in; an audio track plays its clips whatever
    /// its input is, and takes no bus.
    BusTable(const std::vector<StripRow>& strips, const TrackNameSet& inactive_names,
             const std::vector<RoutingRow>& routing, std::vector<IoPath> paths);

    const PathLookup& paths() const { return paths_; }

    /// Where a path leads; nullopt where no strip takes it. All active strips on it receive it,
    /// inactive ones only where there is no active one.
    std::optional<BusRoute> route_of(std::size_t path) const;

    /// The same with inactive strips left aside.
    std::optional<BusRoute> active_route_of(std::size_t path) const {
        return route_among(active_, path);
    }

    /// Where a part of a surround bus leads that no strip takes by itself: to the strips that take
    /// the whole.
    std::optional<BusRoute> route_of_part(std::size_t path) const;

    /// Channels of the bus that a strip takes, 0 if it takes none.
    std::size_t width_taken_by(std::size_t strip_row) const;

private:
    using Takers = std::map<std::size_t, std::vector<std::size_t>>;  ///< strips, by path

    std::optional<BusRoute> route_among(const Takers& takers, std::size_t path) const;

    PathLookup paths_;
    Takers active_;
    Takers inactive_;
    std::map<std::size_t, std::size_t> path_of_taker_;
};

}  // namespace tanrove
