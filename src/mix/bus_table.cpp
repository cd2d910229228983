// Joins the strips whose input is a bus with the paths.
#include "mix/bus_table.hpp"

#include <algorithm>
#include <utility>

namespace tanrove {

namespace {

bool passes_its_input_on(const StripRow& strip) {
    return strip.is_aux || strip.type == StripRowType::instrument;
}

std::uint64_t input_identity(const RoutingRow& row) {
    return std::uint64_t{row.input_identity_high} << 32 | std::uint64_t{row.input_identity_low};
}

/// The names that the strips' records have for paths.
void learn_names(PathLookup& paths, const std::vector<RoutingRow>& routing) {
    for (const RoutingRow& row : routing) paths.learn(input_identity(row), row.input_name);
    for (const RoutingRow& row : routing) {
        paths.learn(row.output_identity, row.output_name);
        for (const RoutingSend& send : row.sends) paths.learn(send.target_identity, send.target);
    }
}

}  // namespace

BusTable::BusTable(const std::vector<StripRow>& strips, const TrackNameSet& inactive_names,
                   const std::vector<RoutingRow>& routing, std::vector<IoPath> paths)
    : paths_(std::move(paths)) {
    learn_names(paths_, routing);
    for (const RoutingRow& row : routing) {
        if (row.input_type != bus_path_type || row.input_name.empty()) continue;
        const StripRow& strip = strips[row.strip_row];
        if (!passes_its_input_on(strip)) continue;
        const auto path = paths_.find(input_identity(row), row.input_name);
        if (!path) continue;
        path_of_taker_.try_emplace(row.strip_row, *path);
        const bool is_active = strip.active && !inactive_names.contains(shown_name(strip));
        auto& takers = (is_active ? active_ : inactive_)[*path];
        if (takers.size() < max_takers) takers.push_back(row.strip_row);
    }
}

std::optional<BusRoute> BusTable::route_of(std::size_t path) const {
    auto route = active_route_of(path);
    return route ? route : route_among(inactive_, path);
}

std::optional<BusRoute> BusTable::route_among(const Takers& takers, std::size_t path) const {
    if (const auto own = takers.find(path); own != takers.end()) {
        return BusRoute{.strip_rows = own->second};
    }
    std::optional<BusRoute> route;
    for (const std::size_t leg : paths_.legs_of(path)) {
        const auto found = takers.find(leg);
        if (found == takers.end()) continue;
        if (!route) {
            route = BusRoute{.strip_rows = found->second, .way = BusWay::leg};
        } else if (route->strip_rows != found->second) {
            route->legs_part = true;
        }
    }
    if (route) return route;
    for (const StereoPlace& place : paths_.stereo_around(path)) {
        const auto found = takers.find(place.path);
        if (found == takers.end()) continue;
        return BusRoute{
            .strip_rows = found->second, .way = BusWay::stereo_pair, .side = place.side};
    }
    return std::nullopt;
}

std::optional<BusRoute> BusTable::route_of_part(std::size_t path) const {
    const auto whole = paths_.parent_of(path);
    if (!whole) return std::nullopt;
    const auto& channels = paths_.at(*whole).channels;
    std::vector<std::size_t> places;
    for (const std::uint16_t channel : paths_.at(path).channels) {
        const auto place = std::ranges::find(channels, channel);
        if (place == channels.end()) return std::nullopt;
        places.push_back(static_cast<std::size_t>(place - channels.begin()));
    }
    auto route = route_of(*whole);
    if (!route || route->way != BusWay::input) return std::nullopt;
    route->way = BusWay::part;
    route->places = std::move(places);
    return route;
}

std::size_t BusTable::width_taken_by(std::size_t strip_row) const {
    const auto path = path_of_taker_.find(strip_row);
    return path == path_of_taker_.end() ? 0 : paths_.at(path->second).channels.size();
}

}  // namespace tanrove
