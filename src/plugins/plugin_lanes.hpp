// The automation of plug-in controls.
#pragma once

#include <span>

#include "plugins/plugin_insert.hpp"
#include "session/block_index.hpp"

namespace tanrove {

/// More controls than a session can have automated; what stands behind them is damage.
constexpr std::size_t max_plugin_lanes = 65536;

/// Gives each lane to the last of the inserts, which ascend, that begins in front of it. All lanes
/// together hold no more points than the image has room for.
void read_plugin_lanes(const BlockIndex& index, std::span<PluginInsert> inserts);

}  // namespace tanrove
