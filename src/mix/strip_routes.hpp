// Where each strip plays: its output, its sends and the key inputs of its plug-ins, each resolved
// to the strip that takes the bus. All by strip rows, before the tracks have their final places.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "mix/bus_table.hpp"
#include "session/io_paths.hpp"
#include "session/routing.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// The key input of one plug-in.
struct KeyInput {
    std::size_t strip_row = 0;  ///< of the strip that the plug-in stands on
    std::string bus;            ///< empty where the session does not name it
};

/// What the session says of its routing.
struct RoutingRecords {
    std::vector<RoutingRow> rows;
    std::vector<IoPath> paths;
    std::vector<KeyInput> keys;  ///< in the order of the plug-ins on their strips
    bool carries_keys = true;
};

/// Pro Tools has ten sends a strip, and ten inserts of some channels each; what stands behind these
/// is damage, and left out.
constexpr std::size_t max_sends_of_strip = 32;
constexpr std::size_t max_keys_of_strip = 128;

struct SendRoute {
    std::size_t send = 0;  ///< index among the sends of the routing row
    BusRoute bus;
    bool is_mono = false;  ///< the bus has one channel: the send has no pan
};

struct StripRoute {
    std::string name;  ///< as Pro Tools shows it
    std::optional<std::size_t> routing_row;
    std::optional<BusRoute> output;  ///< nullopt: a hardware output, or nothing
    bool has_no_output = false;      ///< the strip was set to play into nothing
    std::vector<SendRoute> sends;    ///< those that some strip takes
    /// The strip that each plug-in's key comes from; nullopt where none takes its bus.
    std::vector<std::optional<std::size_t>> keys;
    std::size_t taken_width = 0;  ///< channels of the bus that the strip takes, 0 for none
};

/// One entry a strip row, in their order.
std::vector<StripRoute> resolve_routes(const std::vector<StripRow>& strips,
                                       const RoutingRecords& records);

/// The strips that play into one channel of a stereo bus, by name: -1 left, 1 right.
std::map<std::string, int, std::less<>> sides_in_buses(const std::vector<StripRoute>& routes);

/// For each strip the names of the strips that it needs to sound as it does: those that its output,
/// its sends and its keys lead to or come from. A name may stand there more than once.
std::vector<std::vector<std::string>> needed_strips(const std::vector<StripRoute>& routes);

}  // namespace tanrove
