// A clip group is a clip made of clips, and of further groups. REAPER has none, so a placed group
// becomes the pieces of audio that it plays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "session/clip_groups.hpp"
#include "timeline/clip_group_fades.hpp"
#include "timeline/clip_group_tallies.hpp"
#include "timeline/loop_clips.hpp"
#include "timeline/timeline_input.hpp"
#include "timeline/warp_clips.hpp"

namespace tanrove {

/// Groups inside groups, the outermost counted, that are followed.
constexpr int max_group_depth = 9;

/// Nine levels that name each other many times over are more audio than any session holds. Past
/// these numbers, for all groups of a session together, the rest counts as unreadable: each piece
/// that is missing, and behind the last entry looked at each entry.
constexpr std::size_t max_group_pieces = 200'000;
constexpr std::size_t max_group_visits = 100'000'000;  ///< entries looked at

/// What groups are made from.
struct GroupMaterial {
    const TimelineInput& input;
    const ClipGroups& groups;                  ///< with the numbers of their lists
    std::span<const RegionStart> sync_points;  ///< one a region, or none where they are of no use
    const WarpSlicer& slicer;
    ClipLooper* looper = nullptr;  ///< none: nothing repeats
    LoopTallies* loops = nullptr;  ///< what it counts
};

/// A group on a track.
struct PlacedGroup {
    std::uint32_t group = 0;
    SampleWindow window;  ///< what is seen of it
    double start = 0;     ///< seconds
    bool muted = false;
    std::string track = {};  ///< its name
};

/// What may still be spent on groups in this session.
struct GroupBudget {
    std::size_t pieces = max_group_pieces;
    std::size_t visits = max_group_visits;
    CurveBudget curves = {};
};

/// The stored window of a group.
SampleWindow window_of(const ClipGroupClip& group);

/// How long a region sounds, in samples, when it begins at this moment: a warped one plays longer
/// or shorter than its file.
std::int64_t sounding_length(const GroupMaterial& material, std::uint32_t region,
                             double start_seconds);

/// True if the group plays nothing, at no depth, and all of it could be read.
bool holds_no_audio(const GroupMaterial& material, std::uint32_t group, GroupBudget& budget);

/// The pieces of one group, nested groups laid out, in the order in which the lists name them, as
/// clips; the fades of the lists are on them, and their warp maps if there is a `warp`. What
/// cannot be read is counted.
std::vector<ClipItem> pieces_of_group(const PlacedGroup& placed, const GroupMaterial& material,
                                      const WarpOneClip* warp, GroupBudget& budget,
                                      ClipGroupTallies& tallies, FadeTallies& fade_tallies);

}  // namespace tanrove
