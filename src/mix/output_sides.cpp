// Output paths of one channel find their side in the first stereo path that runs on that channel.
#include "mix/output_sides.hpp"

#include <string_view>

#include "mix/strip_names.hpp"

namespace tanrove {

namespace {

constexpr int left_side = -1;
constexpr int right_side = 1;

bool is_output(const IoPath& path) {
    return path.type == output_path_type || path.type == other_output_path_type;
}

/// The side of each channel of a stereo output.
std::map<std::uint16_t, int> sides_of_channels(const std::vector<IoPath>& paths) {
    std::map<std::uint16_t, int> sides;
    for (const auto& path : paths) {
        if (!is_output(path) || path.channels.size() != 2) continue;
        sides.try_emplace(path.channels[0], left_side);
        sides.try_emplace(path.channels[1], right_side);
    }
    return sides;
}

}  // namespace

OutputSides output_sides(const std::vector<RoutingRow>& routing, const std::vector<StripRow>& rows,
                         const std::vector<IoPath>& paths) {
    const auto sides = sides_of_channels(paths);
    std::map<std::string_view, int> side_of_path;
    for (const auto& path : paths) {
        if (!is_output(path) || path.channels.size() != 1) continue;
        if (const auto side = sides.find(path.channels[0]); side != sides.end()) {
            side_of_path.try_emplace(path.name, side->second);
        }
    }
    OutputSides found;
    for (const auto& row : routing) {
        if (!row.has_output || row.strip_row >= rows.size()) continue;
        if (const auto side = side_of_path.find(row.output_name); side != side_of_path.end()) {
            found.try_emplace(shown_name(rows[row.strip_row]), side->second);
        }
    }
    return found;
}

}  // namespace tanrove
