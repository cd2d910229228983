// The buses that plug-ins' keys listen to: where an active strip takes one the key comes from that
// strip, else from all strips that play into it. An inactive strip passes nothing on.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "mix/bus_table.hpp"
#include "mix/strip_routes.hpp"

namespace tanrove {

class KeyBuses {
public:
    KeyBuses(const BusTable& buses, const RoutingRecords& records);

    /// Where each key of the records comes from, in their order.
    const std::vector<KeyRoute>& routes() const { return routes_; }

    /// True if some key listens to this path, or to a part of it or what it is a part of, and no
    /// strip takes the key's bus.
    bool listen_to(std::size_t path) const { return listeners_.contains(path); }

    const KeyBus& at(std::size_t key_bus) const { return key_buses_[key_bus]; }
    std::vector<KeyBus> take() { return std::move(key_buses_); }

private:
    KeyRoute find(const KeyInput& key);
    std::optional<std::size_t> taker_of(std::size_t path, const KeyInput& key) const;
    std::size_t enter(std::size_t path);
    std::size_t enter_unlisted(const std::string& name);
    void add_feeds(const RoutingRow& row);
    void add_feed(std::uint64_t identity, const std::string& name, const KeyFeed& feed);

    const BusTable& buses_;
    std::vector<KeyRoute> routes_;
    std::vector<KeyBus> key_buses_;
    std::map<std::size_t, std::size_t> by_path_;
    std::map<std::string, std::size_t> by_name_;  ///< of buses that no record of a path holds
    std::map<std::size_t, std::vector<std::size_t>> listeners_;  ///< key buses, by path
};

}  // namespace tanrove
