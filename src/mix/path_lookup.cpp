// Everything is entered once, by identity, by name and by channel; then every question is a
// look-up.
#include "mix/path_lookup.hpp"

#include <algorithm>

#include "mix/channel_codes.hpp"

namespace tanrove {

namespace {

constexpr int own_table = -1;

bool is_mono(const IoPath& path) {
    return path.channels.size() == 1;
}

bool is_output_or_bus(const IoPath& path) {
    return path.type == bus_path_type || path.type == output_path_type ||
           path.type == other_output_path_type;
}

int side_of_place(std::size_t place) {
    return place == 0 ? -1 : 1;
}

template <class Entry>
void append(std::vector<Entry>& list, Entry entry) {
    if (list.size() < PathLookup::max_neighbours) list.push_back(entry);
}

}  // namespace

PathLookup::PathLookup(std::vector<IoPath> paths) : paths_(std::move(paths)) {
    for (const bool buses : {true, false}) {
        for (std::size_t i = 0; i < paths_.size(); ++i) {
            const IoPath& path = paths_[i];
            if (is_output_or_bus(path) && (path.type == bus_path_type) == buses) enter(i);
        }
    }
}

void PathLookup::enter(std::size_t path) {
    const IoPath& entered = paths_[path];
    if (entered.identity() != 0) by_identity_.try_emplace(entered.identity(), path);
    if (!entered.name.empty()) by_name_.try_emplace(entered.name, path);
    if (is_mono(entered)) {
        if (entered.parent_identity != 0) append(parts_[entered.parent_identity], path);
        append(mono_on_[channel_of(entered, 0)], path);
    } else if (entered.channels.size() == stereo_channels) {
        for (std::size_t place = 0; place < stereo_channels; ++place) {
            append(stereo_on_[channel_of(entered, place)], {path, side_of_place(place)});
        }
    }
}

PathLookup::Channel PathLookup::channel_of(const IoPath& path, std::size_t place) const {
    const bool is_output = path.type != bus_path_type;
    const int table =
        path.own ? own_table : static_cast<int>(is_output ? output_path_type : path.type);
    return {table, path.channels[place]};
}

void PathLookup::learn(std::uint64_t identity, const std::string& name) {
    if (identity == 0 || name.empty() || by_name_.contains(name)) return;
    const auto path = by_identity_.find(identity);
    if (path != by_identity_.end()) by_old_name_.try_emplace(name, path->second);
}

std::optional<std::size_t> PathLookup::find(std::uint64_t identity, const std::string& name) const {
    if (identity != 0) {
        const auto path = by_identity_.find(identity);
        if (path != by_identity_.end()) return path->second;
    }
    for (const auto* names : {&by_name_, &by_old_name_}) {
        const auto path = names->find(name);
        if (path != names->end()) return path->second;
    }
    return std::nullopt;
}

bool PathLookup::is_hardware(std::size_t path) const {
    return paths_[path].mapped || paths_[path].type != bus_path_type;
}

std::vector<std::size_t> PathLookup::legs_of(std::size_t path) const {
    const IoPath& whole = paths_[path];
    if (is_mono(whole)) return {};
    const auto parts = parts_.find(whole.identity());
    if (whole.identity() != 0 && parts != parts_.end()) return parts->second;
    std::vector<std::size_t> legs;
    for (std::size_t place = 0; place < whole.channels.size(); ++place) {
        const auto found = mono_on_.find(channel_of(whole, place));
        if (found == mono_on_.end()) continue;
        for (const std::size_t leg : found->second) append(legs, leg);
    }
    return legs;
}

/// The path of the hardware's that an own one plays to on this machine.
std::optional<std::size_t> PathLookup::hardware_behind(std::size_t path) const {
    if (!paths_[path].mapped) return std::nullopt;
    for (const std::uint64_t identity : paths_[path].hardware) {
        const auto found = by_identity_.find(identity);
        if (found != by_identity_.end() && !paths_[found->second].own) return found->second;
    }
    return std::nullopt;
}

std::vector<StereoPlace> PathLookup::stereo_around(std::size_t path) const {
    if (!is_mono(paths_[path])) return {};
    const auto found = stereo_on_.find(channel_of(paths_[path], 0));
    if (found == stereo_on_.end()) {
        const auto hardware = hardware_behind(path);
        return hardware ? stereo_around(*hardware) : std::vector<StereoPlace>();
    }
    std::vector<StereoPlace> places = found->second;
    const auto parent = parent_of(path);
    std::stable_partition(places.begin(), places.end(),
                          [&](const StereoPlace& place) { return place.path == parent; });
    return places;
}

std::optional<std::size_t> PathLookup::parent_of(std::size_t path) const {
    if (paths_[path].parent_identity == 0) return std::nullopt;
    const auto parent = by_identity_.find(paths_[path].parent_identity);
    if (parent == by_identity_.end()) return std::nullopt;
    return parent->second;
}

std::optional<std::size_t> PathLookup::whole_of(std::size_t path) const {
    if (const auto parent = parent_of(path)) return parent;
    const auto around = stereo_around(path);
    return around.empty() ? std::nullopt : std::optional(around.front().path);
}

}  // namespace tanrove
