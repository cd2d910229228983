// Which strip takes which bus. Pro Tools routes by the names of buses, REAPER from track to track:
// every output, send and key input finds its track here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session/io_paths.hpp"
#include "session/routing.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// What led from a bus to the strip that takes it.
enum class BusWay : std::uint8_t {
    input,        ///< the strip's input is the bus
    leg,          ///< its input is one of the bus's legs
    stereo_pair,  ///< its input is the stereo bus that this one is a leg of
};

struct BusRoute {
    std::size_t strip_row = 0;  ///< index among the strip rows
    BusWay way = BusWay::input;
    bool legs_part = false;  ///< other legs are taken by other strips; this is the first
    int side = 0;            ///< of a leg in its stereo bus: -1 left, 1 right
};

class BusTable {
public:
    /// Auxes and instrument tracks pass on what comes in; an audio track plays its clips whatever
    /// its input is, and takes no bus. A bus's legs are the paths that run on one of its channels
    /// alone: their stored parent names another bus in many sessions. A bus that was renamed goes
    /// by the names that strips still know it by as well.
    BusTable(const std::vector<StripRow>& strips, const std::vector<RoutingRow>& routing,
             const std::vector<IoPath>& paths);

    /// Where a bus leads; nullopt where no strip takes it.
    std::optional<BusRoute> route_of(const std::string& bus) const;

    /// Channels of a bus, 0 if there is none of this name.
    std::size_t width_of(const std::string& bus) const;

    /// Channels of the bus that a strip takes, 0 if it takes none.
    std::size_t width_taken_by(std::size_t strip_row) const;

private:
    struct PairTaker {
        std::size_t strip_row = 0;
        int side = 0;
    };

    void enter_takers(const std::vector<StripRow>& strips, const std::vector<RoutingRow>& routing,
                      const std::vector<IoPath>& paths);
    void enter_channels(const std::vector<IoPath>& paths);
    void enter_stored_names(const std::vector<RoutingRow>& routing);

    std::map<std::string, std::size_t> taker_of_name_;
    std::map<std::size_t, std::string> bus_of_taker_;
    std::map<std::string, std::vector<std::uint16_t>> channels_of_name_;
    std::map<std::uint16_t, std::size_t> taker_of_leg_;
    std::map<std::uint16_t, PairTaker> taker_of_pair_;
};

}  // namespace tanrove
