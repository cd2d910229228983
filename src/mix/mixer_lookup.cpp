// Plans meet rows and strips by the row's place, or by the names that Pro Tools shows.
#include "mix/mixer_lookup.hpp"

#include <algorithm>
#include <set>

#include "mix/strip_names.hpp"

namespace tanrove {

MixerLookup::MixerLookup(const std::vector<Strip>& strips, const std::vector<StripRow>& rows,
                         const std::vector<TrackDisplay>& displays)
    : strips_(strips), rows_(rows), displays_(displays) {
    strips_are_rows_ = std::ranges::equal(strips, rows, {}, &Strip::name, shown_name);
    for (std::size_t i = 0; i < strips.size(); ++i) {
        if (strips[i].present) strip_of_name_.try_emplace(strips[i].name, i);
    }
    for (std::size_t i = 0; i < rows.size(); ++i) row_of_name_.try_emplace(shown_name(rows[i]), i);
}

const Strip* MixerLookup::present_strip(std::string_view name) const {
    const auto found = strip_of_name_.find(name);
    return found == strip_of_name_.end() ? nullptr : &strips_[found->second];
}

const Strip* MixerLookup::strip_of_row(std::size_t row) const {
    return row < strips_.size() && strips_[row].present ? &strips_[row] : nullptr;
}

const Strip* MixerLookup::strip_of(const TrackPlan& plan) const {
    if (plan.is_alternate || plan.session_name.empty()) return nullptr;
    if (strips_are_rows_ && plan.strip_row) return strip_of_row(*plan.strip_row);
    if (const Strip* strip = present_strip(plan.session_name)) return strip;
    const auto row = row_of_name_.find(plan.session_name);
    if (row == row_of_name_.end()) return nullptr;
    const std::string& original = rows_[row->second].original_name;
    return row_of_name_.contains(original) ? nullptr : present_strip(original);
}

const TrackDisplay* MixerLookup::display_of(const TrackPlan& plan) const {
    if (plan.is_alternate) return nullptr;
    if (!plan.strip_row) return display_named(plan.session_name);
    return *plan.strip_row < displays_.size() ? &displays_[*plan.strip_row] : nullptr;
}

const TrackDisplay* MixerLookup::display_named(std::string_view name) const {
    const auto row = row_of_name_.find(name);
    if (row == row_of_name_.end() || row->second >= displays_.size()) return nullptr;
    return &displays_[row->second];
}

std::vector<std::pair<const StripRow*, const TrackDisplay*>> MixerLookup::rows_without_track()
    const {
    std::vector<std::pair<const StripRow*, const TrackDisplay*>> found;
    for (std::size_t i = 0; i < rows_.size() && i < displays_.size(); ++i) {
        const bool makes_track =
            rows_[i].type != StripRowType::master && rows_[i].type != StripRowType::video;
        if (!makes_track) found.emplace_back(&rows_[i], &displays_[i]);
    }
    return found;
}

std::vector<const Strip*> MixerLookup::strips_without(const std::vector<TrackPlan>& plans,
                                                      const TrackNameSet& left_out) const {
    std::set<std::string_view> taken(left_out.begin(), left_out.end());
    for (const auto& plan : plans) taken.insert(plan.session_name);
    for (const auto& row : rows_) taken.insert({row.original_name, row.current_name});
    std::vector<const Strip*> left;
    for (const auto& strip : strips_) {
        if (strip.present && taken.insert(strip.name).second) left.push_back(&strip);
    }
    return left;
}

int MixerLookup::strip_count() const {
    return static_cast<int>(std::count_if(strips_.begin(), strips_.end(),
                                          [](const Strip& strip) { return strip.present; }));
}

}  // namespace tanrove
