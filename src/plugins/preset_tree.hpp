// The preset tree: XML inside a big-endian chunk, which names the plug-in that its maker's shell
// plays.
#pragma once

#include <optional>

#include "plugins/plugin_insert.hpp"
#include "plugins/state_span.hpp"

namespace tanrove {

/// Finds the trees of one settings block. Chunks are asked for in ascending order, so that the
/// search for the trees' opening tag passes each byte once.
class PresetTrees {
public:
    explicit PresetTrees(const StateSpan& span) : span_(span), bytes_(span.bytes()) {}

    /// True if the chunk whose "XPst" stands at `p` holds a tree. Its texts go to the insert; kind
    /// and place only where the tree names a sub-component of four characters.
    bool take(std::size_t p, PluginInsert& insert);

private:
    /// The first opening tag at or behind `from`.
    std::size_t next_tree(std::size_t from);

    const StateSpan& span_;
    ByteView bytes_;
    std::optional<std::size_t> next_;
};

}  // namespace tanrove
