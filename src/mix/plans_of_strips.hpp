// Which plans are tracks of which strip: the join between what the mixer says, by strip rows, and
// the tracks as they are written.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/strip_rows.hpp"

namespace tanrove {

class StripPlans {
public:
    /// By the name that the strip shows, else by the one it was made under. Alternate playlists
    /// are tracks of no strip.
    StripPlans(const std::vector<TrackPlan>& plans, const std::vector<StripRow>& strips);

    /// The strip row of a plan. The legs of a strip that could not be merged share it.
    std::optional<std::size_t> strip_of(std::size_t plan) const { return strip_of_plan_[plan]; }

    /// The strip's first plan.
    std::optional<std::size_t> plan_of(std::size_t strip_row) const {
        return plan_of_strip_[strip_row];
    }

private:
    std::vector<std::optional<std::size_t>> strip_of_plan_;
    std::vector<std::optional<std::size_t>> plan_of_strip_;
};

}  // namespace tanrove
