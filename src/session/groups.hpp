// Mix, edit and VCA groups, each as often as the session lists it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Attributes of a group, one byte each, by Pro Tools' own numbers.
constexpr std::size_t group_attribute_count = 32;

/// Name of the built-in group of all tracks.
constexpr std::string_view all_tracks_group = "<ALL>";

struct GroupRecord {
    std::string name;
    std::vector<std::int32_t> members;  ///< positions of strips
    std::int32_t kind = 0;              ///< as stored: 0 edit, 1 mix, 2 both
    std::int32_t vca_master = -1;       ///< position of a strip, -1 for none
    std::uint32_t slot = 0;             ///< number of the group's slot; 255 on "<ALL>"
    bool active = true;
    std::array<std::uint8_t, group_attribute_count> attributes = {};
    bool has_attributes = false;
};

/// All group records in image order. A live group stands in the list of mix groups and in that of
/// edit groups, so it is here twice. A record without its terminator is a chance match.
std::vector<GroupRecord> readGroups(const BlockIndex& index);

}  // namespace tanrove
