// Joins plans and strips by their names.
#include "mix/plans_of_strips.hpp"

#include <map>
#include <string>

#include "mix/strip_names.hpp"

namespace tanrove {

StripPlans::StripPlans(const std::vector<TrackPlan>& plans, const std::vector<StripRow>& strips)
    : strip_of_plan_(plans.size()), plan_of_strip_(strips.size()) {
    std::map<std::string, std::size_t> strip_of_name;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        strip_of_name.try_emplace(shown_name(strips[i]), i);
    }
    for (std::size_t i = 0; i < strips.size(); ++i) {
        strip_of_name.try_emplace(strips[i].original_name, i);
    }
    for (std::size_t i = 0; i < plans.size(); ++i) {
        if (plans[i].is_alternate || plans[i].session_name.empty()) continue;
        const auto strip = strip_of_name.find(plans[i].session_name);
        if (strip == strip_of_name.end()) continue;
        strip_of_plan_[i] = strip->second;
        auto& first = plan_of_strip_[strip->second];
        if (!first) first = i;
    }
}

}  // namespace tanrove
