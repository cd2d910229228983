// Where each strip plays: its output, its sends and the key inputs of its plug-ins, each resolved
// to the strips that take the bus. All by strip rows, before the tracks have their final places.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mix/bus_table.hpp"
#include "mix/speaker_layouts.hpp"
#include "session/io_paths.hpp"
#include "session/routing.hpp"
#include "session/strip_rows.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

/// The key input of one plug-in.
struct KeyInput {
    std::size_t strip_row = 0;       ///< of the strip that the plug-in stands on
    std::string bus;                 ///< empty where the session does not name it
    std::uint64_t bus_identity = 0;  ///< 0 if the session has none
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

/// Strips that feed one key together. A thousand tracks that all play into one key bus are damage.
constexpr std::size_t max_feeds_of_key = 256;

/// Receives of a project beyond the first of each output, send and key: parallel auxes and keys
/// that many strips feed multiply them.
constexpr std::size_t max_further_receives = 65536;

struct SendRoute {
    std::size_t send = 0;  ///< index among the sends of the routing row
    BusRoute bus;
    std::size_t bus_width = 0;  ///< channels of the bus; a send into a bus of one has no pan
};

/// A strip that plays into the bus of a key.
struct KeyFeed {
    std::size_t strip_row = 0;
    std::optional<std::size_t>
        send;  ///< index among the sends of its routing row; none: its output
};

/// A bus that a plug-in's key comes from and that no strip takes.
struct KeyBus {
    std::vector<KeyFeed> feeds;
};

/// Where the key of one plug-in comes from: the strip that takes the bus, else the strips that play
/// into it, else from nowhere.
struct KeyRoute {
    std::optional<std::size_t> strip_row;
    std::optional<std::size_t> key_bus;  ///< index among `Routes::key_buses`
};

/// How a strip plays whose output is a path of one channel: Pro Tools has no pan there.
enum class MonoOutput : std::int8_t {
    left = -1,  ///< into one side of a stereo path
    whole = 0,  ///< into a strip that takes the path
    right = 1,
    no = 2,
    channel = 3,  ///< into one channel of a surround bus
};

/// A bus of more than two channels that some strip takes.
struct WideBus {
    std::string name;
    std::size_t channels = 0;
    BusLayout layout;
};

struct StripRoute {
    std::string name;  ///< as Pro Tools shows it
    std::optional<std::size_t> routing_row;
    std::optional<BusRoute> output;  ///< nullopt: a hardware output, or nothing
    bool has_no_output = false;      ///< the strip was set to play into nothing
    bool leads_astray = false;  ///< its output or a send has no name that can be read, nor a path
    bool feeds_keys_alone = false;  ///< it plays into a bus that only plug-ins' keys listen to
    bool output_is_hardware = false;
    bool output_is_wide = false;          ///< more than two channels
    std::optional<std::size_t> wide_bus;  ///< its output, by its place in `Routes::wide_buses`
    /// It plays to the hardware as well as into `output`, and not all of it comes out of there.
    bool stays_on_master = false;
    MonoOutput mono_output = MonoOutput::no;
    std::vector<SendRoute> sends;  ///< those that some strip takes
    /// Places among the sends of the routing row: those that no strip takes, though they sound.
    std::vector<std::size_t> lost_sends;
    std::vector<KeyRoute> keys;   ///< one for each plug-in with a key input
    std::size_t taken_width = 0;  ///< channels of the bus that the strip takes, 0 for none
};

struct Routes {
    std::vector<StripRoute> strips;  ///< one entry a strip row, in their order
    std::vector<KeyBus> key_buses;
    std::vector<WideBus> wide_buses;
};

Routes resolve_routes(const std::vector<StripRow>& strips, const RoutingRecords& records,
                      const TrackNameSet& inactive_names = {});

/// For each strip the names of the strips that it needs to sound as it does: those that its output,
/// its sends and its keys lead to or come from. A name may stand there more than once.
std::vector<std::vector<std::string>> needed_strips(const Routes& routes);

}  // namespace tanrove
