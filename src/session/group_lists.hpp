// Which list a clip group plays, in sessions that do not say so themselves.
#pragma once

#include <cstdint>
#include <span>

#include "session/clip_groups.hpp"

namespace tanrove {

/// Gives each definition the number of its list by what it looks like. Where `lists_are_told`
/// nothing changes. `region_lengths` are those of the audio regions as they sound, in samples.
void number_group_lists(ClipGroups& groups, std::span<const std::int64_t> region_lengths);

}  // namespace tanrove
