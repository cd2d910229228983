// The fades in the list of a clip group, and those on the edges of the group itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "session/clip_groups.hpp"
#include "session/fades.hpp"
#include "timeline/clip_item.hpp"
#include "timeline/fade_shapes.hpp"
#include "timeline/fade_tallies.hpp"

namespace tanrove {

/// How far from its edge a fade of a group may lie.
constexpr std::int64_t edge_tolerance_samples = 2;

/// Each curve on a piece is a hundred points of an envelope, and a few bytes of a session can ask
/// for any number of pieces under any number of fades.
constexpr std::size_t max_fade_curves = 20'000;

/// What may still be spread in this session.
struct CurveBudget {
    std::size_t left = max_fade_curves;
    int refused = 0;  ///< pieces that go without a curve
};

/// A stretch of a group, in samples of the group.
struct SampleWindow {
    std::int64_t start = 0;
    std::int64_t end = 0;
};

/// A fade on an edge that its group's window does not show, though it shows a part of the fade.
struct FadeBeyond {
    FadeSide side = FadeSide::fade_in;
    const FadeRecord* record = nullptr;
    std::int64_t start = 0;  ///< where the fade begins, samples of the group
};

/// A clip or a nested group of a list as its group's window shows it, in samples of the group.
struct ListEntry {
    const ClipGroupMember* member = nullptr;
    std::int64_t head = 0;      ///< where it begins, shown or not
    SampleWindow stored;        ///< what is shown of it before crossfades draw it out
    SampleWindow span;          ///< what is shown of it
    std::int64_t fade_end = 0;  ///< where its end counts for fades
    Rare<ClipFades> fades = {};
    bool crossfaded = false;  ///< at its tail
    std::int64_t tail = 0;    ///< where it ends, shown or not
    std::vector<FadeBeyond> beyond = {};
};

/// A fade of a group's list.
struct GroupFade {
    std::int64_t at = 0;  ///< samples of the group
    const FadeRecord* record = nullptr;
};

struct GroupFadeSettings {
    FadeForm form = FadeForm::exact;
    double rate_hz = 48000;
    bool no_stretch = false;
    /// How many samples of those wanted an entry's file lets its head begin earlier.
    std::function<std::int64_t(const ListEntry& entry, std::int64_t wanted)> head_room;
};

/// True if the window shows some of the fade, wherever its edge lies.
bool is_shown(const GroupFade& fade, const SampleWindow& window);

/// Puts each fade on the first clip, failing that the first group, that ends or begins within two
/// samples of it, and opens crossfades as far as window and files go. A clip whose edge lies
/// outside the window takes along what is seen of its fade. Returns how many were left off. Costs n
/// log n.
int fade_entries(std::vector<ListEntry>& entries, std::span<const GroupFade> fades,
                 const SampleWindow& window, const GroupFadeSettings& settings,
                 FadeTallies& tallies);

/// The edges of a group on the timeline, in seconds, with their fades. A crossfade draws a window
/// out beyond where it was stored, and what the group plays may not reach as far.
struct GroupEdges {
    double start = 0;
    double end = 0;
    double stored_start = 0;
    double stored_end = 0;
    ClipFade fade_in;
    ClipFade fade_out;
};

/// Gives a group's fades to its pieces: a piece on the edge that holds all of the fade, and has
/// none of its own, fades with it; others follow the part of its curve that they lie under. With
/// plain fades only the pieces on the edge fade, and a longer fade of their own stays. Returns how
/// many of the two fades had to be spread so.
int fade_group_edges(std::span<ClipItem> pieces, const GroupEdges& edges, FadeForm form,
                     double rate_hz, CurveBudget& budget);

/// Lays a fade's curve, whose start is one of the timeline, over the pieces that lie under it.
/// Returns false if none does.
bool fade_across(std::span<ClipItem> pieces, const FadeCurve& curve, double rate_hz,
                 CurveBudget& budget);

}  // namespace tanrove
