// From the tree of folders to REAPER's depths, which follow the order of the tracks alone. Three
// attempts, each coarser: the tree as it has to sound, the tree as Pro Tools shows it, and without
// a tree each folder with the tracks up to the next one.
#include "mix/folder_depths.hpp"

#include <algorithm>
#include <map>
#include <string_view>

#include "mix/folder_tree.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_folder_depth = 16;
constexpr std::size_t no_plan = static_cast<std::size_t>(-1);

// Two pan knobs at their ends: what the folder holds passes it unchanged.
constexpr int basic_folder_pan_mode = 6;

constexpr FolderState opens_folder = {.kind = 1, .depth = 1};

constexpr FolderState closes_folders(int depth) {
    return {.kind = 2, .depth = depth};
}

/// Which plan belongs to which row of the strip table.
struct PlanRows {
    PlanRows(const std::vector<TrackPlan>& plans, const std::vector<StripTableEntry>& strip_table)
        : first_plan(strip_table.size(), no_plan), last_plan(strip_table.size(), no_plan) {
        std::map<std::string_view, std::size_t> rows;
        for (std::size_t i = 0; i < strip_table.size(); ++i) {
            rows.try_emplace(strip_table[i].name, i);
        }
        std::size_t row = no_row;
        for (std::size_t i = 0; i < plans.size(); ++i) {
            // A split alternate stands with the track in front of it.
            if (!plans[i].session_name.empty()) {
                const auto found = rows.find(plans[i].session_name);
                row = found == rows.end() ? no_row : found->second;
            }
            row_of.push_back(row);
            if (row == no_row) continue;
            if (first_plan[row] == no_plan) first_plan[row] = i;
            last_plan[row] = i;
        }
    }

    std::vector<std::size_t> row_of;      ///< by plan; no_row where none bears its name
    std::vector<std::size_t> first_plan;  ///< by row
    std::vector<std::size_t> last_plan;   ///< by row
};

class FolderPlanner {
public:
    FolderPlanner(std::vector<TrackPlan>& plans, const FolderInput& input, FolderTallies& tallies)
        : plans_(plans),
          input_(input),
          tallies_(tallies),
          tree_(read_folder_tree(input.strip_table, input.folder_table)),
          places_(plans, input.strip_table) {}

    void run() {
        const bool has_folder = std::ranges::any_of(tree_.rows, is_folder);
        if (!has_folder) return;
        mark_basic_folders();
        if (tree_.knows_parents && (write_as_it_sounds() || write_as_it_is_shown())) return;
        tallies_.by_order = 1;
        write_by_order();
    }

private:
    static bool is_folder(const FolderRow& row) { return row.kind != FolderKind::none; }

    const std::string& name_of(std::size_t row) const { return input_.strip_table[row].name; }

    void mark_basic_folders() {
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            const std::size_t row = places_.row_of[i];
            if (row == no_row || plans_[i].session_name.empty()) continue;
            if (tree_.rows[row].kind != FolderKind::basic) continue;
            plans_[i].is_basic_folder = true;
            plans_[i].pan_mode = basic_folder_pan_mode;
        }
    }

    bool write_as_it_sounds() {
        sounding_ = tree_.rows;
        std::vector<bool> plays_to_main;
        for (const auto& entry : input_.strip_table) {
            plays_to_main.push_back(!input_.without_main_send.contains(entry.name));
        }
        move_out_of_routing_folders(sounding_, plays_to_main);
        if (!write_tree(sounding_)) return false;
        tell_moved(sounding_);
        return true;
    }

    bool write_as_it_is_shown() {
        const bool has_moved = std::ranges::any_of(
            sounding_, [](const FolderRow& row) { return row.moved_out_of != no_row; });
        std::vector<FolderRow> shown = tree_.rows;
        if (!has_moved || !write_tree(shown)) return false;
        tell_moved(shown);
        for_each_moved(sounding_, [this](std::size_t row, std::size_t folder) {
            if (is_silent(row)) return;
            tallies_.could_not_move.push_back(name_of(row) + " (in " + name_of(folder) + ")");
        });
        return true;
    }

    void tell_moved(const std::vector<FolderRow>& rows) {
        for_each_moved(rows, [this](std::size_t row, std::size_t folder) {
            auto& list = tree_.rows[row].kind == FolderKind::basic ? tallies_.folders_moved
                                                                   : tallies_.tracks_moved;
            list.push_back(name_of(row) + " out of " + name_of(folder));
        });
    }

    /// Calls `tell` with each row that was moved, if it is a track of the project, and the folder
    /// it was moved out of.
    template <class Tell>
    void for_each_moved(const std::vector<FolderRow>& rows, Tell tell) const {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i].moved_out_of == no_row || places_.first_plan[i] == no_plan) continue;
            tell(i, rows[i].moved_out_of);
        }
    }

    /// True of a row that plays no sound: it may lie in any folder.
    bool is_silent(std::size_t row) const {
        return row != no_row && input_.silent.contains(name_of(row));
    }

    /// Writes the folders of a tree. False, with nothing written, where the plans do not stand in
    /// the order that it asks for.
    bool write_tree(std::vector<FolderRow>& rows) {
        const auto depths = depths_of(rows);
        if (depths.empty()) return false;
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            const int step = (i + 1 < plans_.size() ? depths[i + 1] : 0) - depths[i];
            if (step > 0) plans_[i].folder = opens_folder;
            if (step < 0) plans_[i].folder = closes_folders(step);
        }
        count_folders(rows);
        return true;
    }

    /// In how many folders each plan lies; empty where one cannot be reached in the plans' order: a
    /// folder that has closed, or that has no plan, does not open again. A silent row whose folder
    /// has closed moves out of it.
    std::vector<int> depths_of(std::vector<FolderRow>& rows) const {
        std::vector<int> depths;
        std::vector<std::size_t> open;
        std::vector<std::size_t> wanted;
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            const std::size_t row = places_.row_of[i];
            if (!find_folders_around(rows, row, wanted)) return {};
            open.erase(std::ranges::mismatch(open, wanted).in1, open.end());
            if (open.size() != wanted.size()) {
                if (!is_silent(row)) return {};
                rows[row].moved_out_of = rows[row].parent;
                rows[row].parent = open.empty() ? no_row : open.back();
            }
            depths.push_back(static_cast<int>(open.size()));
            const bool is_first = row != no_row && places_.first_plan[row] == i;
            if (is_first && is_folder(rows[row])) open.push_back(row);
        }
        return depths;
    }

    /// The folders that a row lies in, the outermost first. False where they are too many.
    static bool find_folders_around(const std::vector<FolderRow>& rows, std::size_t row,
                                    std::vector<std::size_t>& folders) {
        folders.clear();
        if (row == no_row) return true;
        for (auto folder = rows[row].parent; folder != no_row; folder = rows[folder].parent) {
            if (folders.size() == max_folder_depth) return false;
            folders.push_back(folder);
        }
        std::ranges::reverse(folders);
        return true;
    }

    void count_folders(const std::vector<FolderRow>& rows) {
        std::vector<bool> has_member(rows.size());
        for (const auto& row : rows) {
            if (row.parent != no_row) has_member[row.parent] = true;
        }
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (!is_folder(rows[i])) continue;
            const std::size_t plan = places_.first_plan[i];
            if (plan != no_plan && plans_[plan].folder.kind == opens_folder.kind) {
                count_written(rows[i].kind);
                if (rows[i].parent != no_row) ++tallies_.nested;
            } else if (has_member[i]) {
                tallies_.not_written.push_back(name_of(i));
            } else if (rows[i].has_listed_members) {
                ++tallies_.all_members_moved_out;
            } else {
                ++tallies_.empty;
            }
        }
    }

    void count_written(FolderKind kind) {
        ++(kind == FolderKind::basic ? tallies_.basic_written : tallies_.routing_written);
    }

    void write_by_order() {
        std::size_t folder = next_folder(0);
        while (folder < tree_.rows.size()) {
            const std::size_t next = next_folder(folder + 1);
            write_run(folder, next);
            // The row above is the last of another folder's run: this one may lie in that folder.
            const bool follows_run = previous_folder_ != no_row && previous_folder_ + 1 != folder;
            if (follows_run) ++tallies_.maybe_nested;
            previous_folder_ = folder;
            folder = next;
        }
    }

    std::size_t next_folder(std::size_t from) const {
        while (from < tree_.rows.size() && !is_folder(tree_.rows[from])) ++from;
        return from;
    }

    /// A folder row with the rows up to the next one.
    void write_run(std::size_t folder, std::size_t end) {
        if (folder + 1 == end) {
            ++tallies_.empty;
            return;
        }
        const std::size_t first = places_.first_plan[folder];
        std::size_t last = no_plan;
        for (std::size_t row = folder + 1; row < end; ++row) {
            const std::size_t plan = places_.last_plan[row];
            if (plan != no_plan && (last == no_plan || plan > last)) last = plan;
        }
        if (!is_run_of_plans(first, last, folder, end)) {
            tallies_.not_written.push_back(name_of(folder));
            return;
        }
        plans_[first].folder = opens_folder;
        plans_[last].folder = closes_folders(-1);
        count_written(tree_.rows[folder].kind);
    }

    /// True if all plans from `first` to `last` belong to these rows.
    bool is_run_of_plans(std::size_t first, std::size_t last, std::size_t first_row,
                         std::size_t end_row) const {
        if (first == no_plan || last == no_plan || first >= last) return false;
        return std::all_of(places_.row_of.begin() + static_cast<std::ptrdiff_t>(first),
                           places_.row_of.begin() + static_cast<std::ptrdiff_t>(last),
                           [&](std::size_t row) { return row >= first_row && row < end_row; });
    }

    std::vector<TrackPlan>& plans_;
    const FolderInput& input_;
    FolderTallies& tallies_;
    FolderTree tree_;
    PlanRows places_;
    std::vector<FolderRow> sounding_;  ///< the tree as REAPER's sound asks for it
    std::size_t previous_folder_ = no_row;
};

}  // namespace

void plan_folders(std::vector<TrackPlan>& plans, const FolderInput& input, FolderTallies& tallies) {
    FolderPlanner(plans, input, tallies).run();
}

}  // namespace tanrove
