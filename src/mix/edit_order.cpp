// Puts the tracks in the order of the edit window.
#include "mix/edit_order.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "base/fader_law.hpp"

namespace tanrove {

namespace {

bool makes_no_plan(StripRowType type) {
    return type == StripRowType::master || type == StripRowType::video;
}

bool is_midi_row(StripRowType type) {
    return type == StripRowType::midi || type == StripRowType::instrument;
}

TrackPlan bare_plan(const std::string& name) {
    TrackPlan plan;
    plan.name = name;
    plan.session_name = name;
    plan.is_bare_strip = true;
    return plan;
}

/// Hands out the plans that are tracks of the session by their names, each name's in order.
class PlansByName {
public:
    explicit PlansByName(const std::vector<TrackPlan>& plans) {
        for (std::size_t i = 0; i < plans.size(); ++i) {
            if (!plans[i].is_alternate) queues_[plans[i].session_name].plans.push_back(i);
        }
    }

    std::optional<std::size_t> first_unused(const std::string& name,
                                            const std::vector<bool>& is_used) {
        const auto found = queues_.find(name);
        if (found == queues_.end()) return std::nullopt;
        Queue& queue = found->second;
        while (queue.next < queue.plans.size() && is_used[queue.plans[queue.next]]) ++queue.next;
        if (queue.next == queue.plans.size()) return std::nullopt;
        return queue.plans[queue.next];
    }

private:
    struct Queue {
        std::vector<std::size_t> plans;
        std::size_t next = 0;
    };
    std::map<std::string, Queue> queues_;
};

class Ordering {
public:
    Ordering(std::vector<TrackPlan> plans, const StripNames& names, const StripWidths& widths,
             const std::map<std::string, double>& vca_fader_db)
        : plans_(std::move(plans)),
          is_used_(plans_.size()),
          by_name_(plans_),
          names_(names),
          widths_(widths),
          vca_fader_db_(vca_fader_db) {}

    /// Takes the rows from the first on.
    void add_row(const StripRow& row) {
        const std::size_t first_added = result_.placed.size();
        place_plans_of(row);
        for (std::size_t i = first_added; i < result_.placed.size(); ++i) {
            result_.placed[i].strip_row = row_count_;
        }
        ++row_count_;
    }

    OrderedPlans finish() {
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            if (!is_used_[i]) result_.unplaced.push_back(std::move(plans_[i]));
        }
        return std::move(result_);
    }

private:
    void place_plans_of(const StripRow& row) {
        if (makes_no_plan(row.type)) return;
        if (row.type == StripRowType::vca) return add_vca(row);
        auto plan = by_name_.first_unused(shown_name(row), is_used_);
        if (!plan && !is_midi_row(row.type) && may_use_original_name(row)) {
            plan = by_name_.first_unused(row.original_name, is_used_);
        }
        if (plan) {
            take_run(*plan, row);
        } else {
            result_.placed.push_back(empty_plan(row));
        }
    }

    /// A track can still bear the name from its creation, unless that is now another's.
    bool may_use_original_name(const StripRow& row) const {
        return !row.original_name.empty() && row.original_name != shown_name(row) &&
               !names_.is_shown(row.original_name);
    }

    /// Legs of the same track, and playlists that found no other home, stay behind their track.
    bool belongs_behind(const TrackPlan& plan, const std::string& session_name) const {
        if (plan.is_alternate) return plan.lane_parent.empty();
        return plan.session_name == session_name;
    }

    void take_run(std::size_t first, const StripRow& row) {
        const std::string session_name = plans_[first].session_name;
        for (std::size_t i = first; i < plans_.size() && !is_used_[i]; ++i) {
            if (i != first && !belongs_behind(plans_[i], session_name)) break;
            is_used_[i] = true;
            if (!plans_[i].is_alternate) settle_leg(plans_[i], row);
            result_.placed.push_back(std::move(plans_[i]));
        }
    }

    /// The row knows the name that Pro Tools shows; a track that was found by its original name
    /// takes it, with whatever tells its legs apart.
    static void settle_leg(TrackPlan& plan, const StripRow& row) {
        if (plan.session_name != shown_name(row)) {
            plan.name.replace(0, plan.session_name.size(), shown_name(row));
            plan.session_name = shown_name(row);
        }
        plan.inactive = !row.active;
    }

    /// A VCA master that leads nothing is nothing that REAPER could show.
    void add_vca(const StripRow& row) {
        const auto fader_db = vca_fader_db_.find(shown_name(row));
        if (fader_db == vca_fader_db_.end()) return;
        TrackPlan plan = bare_plan(shown_name(row));
        plan.is_vca = true;
        plan.inactive = !row.active;
        plan.mixer.gain = gain_of_db(fader_db->second);
        result_.placed.push_back(std::move(plan));
    }

    /// A strip without clips keeps its mixer state on a track of its own.
    TrackPlan empty_plan(const StripRow& row) const {
        TrackPlan plan = bare_plan(shown_name(row));
        plan.is_midi = is_midi_row(row.type);
        plan.inactive = !row.active;
        const int width = widths_.channels_of(plan.session_name);
        plan.width_unknown = width <= 0;
        if (width > 0) plan.channels = width;
        return plan;
    }

    std::vector<TrackPlan> plans_;
    std::vector<bool> is_used_;
    PlansByName by_name_;
    const StripNames& names_;
    const StripWidths& widths_;
    const std::map<std::string, double>& vca_fader_db_;
    std::size_t row_count_ = 0;
    OrderedPlans result_;
};

using PlanPlaces = std::map<std::string, std::size_t, std::less<>>;

PlanPlaces first_places(const std::vector<TrackPlan>& plans) {
    PlanPlaces places;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        if (!plans[i].is_alternate) places.try_emplace(plans[i].session_name, i);
    }
    return places;
}

/// The entries that are folders without a plan, each name once.
std::set<const StripTableEntry*> folders_without_plan(
    const PlanPlaces& places, const std::vector<StripTableEntry>& strip_table) {
    std::set<const StripTableEntry*> folders;
    std::set<std::string_view> names;
    for (const auto& entry : strip_table) {
        if (entry.type != strip_table_folder_type || !entry.flag) continue;
        if (!places.contains(entry.name) && names.insert(entry.name).second) folders.insert(&entry);
    }
    return folders;
}

/// For each plan's place, and the one behind all, the folders to stand in front of it, the last
/// first.
std::map<std::size_t, std::vector<const StripTableEntry*>> folders_by_place(
    std::size_t plan_count, const PlanPlaces& places,
    const std::vector<StripTableEntry>& strip_table) {
    const auto needed = folders_without_plan(places, strip_table);
    std::map<std::size_t, std::vector<const StripTableEntry*>> folders;
    std::size_t place = plan_count;
    for (auto entry = strip_table.rbegin(); entry != strip_table.rend(); ++entry) {
        if (needed.contains(&*entry)) {
            folders[place].push_back(&*entry);
        } else if (const auto found = places.find(entry->name); found != places.end()) {
            place = found->second;
        }
    }
    return folders;
}

TrackPlan folder_plan(const StripTableEntry& entry) {
    TrackPlan plan = bare_plan(entry.name);
    plan.channels = 2;
    return plan;
}

}  // namespace

OrderedPlans order_by_strips(std::vector<TrackPlan> plans, const StripRows& strips,
                             const StripNames& names, const StripWidths& widths,
                             const std::map<std::string, double>& vca_fader_db) {
    Ordering ordering(std::move(plans), names, widths, vca_fader_db);
    for (const auto& row : strips.rows) ordering.add_row(row);
    return ordering.finish();
}

std::vector<TrackPlan> with_folder_plans(std::vector<TrackPlan> plans,
                                         const std::vector<StripTableEntry>& strip_table) {
    auto folders = folders_by_place(plans.size(), first_places(plans), strip_table);
    if (folders.empty()) return plans;

    std::vector<TrackPlan> result;
    for (std::size_t i = 0; i <= plans.size(); ++i) {
        auto& in_front = folders[i];
        for (auto entry = in_front.rbegin(); entry != in_front.rend(); ++entry) {
            result.push_back(folder_plan(**entry));
        }
        if (i < plans.size()) result.push_back(std::move(plans[i]));
    }
    return result;
}

}  // namespace tanrove
