// Which clip a fade belongs to: a search over the starts or the ends of a track's clips.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tanrove {

/// One end of a clip, and the row that places the clip.
struct ClipEdge {
    double seconds = 0;
    std::int32_t edit_row = -1;  ///< -1: none
};

/// The fade row whose edge is sought.
struct FadePlace {
    double seconds = 0;
    std::int32_t row = 0;
};

/// Where the clip's row must lie for the clip to win over nearer ones.
enum class RowSide : std::uint8_t { before_fade, behind_fade };

/// For each fade the edge that it lies on, as an index among the edges; nullopt where none is
/// within 5 ms. Of the edges within, one whose row lies on the given side of the fade's row wins,
/// the row nearest to the fade's; failing that the nearest in time, the first of equally near.
/// Places must ascend by their rows. Costs n log n.
std::vector<std::optional<std::size_t>> edges_of_fades(const std::vector<ClipEdge>& edges,
                                                       const std::vector<FadePlace>& fades,
                                                       RowSide side);

}  // namespace tanrove
