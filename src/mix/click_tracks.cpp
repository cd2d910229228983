// A Click track is told by what its strip holds: Click II is an AAX and plays nothing in REAPER, so
// that a track with nothing else can go. One that holds anything else stays whole.
#include "mix/click_tracks.hpp"

#include <algorithm>
#include <map>
#include <string_view>

namespace tanrove {

namespace {

constexpr std::string_view click_code = "Digiclik";

/// What one strip holds.
struct StripContents {
    bool has_click = false;
    bool plays_click = false;
    bool has_other_inserts = false;
    bool has_sends = false;
    bool has_clips = false;
    bool makes_track = false;

    bool has_more_than_click() const { return has_other_inserts || has_sends || has_clips; }
};

bool holds_clips(const TrackPlan& plan) {
    return !plan.clips.empty() || !plan.midi_items.empty() ||
           std::ranges::any_of(plan.lanes,
                               [](const LanePlan& lane) { return !lane.clips.empty(); });
}

std::vector<StripContents> contents_of(const std::vector<StripRow>& rows,
                                       const std::vector<TrackPlan>& plans,
                                       const std::vector<RoutingRow>& routing,
                                       const std::vector<StripInsert>& inserts) {
    std::vector<StripContents> strips(rows.size());
    for (const StripInsert& insert : inserts) {
        StripContents& strip = strips.at(insert.strip_row);
        const bool is_click = insert.code.starts_with(click_code);
        strip.has_click = strip.has_click || is_click;
        strip.plays_click = strip.plays_click || (is_click && insert.plays);
        strip.has_other_inserts = strip.has_other_inserts || !is_click;
    }
    for (const RoutingRow& row : routing) {
        if (!row.sends.empty()) strips.at(row.strip_row).has_sends = true;
    }
    for (const TrackPlan& plan : plans) {
        if (!plan.strip_row || plan.is_vca) continue;
        StripContents& strip = strips.at(*plan.strip_row);
        strip.makes_track = true;
        strip.has_clips = strip.has_clips || holds_clips(plan);
    }
    return strips;
}

bool is_click_name(std::string_view name) {
    return name == "Click" || name.starts_with("Click ") || name.starts_with("Click.");
}

std::map<std::string_view, int> rows_of_names(const std::vector<StripRow>& rows) {
    std::map<std::string_view, int> count;
    for (const StripRow& row : rows) ++count[shown_name(row)];
    return count;
}

}  // namespace

void leave_out_click_tracks(std::vector<TrackPlan>& plans, const std::vector<StripRow>& rows,
                            const std::vector<RoutingRow>& routing, const TrackNameSet& folders,
                            const ClickInput& input, ClickTallies& tallies) {
    const std::vector<StripContents> strips = contents_of(rows, plans, routing, input.inserts);
    const auto name_count = rows_of_names(rows);
    std::vector<bool> is_click_track(rows.size(), false);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const StripContents& strip = strips[i];
        const std::string& name = shown_name(rows[i]);
        if (!strip.makes_track) continue;
        const bool has_more = strip.has_more_than_click() || folders.contains(name);
        const bool is_alone = strip.has_click ? name_count.at(name) == 1 : is_click_name(name);
        is_click_track[i] = input.no_click && !has_more && is_alone;
        if (is_click_track[i]) {
            tallies.left_out.push_back(name);
        } else if (strip.has_click && input.no_click) {
            tallies.kept_whole.push_back(name);
        }
        const bool plays = input.click_is_on && strip.plays_click && !is_click_track[i];
        if (plays && tallies.player.empty()) tallies.player = name;
    }
    // An alternate playlist behind the track is not known to be its own, and stays.
    std::erase_if(plans, [&](const TrackPlan& plan) {
        return plan.strip_row && !plan.is_alternate && is_click_track[*plan.strip_row];
    });
}

}  // namespace tanrove
