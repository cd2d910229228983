// The names of the session's buses, and which of them stands nearest to a place.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/prefix_names.hpp"

namespace tanrove {

/// Names of the buses, sorted by their bytes: those of the session's own path table that play to no
/// hardware and are no part of another, of any width; without such a table all of two channels.
std::vector<std::string> readBuses(const BlockIndex& index);

/// The buses of two channels as the texts of a session tell them, whatever its path table says.
std::vector<std::string> tell_buses(const BlockIndex& index);

/// Finds the bus that is named nearest to a position. Positions are asked for in ascending order,
/// so that every byte of the image is looked at once at most.
class NearestBus {
public:
    /// Farthest that a name may begin from a position, bytes.
    static constexpr std::size_t reach = 1500;

    NearestBus(ByteView image, std::vector<std::string> buses)
        : image_(image), buses_(std::move(buses)) {}

    /// The name that begins nearest to `position` on either side; of two at the same distance the
    /// longer one, then the one in front. nullopt if none begins within reach.
    std::optional<std::string> find(std::size_t position);

private:
    struct Occurrence {
        std::size_t at = 0;
        std::size_t bus = PrefixNames::none;  ///< none: there is no occurrence
    };

    void advance(std::size_t limit);

    ByteView image_;
    PrefixNames buses_;
    std::size_t scanned_ = 0;  ///< every position in front of this one has been looked at
    Occurrence previous_;      ///< the last in front of the position asked for
    Occurrence next_;          ///< the one behind it, the last that has been found
};

}  // namespace tanrove
