// The folder table and the strip table joined into a tree, and the tree as REAPER has to have it.
#include "mix/folder_tree.hpp"

#include <map>

namespace tanrove {

namespace {

// How far up folders are looked for.
constexpr int max_climb_of_folder = 32;
constexpr int max_climb_of_track = 31;

using RowsByIdentity = std::map<std::uint64_t, std::size_t>;

/// The first row of each identity.
RowsByIdentity rows_by_identity(const std::vector<StripTableEntry>& strip_table) {
    RowsByIdentity rows;
    for (std::size_t i = 0; i < strip_table.size(); ++i) {
        if (strip_table[i].identity != 0) rows.try_emplace(strip_table[i].identity, i);
    }
    return rows;
}

FolderKind kind_of(const StripTableEntry& entry) {
    if (entry.type == strip_table_folder_type) return FolderKind::basic;
    return entry.flag ? FolderKind::routing : FolderKind::none;
}

/// The short forms of the strip table do not mark Routing folders: what the folder table lists is
/// one.
void mark_listed_folders(FolderTree& tree, const std::vector<StripTableEntry>& strip_table,
                         const RowsByIdentity& places, const FolderTable& table) {
    for (const auto& [identity, members] : table) {
        const auto place = places.find(identity);
        if (place == places.end()) continue;
        FolderRow& row = tree.rows[place->second];
        if (row.kind == FolderKind::none && strip_table[place->second].width_is_code) {
            row.kind = FolderKind::routing;
        }
        row.has_listed_members = !members.empty();
    }
}

/// False if a folder is no row that is a folder, or a member no row or in two folders.
bool set_parents(FolderTree& tree, const RowsByIdentity& places, const FolderTable& table) {
    for (const auto& [identity, members] : table) {
        const auto folder = places.find(identity);
        if (folder == places.end()) return false;
        if (tree.rows[folder->second].kind == FolderKind::none) return false;
        for (const auto member : members) {
            const auto row = places.find(member);
            if (row == places.end() || tree.rows[row->second].parent != no_row) return false;
            tree.rows[row->second].parent = folder->second;
        }
    }
    return true;
}

/// The Routing folder farthest up that a row lies in.
std::size_t topmost_routing_folder(const std::vector<FolderRow>& rows, std::size_t row,
                                   int max_climb) {
    std::size_t topmost = no_row;
    std::size_t folder = rows[row].parent;
    for (int step = 0; step < max_climb && folder != no_row; ++step) {
        if (rows[folder].kind == FolderKind::routing) topmost = folder;
        folder = rows[folder].parent;
    }
    return topmost;
}

/// REAPER would send it through every folder above, so it goes where the topmost of them stands.
void move_out(std::vector<FolderRow>& rows, std::size_t row, int max_climb) {
    const std::size_t folder = topmost_routing_folder(rows, row, max_climb);
    if (folder == no_row) return;
    rows[row].parent = rows[folder].parent;
    rows[row].moved_out_of = folder;
}

}  // namespace

FolderTree read_folder_tree(const std::vector<StripTableEntry>& strip_table,
                            const std::optional<FolderTable>& table) {
    FolderTree tree;
    for (const auto& entry : strip_table) tree.rows.push_back({.kind = kind_of(entry)});
    if (!table || table->empty()) return tree;
    const RowsByIdentity places = rows_by_identity(strip_table);
    mark_listed_folders(tree, strip_table, places, *table);
    tree.knows_parents = set_parents(tree, places, *table);
    if (!tree.knows_parents) {
        for (auto& row : tree.rows) row.parent = no_row;
    }
    return tree;
}

void move_out_of_routing_folders(std::vector<FolderRow>& rows,
                                 const std::vector<bool>& plays_to_main) {
    // Basic folders first: their members go with them and then lie in no Routing folder.
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].kind == FolderKind::basic) move_out(rows, i, max_climb_of_folder);
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool is_track = rows[i].kind != FolderKind::basic;
        if (is_track && plays_to_main[i]) move_out(rows, i, max_climb_of_track);
    }
}

}  // namespace tanrove
