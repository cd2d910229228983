// Which path the session means where it names one, and how paths lie in each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session/io_paths.hpp"

namespace tanrove {

/// A stereo path around a mono one, and the side of it: -1 left, 1 right.
struct StereoPlace {
    std::size_t path = 0;
    int side = 0;
};

class PathLookup {
public:
    /// Paths that are looked at around one channel, and parts of one path. Pro Tools makes a dozen
    /// sub-paths for its widest bus.
    static constexpr std::size_t max_neighbours = 64;

    explicit PathLookup(std::vector<IoPath> paths);

    const IoPath& at(std::size_t path) const { return paths_[path]; }
    std::size_t size() const { return paths_.size(); }

    /// Records keep the name that a path had when it was assigned. One that no path bears now leads
    /// to the path whose identity stood beside it.
    void learn(std::uint64_t identity, const std::string& name);

    /// The bus or output of this identity, else of this name: the one it has now, then a learnt
    /// one. Buses and the session's own outputs come before the hardware's.
    std::optional<std::size_t> find(std::uint64_t identity, const std::string& name) const;

    /// True if the path plays to the hardware.
    bool is_hardware(std::size_t path) const;

    /// The mono paths that are parts of a path: told by its identity, else by its channels.
    std::vector<std::size_t> legs_of(std::size_t path) const;

    /// The path that the table says this one is a part of.
    std::optional<std::size_t> parent_of(std::size_t path) const;

    /// The stereo paths that a mono path lies in: the one that it is a part of, then all others of
    /// its table on its channel. Where its table has none, those around what it plays to.
    std::vector<StereoPlace> stereo_around(std::size_t path) const;

    /// The path that this one is a part of: as its table says, else the stereo path around it.
    std::optional<std::size_t> whole_of(std::size_t path) const;

private:
    /// Channels count for each table: the session's own, and each kind of the hardware's.
    using Channel = std::pair<int, std::uint16_t>;

    std::optional<std::size_t> hardware_behind(std::size_t path) const;
    Channel channel_of(const IoPath& path, std::size_t place) const;
    void enter(std::size_t path);

    std::vector<IoPath> paths_;
    std::map<std::uint64_t, std::size_t> by_identity_;
    std::map<std::string, std::size_t> by_name_;
    std::map<std::string, std::size_t> by_old_name_;
    std::map<std::uint64_t, std::vector<std::size_t>> parts_;  ///< mono ones, by the whole
    std::map<Channel, std::vector<std::size_t>> mono_on_;
    std::map<Channel, std::vector<StereoPlace>> stereo_on_;
};

}  // namespace tanrove
