// A clip group is a clip made of clips, and of further groups. REAPER has none, so a placed group
// becomes the pieces of audio that it plays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "session/clip_groups.hpp"
#include "session/fades.hpp"
#include "session/region_starts.hpp"
#include "session/session_lists.hpp"
#include "timeline/clip_item.hpp"
#include "timeline/fade_shapes.hpp"
#include "timeline/fade_tallies.hpp"

namespace tanrove {

/// Groups inside groups, the outermost counted, that are followed.
constexpr int max_group_depth = 9;

/// Nine levels that name each other many times over are more audio than any session holds. Past
/// these numbers, for all groups of a session together, the rest counts as unreadable: each piece
/// that is missing, and behind the last entry looked at each entry.
constexpr std::size_t max_group_pieces = 200'000;
constexpr std::size_t max_group_visits = 100'000'000;  ///< entries looked at

struct ClipGroupTallies {
    int groups = 0;          ///< laid out
    int pieces = 0;          ///< the items that they became
    int fades = 0;           ///< fades inside groups
    int fade_ins = 0;        ///< on pieces
    int fade_outs = 0;       ///< likewise
    int fades_left_off = 0;  ///< of `fades`: on no edge of a piece, or below the first level
    int unreadable = 0;      ///< groups and pieces that are missing
    std::vector<std::string> unreadable_on = {};  ///< names of the tracks that miss them

    void add_unreadable(std::size_t count);
};

/// What groups are made from.
struct GroupMaterial {
    const ClipGroups& groups;
    std::span<const Region> regions;
    std::span<const RegionStart> sync_points;  ///< one a region, or none where they are of no use
    std::span<const FadeRecord> fades;
    bool no_fades = false;
    FadeForm fade_form = FadeForm::exact;
    double rate_hz = 48000;  ///< above 0
};

/// A group on a track.
struct PlacedGroup {
    std::uint32_t group = 0;
    double start = 0;  ///< seconds
    bool muted = false;
};

/// One clip that a group plays, in seconds of the session timeline.
struct GroupPiece {
    std::uint32_t region = 0;
    double start = 0;
    double length = 0;
    double source_offset = 0;
    bool muted = false;
    double sync_offset = 0;  ///< from its start to its clip's sync point, 0 where that is cut
    ClipFade fade_in;
    ClipFade fade_out;
    bool crossfaded = false;
};

/// What may still be spent on groups in this session.
struct GroupBudget {
    std::size_t pieces = max_group_pieces;
    std::size_t visits = max_group_visits;
};

/// The pieces of one group, nested groups laid out, in the order in which the lists name them; the
/// fades of the group's own list are on them. What cannot be read is counted.
std::vector<GroupPiece> pieces_of_group(const PlacedGroup& placed, const GroupMaterial& material,
                                        GroupBudget& budget, ClipGroupTallies& tallies,
                                        FadeTallies& fade_tallies);

}  // namespace tanrove
