// Which rows of the strip table are folders and what lies in which, once Pro Tools' two kinds of
// folder are told apart: a Routing folder is a track that its members play through, a Basic folder
// is a container that no sound passes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "session/folder_table.hpp"
#include "session/strip_table.hpp"

namespace tanrove {

enum class FolderKind : std::uint8_t { none, routing, basic };

constexpr std::size_t no_row = static_cast<std::size_t>(-1);

/// A row of the strip table; other rows are named by their places.
struct FolderRow {
    FolderKind kind = FolderKind::none;
    std::size_t parent = no_row;
    bool has_listed_members = false;    ///< the session puts something into it
    std::size_t moved_out_of = no_row;  ///< the Routing folder that it follows instead
};

struct FolderTree {
    std::vector<FolderRow> rows;
    /// False where the table of folders is missing, empty or contradicts the rows: then no row has
    /// a parent. Parents may still run in a circle.
    bool knows_parents = false;
};

/// The tree as the session has it.
FolderTree read_folder_tree(const std::vector<StripTableEntry>& strip_table,
                            const std::optional<FolderTable>& table);

/// Takes out of Routing folders what does not play through them in Pro Tools: Basic folders, and
/// the rows for which `plays_to_main` is true.
void move_out_of_routing_folders(std::vector<FolderRow>& rows,
                                 const std::vector<bool>& plays_to_main);

}  // namespace tanrove
