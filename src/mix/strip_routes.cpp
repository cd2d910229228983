// Resolves the paths of every strip.
#include "mix/strip_routes.hpp"

#include <algorithm>
#include <set>
#include <utility>

#include "mix/channel_codes.hpp"
#include "mix/key_buses.hpp"

namespace tanrove {

namespace {

/// Receives that the project may still have.
class ReceiveBudget {
public:
    bool spend(std::size_t count) {
        if (count > left_) return false;
        left_ -= count;
        return true;
    }

private:
    std::size_t left_ = max_further_receives;
};

std::optional<BusRoute> within(ReceiveBudget& budget, std::optional<BusRoute> route) {
    if (route && !budget.spend(route->strip_rows.size() - 1)) route->strip_rows.resize(1);
    return route;
}

/// An output into a part of a surround bus has a receive for each channel.
std::optional<BusRoute> output_route(std::size_t path, const BusTable& buses,
                                     ReceiveBudget& budget) {
    if (auto route = within(budget, buses.route_of(path))) return route;
    auto route = within(budget, buses.route_of_part(path));
    if (!route || budget.spend(route->strip_rows.size() * (route->places.size() - 1))) return route;
    return std::nullopt;
}

/// How a strip whose output is this path plays.
MonoOutput mono_output(std::size_t path, const std::optional<BusRoute>& route,
                       const PathLookup& paths) {
    if (paths.at(path).channels.size() != 1) return MonoOutput::no;
    if (route && route->way == BusWay::input) return MonoOutput::whole;
    if (route && route->way == BusWay::part) return MonoOutput::channel;
    if (route) return static_cast<MonoOutput>(route->side);
    const auto around = paths.stereo_around(path);
    return around.empty() ? MonoOutput::no : static_cast<MonoOutput>(around.front().side);
}

/// The buses of more than two channels, each looked at once.
class WideBuses {
public:
    WideBuses(const PathLookup& paths, std::vector<WideBus>& buses)
        : paths_(paths), buses_(buses) {}

    /// The place of the bus that an output is; none where it is no such bus, or where no strip
    /// takes all of it.
    std::optional<std::size_t> place_of(std::size_t path, const std::optional<BusRoute>& route) {
        const IoPath& bus = paths_.at(path);
        const bool is_taken = route && (route->way == BusWay::input || route->way == BusWay::part);
        if (bus.channels.size() <= stereo_channels || !is_taken) return std::nullopt;
        const auto [place, is_new] = places_.try_emplace(path, buses_.size());
        if (is_new) buses_.push_back({bus.name, bus.channels.size(), layout_of(paths_, path)});
        return place->second;
    }

private:
    const PathLookup& paths_;
    std::vector<WideBus>& buses_;
    std::map<std::size_t, std::size_t> places_;
};

void resolve_output(const RoutingRow& row, const BusTable& buses, const KeyBuses& keys,
                    WideBuses& wide_buses, ReceiveBudget& budget, StripRoute& route) {
    route.has_no_output = row.has_slot && !row.has_output;
    if (!row.has_output) return;
    const PathLookup& paths = buses.paths();
    const auto path = paths.find(row.output_identity, row.output_name);
    if (!path) {
        route.leads_astray = row.output_name.empty();
        return;
    }
    route.output = output_route(*path, buses, budget);
    route.mono_output = mono_output(*path, route.output, paths);
    route.output_is_hardware = paths.is_hardware(*path);
    route.output_is_wide = paths.at(*path).channels.size() > stereo_channels;
    route.wide_bus = wide_buses.place_of(*path, route.output);
    route.feeds_keys_alone = !route.output && !route.output_is_hardware && keys.listen_to(*path);
}

/// True if Pro Tools plays what a path that no strip takes is sent: to the hardware, or as a part
/// of a wider path that a strip takes whole.
bool sounds_untaken(std::size_t path, const BusTable& buses) {
    if (buses.paths().is_hardware(path)) return true;
    const auto whole = buses.paths().whole_of(path);
    return whole && buses.active_route_of(*whole);
}

void resolve_sends(const RoutingRow& row, const BusTable& buses, ReceiveBudget& budget,
                   StripRoute& route) {
    const std::size_t count = std::min(row.sends.size(), max_sends_of_strip);
    for (std::size_t i = 0; i < count; ++i) {
        const auto path = buses.paths().find(row.sends[i].target_identity, row.sends[i].target);
        if (!path && row.sends[i].target.empty()) route.leads_astray = true;
        auto bus = path ? within(budget, buses.route_of(*path)) : std::nullopt;
        if (path && !bus && sounds_untaken(*path, buses)) route.lost_sends.push_back(i);
        if (!bus) continue;
        const std::size_t width = buses.paths().at(*path).channels.size();
        route.sends.push_back({.send = i, .bus = std::move(*bus), .bus_width = width});
    }
}

void resolve_keys(const RoutingRecords& records, const KeyBuses& keys, ReceiveBudget& budget,
                  std::vector<StripRoute>& strips) {
    std::set<std::pair<std::size_t, std::size_t>> fed;  // strips and their key buses
    for (std::size_t i = 0; i < records.keys.size(); ++i) {
        const std::size_t strip_row = records.keys[i].strip_row;
        auto& routes = strips[strip_row].keys;
        if (routes.size() == max_keys_of_strip) continue;
        KeyRoute route = keys.routes()[i];
        if (route.key_bus && fed.emplace(strip_row, *route.key_bus).second &&
            !budget.spend(keys.at(*route.key_bus).feeds.size())) {
            route.key_bus.reset();
        }
        routes.push_back(route);
    }
}

/// What plays to a hardware output may leave it for the strips that take it only where it reaches
/// the master from there, and where they take all of it.
void settle_hardware_outputs(std::vector<StripRoute>& strips) {
    const auto goes_on = [&](std::size_t strip_row) { return !strips[strip_row].has_no_output; };
    for (StripRoute& route : strips) {
        if (!route.output || !route.output_is_hardware) continue;
        route.stays_on_master = route.output->way == BusWay::leg ||
                                std::ranges::none_of(route.output->strip_rows, goes_on);
        if (route.stays_on_master) route.wide_bus.reset();
    }
}

}  // namespace

Routes resolve_routes(const std::vector<StripRow>& strips, const RoutingRecords& records,
                      const TrackNameSet& inactive_names) {
    const BusTable buses(strips, inactive_names, records.rows, records.paths);
    KeyBuses keys(buses, records);
    ReceiveBudget budget;
    Routes routes;
    WideBuses wide_buses(buses.paths(), routes.wide_buses);
    routes.strips.resize(strips.size());
    for (std::size_t i = 0; i < strips.size(); ++i) routes.strips[i].name = shown_name(strips[i]);
    for (std::size_t i = 0; i < records.rows.size(); ++i) {
        const RoutingRow& row = records.rows[i];
        StripRoute& route = routes.strips[row.strip_row];
        route.routing_row = i;
        resolve_output(row, buses, keys, wide_buses, budget, route);
        resolve_sends(row, buses, budget, route);
        route.taken_width = buses.width_taken_by(row.strip_row);
    }
    settle_hardware_outputs(routes.strips);
    if (records.carries_keys) resolve_keys(records, keys, budget, routes.strips);
    routes.key_buses = keys.take();
    return routes;
}

std::vector<std::vector<std::string>> needed_strips(const Routes& routes) {
    std::vector<std::vector<std::string>> needed(routes.strips.size());
    for (std::size_t i = 0; i < routes.strips.size(); ++i) {
        const StripRoute& route = routes.strips[i];
        const auto need = [&](std::size_t strip_row) {
            needed[i].push_back(routes.strips[strip_row].name);
        };
        if (route.output) std::ranges::for_each(route.output->strip_rows, need);
        for (const SendRoute& send : route.sends) {
            std::ranges::for_each(send.bus.strip_rows, need);
        }
        std::set<std::size_t> fed;
        for (const KeyRoute& key : route.keys) {
            if (key.strip_row) need(*key.strip_row);
            if (!key.key_bus || !fed.insert(*key.key_bus).second) continue;
            for (const KeyFeed& feed : routes.key_buses[*key.key_bus].feeds) need(feed.strip_row);
        }
    }
    return needed;
}

}  // namespace tanrove
