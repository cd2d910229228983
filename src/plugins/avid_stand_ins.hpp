// Plug-ins of Pro Tools' own that REAPER's can be set to sound like.
#pragma once

#include <optional>
#include <string_view>

#include "base/byte_view.hpp"
#include "plugins/plugin_insert.hpp"

namespace tanrove {

/// The product that has a stand-in; nullopt for every other plug-in, and where its settings are not
/// of the known shape.
std::optional<std::string_view> stand_in_product(const PluginInsert& insert, ByteView image);

}  // namespace tanrove
