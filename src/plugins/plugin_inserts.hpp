// All inserted plug-ins of a session.
#pragma once

#include <vector>

#include "plugins/plugin_insert.hpp"
#include "session/block_index.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

/// Settings blocks do not hold one another. A chance match inside a state is kept, a nest deeper
/// than this is damage, and left out: so no byte is searched over and over.
constexpr std::size_t max_nested_settings = 8;

/// One record a settings block, in order of their blocks, its lanes with it; no more of them than
/// the image has room for side by side. A block whose state is not found keeps
/// `ContainerKind::none`.
std::vector<PluginInsert> read_plugin_inserts(const BlockIndex& index);

/// True if the insert belongs to this strip: the row that holds it is the strip's own, or stands in
/// that, as it does on a master fader.
bool holds(const StripRow& row, const PluginInsert& insert);

}  // namespace tanrove
