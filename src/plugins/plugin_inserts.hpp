// All inserted plug-ins of a session.
#pragma once

#include <cstddef>
#include <optional>
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

/// For each insert the place of the strip that it stands on: of the row that holds it, which is the
/// strip's own or, on a master fader, stands in that. nullopt for an insert of no strip.
std::vector<std::optional<std::size_t>> strip_rows_of(const std::vector<PluginInsert>& inserts,
                                                      const std::vector<StripRow>& rows);

}  // namespace tanrove
