// First where each key listens, then, in one walk over the strips, what plays there.
#include "mix/key_buses.hpp"

#include <algorithm>

namespace tanrove {

namespace {

/// "Bus" of "Bus.L": a key that a plug-in takes from one side comes from the whole bus. Empty where
/// the name is no side's.
std::string without_side(const std::string& bus) {
    const auto dot = bus.rfind('.');
    const bool names_a_side = dot != std::string::npos && dot + 2 >= bus.size();
    return names_a_side ? bus.substr(0, dot) : std::string();
}

}  // namespace

KeyBuses::KeyBuses(const BusTable& buses, const RoutingRecords& records) : buses_(buses) {
    routes_.reserve(records.keys.size());
    for (const KeyInput& key : records.keys) routes_.push_back(find(key));
    if (key_buses_.empty()) return;
    for (const RoutingRow& row : records.rows) add_feeds(row);
}

/// The first strip that takes the path, but rather another one than the key's own.
std::optional<std::size_t> KeyBuses::taker_of(std::size_t path, const KeyInput& key) const {
    const auto route = buses_.active_route_of(path);
    if (!route) return std::nullopt;
    const auto& rows = route->strip_rows;
    const auto other = std::ranges::find_if(
        rows, [&](std::size_t strip_row) { return strip_row != key.strip_row; });
    return other == rows.end() ? rows.front() : *other;
}

KeyRoute KeyBuses::find(const KeyInput& key) {
    const PathLookup& paths = buses_.paths();
    const auto path = paths.find(key.bus_identity, key.bus);
    if (!path && key.bus.empty()) return {};
    if (const std::string whole_name = without_side(key.bus); !whole_name.empty()) {
        auto whole = path ? paths.whole_of(*path) : std::nullopt;
        if (!whole) whole = paths.find(0, whole_name);
        const auto taker = whole ? taker_of(*whole, key) : std::nullopt;
        if (taker) return {.strip_row = taker, .key_bus = {}};
    }
    const auto taker = path ? taker_of(*path, key) : std::nullopt;
    if (taker) return {.strip_row = taker, .key_bus = {}};
    return {.strip_row = {}, .key_bus = path ? enter(*path) : enter_unlisted(key.bus)};
}

std::size_t KeyBuses::enter(std::size_t path) {
    const auto [entry, is_new] = by_path_.try_emplace(path, key_buses_.size());
    if (!is_new) return entry->second;
    key_buses_.emplace_back();
    std::vector<std::size_t> around = buses_.paths().legs_of(path);
    for (const StereoPlace& place : buses_.paths().stereo_around(path)) {
        around.push_back(place.path);
    }
    if (const auto whole = buses_.paths().whole_of(path)) around.push_back(*whole);
    around.push_back(path);
    std::ranges::sort(around);
    around.erase(std::unique(around.begin(), around.end()), around.end());
    for (const std::size_t neighbour : around) {
        auto& listeners = listeners_[neighbour];
        if (listeners.size() < PathLookup::max_neighbours) listeners.push_back(entry->second);
    }
    return entry->second;
}

std::size_t KeyBuses::enter_unlisted(const std::string& name) {
    const auto [entry, is_new] = by_name_.try_emplace(name, key_buses_.size());
    if (is_new) key_buses_.emplace_back();
    return entry->second;
}

void KeyBuses::add_feeds(const RoutingRow& row) {
    if (row.has_output) add_feed(row.output_identity, row.output_name, {row.strip_row, {}});
    const std::size_t count = std::min(row.sends.size(), max_sends_of_strip);
    for (std::size_t i = 0; i < count; ++i) {
        add_feed(row.sends[i].target_identity, row.sends[i].target, {row.strip_row, i});
    }
}

void KeyBuses::add_feed(std::uint64_t identity, const std::string& name, const KeyFeed& feed) {
    const auto add = [&](std::size_t key_bus) {
        auto& feeds = key_buses_[key_bus].feeds;
        if (feeds.size() < max_feeds_of_key) feeds.push_back(feed);
    };
    if (const auto path = buses_.paths().find(identity, name)) {
        const auto listeners = listeners_.find(*path);
        if (listeners == listeners_.end()) return;
        for (const std::size_t key_bus : listeners->second) add(key_bus);
    } else if (const auto unlisted = by_name_.find(name); unlisted != by_name_.end()) {
        add(unlisted->second);
    }
}

}  // namespace tanrove
