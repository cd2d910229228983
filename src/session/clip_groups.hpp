// Clip groups: clips that are made of clips. Definitions say how a group is cut, lists say what
// lies in it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// One definition. Its place in the list is the number that rows and members use for the group.
struct ClipGroupClip {
    bool valid = false;  ///< false: the record could not be read and only keeps its number
    std::string name;
    bool flag = false;  ///< set, in some sessions, on a piece cut from a group
    std::int64_t source_offset = 0;
    std::int64_t length = 0;
    std::int64_t start = 0;  ///< samples into the group, below 0 in front of its head
    bool has_start = false;
    std::int64_t recorded_at = 0;  ///< the third number, as stored
    std::uint8_t is_compound = 0;  ///< not 0 on compound clips
    std::uint8_t kind = 0;
    std::size_t number_place = static_cast<std::size_t>(-1);  ///< of its record of list numbers
    std::int32_t table_index = -1;  ///< its member list in `ClipGroups::lists`, -1 none
};

struct ClipGroupMember {
    std::uint32_t id = 0;  ///< a region, a group if `nested`, a fade if `is_fade`
    bool nested = false;
    bool is_fade = false;
    bool live = false;  ///< the opposite of `is_fade`
    bool muted = false;
    std::uint64_t position = 0;  ///< as stored: samples, or ticks with their origin
    std::size_t placed_at = 0;   ///< where the placement's 0x104f begins in the image
};

struct ClipGroupList {
    std::vector<ClipGroupMember> members;
    std::uint8_t kind = 0;  ///< 1 samples, 2 ticks, 0 on a list that could not be read
};

struct ClipGroups {
    std::vector<ClipGroupClip> clips;
    std::vector<ClipGroupList> lists;
    bool lists_are_told = false;  ///< the session says which definition plays which list
};

/// Definitions, lists, and what the session says of who plays which.
ClipGroups readClipGroups(const BlockIndex& index);

}  // namespace tanrove
