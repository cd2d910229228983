// A group's row stands on its track as one clip of its window while fades are bound and clips cover
// each other; what is left of the window then decides what of its clips is heard.
#include "timeline/lay_out_clip_groups.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "session/group_lists.hpp"
#include "session/playlist_walk.hpp"
#include "timeline/collect_clips.hpp"
#include "timeline/row_matching.hpp"
#include "timeline/track_pairing.hpp"
#include "timeline/track_timebase.hpp"

namespace tanrove {

namespace {

std::int64_t samples(double seconds, double rate_hz) {
    return std::llround(seconds * rate_hz);
}

/// The item in place of a group without audio. One that lies under others is kept whole, muted.
ClipItem placeholder(const ClipItem& group) {
    ClipItem item = group;
    item.grouping.edit().clip_group.reset();
    item.stored_position = no_stored_position;
    item.fades = {};
    if (item.covered) {
        item.start = item.placed_start;
        item.length = item.placed_length;
    }
    return item;
}

}  // namespace

GroupLayout::GroupLayout(const TimelineInput& input, const WarpSlicer& slicer, ClipLooper& looper,
                         TimelineTallies& tallies)
    : input_(input),
      material_{.input = input,
                .groups = groups_,
                .sync_points = {},
                .slicer = slicer,
                .looper = &looper,
                .loops = &tallies.loops},
      clock_(input.tempo_map, input.default_tempo),
      tallies_(tallies.clip_groups),
      fade_tallies_(tallies.fades) {
    if (input.clip_groups == nullptr) return;
    groups_ = *input.clip_groups;
    if (sync_table_lines_up(input)) material_.sync_points = input.sync_points;
    if (!groups_.lists_are_told) {
        std::vector<std::int64_t> lengths;
        for (std::uint32_t i = 0; i < input.regions.size(); ++i) {
            lengths.push_back(sounding_length(material_, i, 0));
        }
        number_group_lists(groups_, lengths);
    }
    for (const ClipTrack& placement : input.placements) {
        if (placement.is_clip_group) ++groups_on_[placement.index];
    }
}

void GroupLayout::place(std::vector<TimelineTrack>& tracks) {
    if (input_.clip_groups == nullptr) return;
    const bool has_lists = edit_lists_match_records(input_);
    for (TimelineTrack& track : tracks) {
        const int unreadable_before = tallies_.unreadable;
        if (has_lists && track.record) {
            place_rows(track, input_.edit_lists[*track.record]);
        } else if (const auto missed = groups_on_.find(track.id); missed != groups_on_.end()) {
            // Only the rows tell where the groups of a track stand.
            tallies_.add_unreadable(missed->second);
        }
        name_if_missing(track, unreadable_before);
    }
}

void GroupLayout::place_rows(TimelineTrack& track, const PlaylistDetail& list) {
    for (std::size_t row = 0; row < list.rows.size(); ++row) {
        if (!list.rows[row].in_group || !list.rows[row].live()) continue;
        const std::uint32_t group = list.rows[row].region_id;
        if (group >= groups_.clips.size() || !groups_.clips[group].valid) {
            tallies_.add_unreadable(1);
        } else if (groups_.clips[group].length > 0) {
            track.groups.push_back(group_row(list, row, track));
        }
    }
    if (track.clips.empty() && !track.groups.empty()) track.row_ordered = true;
}

ClipItem GroupLayout::group_row(const PlaylistDetail& list, std::size_t number,
                                const TimelineTrack& track) {
    const PlacementRow& row = list.rows[number];
    const ClipGroupClip& group = groups_.clips[row.region_id];
    ClipItem item;
    item.grouping.edit().clip_group = row.region_id;
    item.region = no_region;
    item.stored_position = row.position;
    item.index_on_track = static_cast<std::uint32_t>(number);
    item.name = input_.clip_groups->clips[row.region_id].name;  // it outlives the layout
    item.start = item.placed_start =
        stored_seconds(row.position, track.tick_based, input_.rate_hz, clock_);
    item.length = item.placed_length = static_cast<double>(group.length) / input_.rate_hz;
    item.source_offset = static_cast<double>(group.start) / input_.rate_hz;
    item.muted = row.muted;
    item.locked = row.locked;
    item.colour_place = row.colour;
    item.edit_row = static_cast<std::int32_t>(number);
    item.placed_at = row.placed_at;
    item.tail_kept = row_keeps_tail(list, input_.fades, number);
    item.drawn_over_next = row.overlap == overlap_over_next;
    item.drawn_over_previous = row.overlap == overlap_over_previous;
    item.is_placeholder = is_placeholder(row.region_id);
    return item;
}

bool GroupLayout::is_placeholder(std::uint32_t group) {
    const auto known = placeholders_.find(group);
    if (known != placeholders_.end()) return known->second;
    return placeholders_[group] = holds_no_audio(material_, group, budget_);
}

void GroupLayout::lay_out(std::vector<TimelineTrack>& tracks, const WarpOneClip* warp,
                          StretchTallies& stretch) {
    for (TimelineTrack& track : tracks) {
        if (track.groups.empty()) continue;
        const int unreadable_before = tallies_.unreadable;
        for (const ClipItem& group : track.groups) {
            if (group.is_placeholder) {
                track.clips.push_back(placeholder(group));
            } else if (!group.covered) {
                lay_out_group(track, group, warp, stretch);
            }
        }
        track.groups.clear();
        order_by_start(track.clips);
        name_if_missing(track, unreadable_before);
    }
}

void GroupLayout::lay_out_group(TimelineTrack& track, const ClipItem& group,
                                const WarpOneClip* warp, StretchTallies& stretch) {
    const std::int64_t first = samples(group.source_offset, input_.rate_hz);
    const PlacedGroup placed{.group = *group.grouping->clip_group,
                             .window = {first, first + samples(group.length, input_.rate_hz)},
                             .start = group.start,
                             .muted = group.muted,
                             .track = track.name};
    const int unreadable_before = tallies_.unreadable;
    auto pieces = pieces_of_group(placed, material_, warp, budget_, tallies_, fade_tallies_);
    if (!pieces.empty() || tallies_.unreadable == unreadable_before) ++tallies_.groups;
    for (ClipItem& piece : pieces) {
        tallies_.fade_ins += piece.fades->fade_in.length > 0 ? 1 : 0;
        tallies_.fade_outs += piece.fades->fade_out.length > 0 ? 1 : 0;
        piece.index_on_track = group.index_on_track;
        piece.grouping.edit().group_name = group.name;
        piece.colour_place = group.colour_place;
        piece.locked = group.locked;
        if (input_.pitch_shifts != nullptr) shift_pitch(piece, *input_.pitch_shifts, stretch);
    }
    tallies_.pieces += static_cast<int>(pieces.size());
    const GroupEdges edges{.start = group.start,
                           .end = group.start + group.length,
                           .stored_start = group.placed_start,
                           .stored_end = group.placed_start + group.placed_length,
                           .fade_in = group.fades->fade_in,
                           .fade_out = group.fades->fade_out};
    const FadeForm form = input_.plain_fades ? FadeForm::plain : FadeForm::exact;
    tallies_.spread_fades += fade_group_edges(pieces, edges, form, input_.rate_hz, budget_.curves);
    tallies_.fades_left_off += std::exchange(budget_.curves.refused, 0);
    track.clips.insert(track.clips.end(), std::make_move_iterator(pieces.begin()),
                       std::make_move_iterator(pieces.end()));
}

void GroupLayout::name_if_missing(const TimelineTrack& track, int unreadable_before) {
    if (tallies_.unreadable == unreadable_before) return;
    if (incomplete_tracks_.insert(track.name).second) {
        tallies_.unreadable_on.push_back(track.name);
    }
}

}  // namespace tanrove
