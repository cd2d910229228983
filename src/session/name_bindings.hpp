// Which strip belongs to a track that was renamed: found by the track's identity, not by its name.
// For those who look into a session (tools/session_dump): the program's strip rows are bound to
// their names when they are read (`strip_rows`).
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// A strip as the bindings know it.
struct BindableStrip {
    std::string name;
    std::optional<std::size_t> channel_position;  ///< of its channel record in the image
};

/// From a track's name in the clip data to the place of its strip in `strips`; only names that
/// differ from their strip's have an entry. Where several strips claim a name the first has it.
std::map<std::string, std::size_t> readNameBindings(const BlockIndex& index,
                                                    std::span<const BindableStrip> strips);

}  // namespace tanrove
