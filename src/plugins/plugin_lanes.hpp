// The automation of plug-in controls.
#pragma once

#include <span>

#include "plugins/plugin_insert.hpp"
#include "session/block_index.hpp"

namespace tanrove {

/// Gives each lane to the last of the inserts, which ascend, that begins in front of it, unless the
/// lane stands behind that insert's slot: then it moves something else. There are
/// no more lanes, and all together no more points, than the image has room for side by side.
void read_plugin_lanes(const BlockIndex& index, std::span<PluginInsert> inserts);

}  // namespace tanrove
