// The containers that a tag tells: twelve of the shapes in which plug-ins keep their state.
#pragma once

#include "plugins/plugin_insert.hpp"
#include "plugins/state_span.hpp"

namespace tanrove {

/// Searches the block for the first container with a tag and fills the insert's kind, the place and
/// size of the state, and what the container alone tells (zlib words, texts of a preset tree). The
/// kind stays `none` where there is no container, or the first one breaks its own limits.
void find_tagged_container(const StateSpan& span, PluginInsert& insert);

}  // namespace tanrove
