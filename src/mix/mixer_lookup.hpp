// Finds what the session's mixer and edit window say about a planned track: by the strip row that
// gave the track its place, else by its name.
#pragma once

#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/strip_rows.hpp"
#include "session/strips.hpp"
#include "session/track_displays.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

/// Looks into lists that outlive it.
class MixerLookup {
public:
    /// `displays` has one entry a row, and so has `strips` where its names are those of the rows.
    /// Where two strips share a name the first counts.
    MixerLookup(const std::vector<Strip>& strips, const std::vector<StripRow>& rows,
                const std::vector<TrackDisplay>& displays);

    /// The strip of the plan; nullptr if it has none or the session has no record of it. A strip
    /// of a track that was renamed may still bear the name from its creation.
    const Strip* strip_of(const TrackPlan& plan) const;

    /// How the edit window shows the plan's track; nullptr if no row is named like it.
    const TrackDisplay* display_of(const TrackPlan& plan) const;

    /// How it shows the strip of this name, be it a track or not.
    const TrackDisplay* display_named(std::string_view name) const;

    /// The rows that no track of the list is made for, master faders and video tracks, with how the
    /// edit window shows them.
    std::vector<std::pair<const StripRow*, const TrackDisplay*>> rows_without_track() const;

    /// The strips that have a record, and neither a row nor one of `plans` nor a name in
    /// `left_out`.
    std::vector<const Strip*> strips_without(const std::vector<TrackPlan>& plans,
                                             const TrackNameSet& left_out) const;

    /// Strips that the session has a record of.
    int strip_count() const;

private:
    const Strip* present_strip(std::string_view name) const;
    const Strip* strip_of_row(std::size_t row) const;

    const std::vector<Strip>& strips_;
    const std::vector<StripRow>& rows_;
    const std::vector<TrackDisplay>& displays_;
    bool strips_are_rows_ = false;  ///< a row's place is its strip's
    std::map<std::string_view, std::size_t> strip_of_name_;
    std::map<std::string_view, std::size_t> row_of_name_;
};

}  // namespace tanrove
