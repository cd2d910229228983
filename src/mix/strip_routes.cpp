// Resolves the buses of every strip.
#include "mix/strip_routes.hpp"

#include <algorithm>

#include "mix/strip_names.hpp"

namespace tanrove {

namespace {

std::vector<SendRoute> send_routes(const RoutingRow& row, const BusTable& buses) {
    std::vector<SendRoute> routes;
    const std::size_t count = std::min(row.sends.size(), max_sends_of_strip);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string& target = row.sends[i].target;
        const auto bus = buses.route_of(target);
        if (bus) routes.push_back({i, *bus, buses.width_of(target) == 1});
    }
    return routes;
}

/// "Bus" of "Bus.L": a key that a plug-in takes from one side comes from the whole bus.
std::string without_side(const std::string& bus) {
    const auto dot = bus.rfind('.');
    const bool names_a_side = dot != std::string::npos && dot + 2 >= bus.size();
    return names_a_side ? bus.substr(0, dot) : bus;
}

std::optional<std::size_t> key_source(const std::string& bus, const BusTable& buses) {
    auto route = buses.route_of(without_side(bus));
    if (!route) route = buses.route_of(bus);
    if (!route) return std::nullopt;
    return route->strip_row;
}

void resolve_row(const RoutingRow& row, const BusTable& buses, StripRoute& route) {
    route.has_no_output = row.has_slot && !row.has_output;
    if (row.has_output) route.output = buses.route_of(row.output_name);
    route.sends = send_routes(row, buses);
    route.taken_width = buses.width_taken_by(row.strip_row);
}

}  // namespace

std::vector<StripRoute> resolve_routes(const std::vector<StripRow>& strips,
                                       const RoutingRecords& records) {
    const BusTable buses(strips, records.rows, records.paths);
    std::vector<StripRoute> routes(strips.size());
    for (std::size_t i = 0; i < strips.size(); ++i) routes[i].name = shown_name(strips[i]);
    for (std::size_t i = 0; i < records.rows.size(); ++i) {
        StripRoute& route = routes[records.rows[i].strip_row];
        route.routing_row = i;
        resolve_row(records.rows[i], buses, route);
    }
    if (!records.carries_keys) return routes;
    for (const KeyInput& key : records.keys) {
        auto& keys = routes[key.strip_row].keys;
        if (keys.size() < max_keys_of_strip) keys.push_back(key_source(key.bus, buses));
    }
    return routes;
}

std::map<std::string, int, std::less<>> sides_in_buses(const std::vector<StripRoute>& routes) {
    std::map<std::string, int, std::less<>> sides;
    for (const StripRoute& route : routes) {
        if (route.output && route.output->side != 0) {
            sides.try_emplace(route.name, route.output->side);
        }
    }
    return sides;
}

std::vector<std::vector<std::string>> needed_strips(const std::vector<StripRoute>& routes) {
    std::vector<std::vector<std::string>> needed(routes.size());
    for (std::size_t i = 0; i < routes.size(); ++i) {
        const auto need = [&](std::size_t strip_row) {
            needed[i].push_back(routes[strip_row].name);
        };
        if (routes[i].output) need(routes[i].output->strip_row);
        for (const SendRoute& send : routes[i].sends) need(send.bus.strip_row);
        for (const auto& key : routes[i].keys) {
            if (key) need(*key);
        }
    }
    return needed;
}

}  // namespace tanrove
