// All inserted plug-ins of a session.
#pragma once

#include <vector>

#include "plugins/plugin_insert.hpp"
#include "session/block_index.hpp"

namespace tanrove {

/// More than the largest session can hold; what stands behind them is damage, and left out.
constexpr std::size_t max_inserts = 32768;

/// Settings blocks do not hold one another. A chance match inside a state is kept, a nest deeper
/// than this is damage, and left out: so no byte is searched over and over.
constexpr std::size_t max_nested_settings = 8;

/// One record a settings block, in order of their blocks, its lanes with it. A block whose state is
/// not found keeps `ContainerKind::none`.
std::vector<PluginInsert> read_plugin_inserts(const BlockIndex& index);

}  // namespace tanrove
