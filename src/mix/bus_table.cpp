// Joins the strips whose input is a bus with the bus paths, and keeps for each name and each
// channel the first strip that takes it. Every question is then a look-up.
#include "mix/bus_table.hpp"

namespace tanrove {

namespace {

using Identity = std::pair<std::uint32_t, std::uint32_t>;

constexpr Identity no_identity{0, 0};
constexpr std::size_t stereo_channels = 2;

int side_of_place(std::size_t place) {
    return place == 0 ? -1 : 1;
}

bool passes_its_input_on(const StripRow& strip) {
    return strip.is_aux || strip.type == StripRowType::instrument;
}

/// Names of the buses by identity.
std::map<Identity, std::string> bus_names(const std::vector<IoPath>& paths) {
    std::map<Identity, std::string> names;
    for (const IoPath& path : paths) {
        const Identity identity(path.identity_low, path.identity_high);
        if (path.type == bus_path_type && identity != no_identity) {
            names.try_emplace(identity, path.name);
        }
    }
    return names;
}

}  // namespace

BusTable::BusTable(const std::vector<StripRow>& strips, const std::vector<RoutingRow>& routing,
                   const std::vector<IoPath>& paths) {
    enter_takers(strips, routing, paths);
    enter_channels(paths);
    enter_stored_names(routing);
}

void BusTable::enter_takers(const std::vector<StripRow>& strips,
                            const std::vector<RoutingRow>& routing,
                            const std::vector<IoPath>& paths) {
    const auto names = bus_names(paths);
    for (const RoutingRow& row : routing) {
        if (row.input_type != bus_path_type || row.input_name.empty()) continue;
        if (!passes_its_input_on(strips[row.strip_row])) continue;
        const auto found = names.find({row.input_identity_low, row.input_identity_high});
        const std::string& name = found == names.end() ? row.input_name : found->second;
        taker_of_name_.try_emplace(name, row.strip_row);
        bus_of_taker_.try_emplace(row.strip_row, name);
    }
}

void BusTable::enter_channels(const std::vector<IoPath>& paths) {
    for (const IoPath& path : paths) {
        if (path.type != bus_path_type) continue;
        channels_of_name_.try_emplace(path.name, path.channels);
        const auto taker = taker_of_name_.find(path.name);
        if (taker == taker_of_name_.end()) continue;
        if (path.channels.size() == 1) {
            taker_of_leg_.try_emplace(path.channels.front(), taker->second);
        } else if (path.channels.size() == stereo_channels) {
            for (std::size_t i = 0; i < stereo_channels; ++i) {
                taker_of_pair_.try_emplace(path.channels[i],
                                           PairTaker{taker->second, side_of_place(i)});
            }
        }
    }
}

/// Strips keep the name that their bus had when it was assigned, those that send as well as the one
/// that takes it; where no bus is called so now, that name leads to the same place.
void BusTable::enter_stored_names(const std::vector<RoutingRow>& routing) {
    for (const RoutingRow& row : routing) {
        const auto bus = bus_of_taker_.find(row.strip_row);
        if (bus == bus_of_taker_.end() || bus->second == row.input_name) continue;
        if (channels_of_name_.contains(row.input_name)) continue;
        taker_of_name_.try_emplace(row.input_name, row.strip_row);
        const auto channels = channels_of_name_.find(bus->second);
        if (channels != channels_of_name_.end()) {
            channels_of_name_.try_emplace(row.input_name, channels->second);
        }
    }
}

std::optional<BusRoute> BusTable::route_of(const std::string& bus) const {
    if (const auto taker = taker_of_name_.find(bus); taker != taker_of_name_.end()) {
        return BusRoute{.strip_row = taker->second};
    }
    const auto channels = channels_of_name_.find(bus);
    if (channels == channels_of_name_.end()) return std::nullopt;
    std::optional<BusRoute> route;
    for (const auto channel : channels->second) {
        const auto taker = taker_of_leg_.find(channel);
        if (taker == taker_of_leg_.end()) continue;
        if (!route) {
            route = BusRoute{.strip_row = taker->second, .way = BusWay::leg};
        } else if (route->strip_row != taker->second) {
            route->legs_part = true;
        }
    }
    if (route || channels->second.size() != 1) return route;
    const auto pair = taker_of_pair_.find(channels->second.front());
    if (pair == taker_of_pair_.end()) return std::nullopt;
    return BusRoute{
        .strip_row = pair->second.strip_row, .way = BusWay::stereo_pair, .side = pair->second.side};
}

std::size_t BusTable::width_of(const std::string& bus) const {
    const auto found = channels_of_name_.find(bus);
    return found == channels_of_name_.end() ? 0 : found->second.size();
}

std::size_t BusTable::width_taken_by(std::size_t strip_row) const {
    const auto found = bus_of_taker_.find(strip_row);
    return found == bus_of_taker_.end() ? 0 : width_of(found->second);
}

}  // namespace tanrove
