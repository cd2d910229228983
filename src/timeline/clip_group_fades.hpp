// The fades inside a clip group, put on the edges of its pieces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "timeline/clip_group_pieces.hpp"

namespace tanrove {

/// How far from its edge a fade of a group may lie.
constexpr std::int64_t edge_tolerance_samples = 2;

/// A stretch of a group, in samples of the group.
struct SampleWindow {
    std::int64_t start = 0;
    std::int64_t end = 0;
};

/// Where a piece stands in its group.
struct PieceEdges {
    std::size_t piece = 0;  ///< its place among the pieces
    SampleWindow span;
    std::int64_t source = 0;  ///< sample of the file at the span's start
};

/// A fade of the group's list.
struct GroupFade {
    std::int64_t at = 0;  ///< samples of the group
    const FadeRecord* record = nullptr;
};

/// What an expanded group plays. Nested groups have pieces but neither edges nor fades of their
/// own.
struct GroupContents {
    std::vector<GroupPiece> pieces;
    std::vector<PieceEdges> edges;
    std::vector<GroupFade> fades;
};

struct GroupFadeSettings {
    FadeForm form = FadeForm::exact;
    double rate_hz = 48000;
};

/// Puts each fade on the first piece that ends or begins within two samples of it and opens
/// crossfades as far as window and files go. Returns how many were left off. Costs n log n.
int fade_pieces(GroupContents& contents, const SampleWindow& window,
                const GroupFadeSettings& settings, FadeTallies& tallies);

}  // namespace tanrove
