// From the timeline's channels to the ordered list of tracks, step by step: fold, attach the
// alternates, order, give the rest a place, settle what is silent.
#include "mix/assemble_tracks.hpp"

#include <algorithm>
#include <utility>

#include "mix/alternate_lanes.hpp"
#include "mix/edit_order.hpp"
#include "mix/fold_channels.hpp"
#include "mix/strip_names.hpp"
#include "mix/strip_widths.hpp"

namespace tanrove {

namespace {

TrackNameSet current_names(const std::vector<TrackTableRow>& rows) {
    TrackNameSet names;
    for (const auto& row : rows) names.insert(row.name);
    return names;
}

TrackNameSet inactive_names(const AssemblyInput& input) {
    TrackNameSet names = input.inactive_names;
    for (const auto& row : input.strips.rows) {
        if (!row.active) names.insert(shown_name(row));
    }
    return names;
}

/// Nothing is lost: what no strip asked for follows behind all others.
void append_unplaced(std::vector<TrackPlan>& plans, std::vector<TrackPlan> unplaced,
                     TrackTallies& tallies) {
    for (auto& plan : unplaced) {
        if (!plan.is_alternate) ++tallies.tracks_without_strip_row;
        plans.push_back(std::move(plan));
    }
}

/// Names of strips that the mixer rows call MIDI: their width says nothing about audio.
TrackNameSet midi_strip_names(const StripRows& strips) {
    TrackNameSet names;
    for (const auto& row : strips.rows) {
        if (row.type == StripRowType::midi) names.insert(shown_name(row));
    }
    return names;
}

/// Pro Tools silences a track that is inactive or has its voice off, and plays one playlist of a
/// track at a time.
void settle_silence(std::vector<TrackPlan>& plans, const AssemblyInput& input) {
    const TrackNameSet inactive = inactive_names(input);
    for (auto& plan : plans) {
        plan.unmatched_alternate = plan.is_alternate;
        if (!plan.is_alternate) {
            plan.inactive = plan.inactive || inactive.contains(plan.session_name);
            plan.voice_off = input.voice_off_names.contains(plan.session_name);
        }
        plan.muted = plan.inactive || plan.voice_off || plan.unmatched_alternate;
    }
}

bool is_merged_pair(const TrackPlan& plan) {
    constexpr int pair = 2;
    return plan.channels == pair && !plan.is_alternate && !plan.is_bare_strip && plan.leg_pan == 0;
}

void settle_mono_strips(std::vector<TrackPlan>& plans, const AssemblyInput& input,
                        const StripWidths& widths) {
    const TrackNameSet midi_strips = midi_strip_names(input.strips);
    for (auto& plan : plans) {
        const bool has_strip =
            !plan.is_alternate && !plan.is_vca && !midi_strips.contains(plan.session_name);
        const int width =
            plan.is_bare_strip ? widths.channels_of(plan.session_name) : plan.channels;
        plan.strip_is_mono = has_strip && width == 1;
    }
}

/// True if the track of an audio or aux strip has nothing on any of its lists.
bool is_empty_audio_track(const TrackPlan& plan, const std::vector<StripRow>& rows,
                          const TrackNameSet& folders) {
    const bool has_row = plan.strip_row && *plan.strip_row < rows.size();
    if (!has_row || folders.contains(plan.session_name)) return false;
    return rows[*plan.strip_row].type == StripRowType::audio_or_aux && plan.clips.empty() &&
           std::ranges::all_of(plan.lanes, [](const LanePlan& lane) { return lane.clips.empty(); });
}

}  // namespace

std::vector<TrackPlan> assemble_tracks(AssemblyInput input, TrackTallies& tallies) {
    const StripNames names(input.strips.rows);
    const StripWidths widths(input.track_rows, input.strip_table);
    if (!input.strips.bound) tallies.names_not_bound = 1;

    auto plans = fold_channels(
        std::move(input.channels), names,
        {.current_names = current_names(input.track_rows), .keep_alt_takes = input.keep_alt_takes},
        tallies);
    plans = attach_alternates(std::move(plans));
    OrderedPlans ordered =
        order_by_strips(std::move(plans), input.strips, names, widths, input.vca_fader_db);
    fold_into_empty_parents(ordered.placed, ordered.unplaced);

    plans = with_folder_plans(std::move(ordered.placed), input.strip_table);
    append_unplaced(plans, std::move(ordered.unplaced), tallies);
    settle_silence(plans, input);
    settle_mono_strips(plans, input, widths);
    return plans;
}

void count_tracks(const std::vector<TrackPlan>& plans, const std::vector<StripRow>& rows,
                  const TrackNameSet& folders, TrackTallies& tallies) {
    for (const TrackPlan& plan : plans) {
        const int lanes = static_cast<int>(plan.lanes.size());
        (plan.is_bare_strip ? tallies.alternates_folded_into_empty_parent
                            : tallies.alternates_matched) += lanes;
        tallies.alternates_kept_as_lanes += lanes;
        tallies.stereo_merges += is_merged_pair(plan) ? 1 : 0;
        tallies.surround_folds += plan.folded_width > 0 ? 1 : 0;
        tallies.tracks_written_empty += is_empty_audio_track(plan, rows, folders) ? 1 : 0;
        tallies.alternates_unmatched += plan.unmatched_alternate ? 1 : 0;
        tallies.inactive_tracks += plan.inactive ? 1 : 0;
        tallies.voice_off_tracks += plan.voice_off ? 1 : 0;
    }
}

}  // namespace tanrove
