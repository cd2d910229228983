// Lays the clip groups of the tracks out flat: one item for each clip that a group plays.
#include "timeline/lay_out_groups.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "session/group_lists.hpp"
#include "timeline/collect_clips.hpp"
#include "timeline/track_pairing.hpp"
#include "timeline/track_timebase.hpp"

namespace tanrove {

namespace {

bool is_set(const std::vector<std::uint32_t>& values, std::size_t row, bool otherwise) {
    return row < values.size() ? values[row] != 0 : otherwise;
}

/// The groups with the lists that they play.
ClipGroups numbered_groups(const TimelineInput& input) {
    ClipGroups groups = *input.clip_groups;
    std::vector<std::int64_t> lengths;
    lengths.reserve(input.regions.size());
    for (const Region& region : input.regions) lengths.push_back(region.length);
    number_group_lists(groups, lengths);
    return groups;
}

class GroupLayout {
public:
    GroupLayout(const TimelineInput& input, ClipGroupTallies& tallies, FadeTallies& fade_tallies)
        : input_(input),
          groups_(numbered_groups(input)),
          material_{.groups = groups_,
                    .regions = input.regions,
                    .sync_points = {},
                    .fades = input.fades,
                    .no_fades = input.no_fades,
                    .fade_form = input.plain_fades ? FadeForm::plain : FadeForm::exact,
                    .rate_hz = input.rate_hz},
          clock_(input.tempo_map, input.default_tempo),
          tallies_(tallies),
          fade_tallies_(fade_tallies) {
        if (sync_table_lines_up(input)) material_.sync_points = input.sync_points;
        for (const ClipTrack& placement : input.placements) {
            if (placement.is_clip_group) ++groups_on_[placement.index];
        }
    }

    void lay_out(TimelineTrack& track) {
        const PlaylistDetail& list = input_.edit_lists[*track.record];
        const int unreadable_before = tallies_.unreadable;
        const std::size_t clips_before = track.clips.size();
        const std::size_t rows = std::min(list.region_ids.size(), list.positions.size());
        for (std::size_t row = 0; row < rows; ++row) {
            if (!is_set(list.in_group, row, false) || !is_set(list.live, row, true)) continue;
            lay_out_row(track, list, row);
        }
        if (track.clips.size() > clips_before) order_by_start(track.clips);
        if (tallies_.unreadable > unreadable_before) name(track);
    }

    /// Counts the groups of a track whose edit list is not known: only its rows tell where they
    /// stand.
    void miss(const TimelineTrack& track) {
        const auto missed = groups_on_.find(track.id);
        if (missed == groups_on_.end()) return;
        tallies_.add_unreadable(missed->second);
        name(track);
    }

private:
    void name(const TimelineTrack& track) {
        if (incomplete_tracks_.insert(track.name).second) {
            tallies_.unreadable_on.push_back(track.name);
        }
    }

    void lay_out_row(TimelineTrack& track, const PlaylistDetail& list, std::size_t row) {
        const std::uint32_t group = list.region_ids[row];
        const auto& groups = material_.groups.clips;
        if (group >= groups.size() || !groups[group].valid || groups[group].table_index < 0) {
            tallies_.add_unreadable(1);
            return;
        }
        ++tallies_.groups;
        const PlacedGroup placed{
            .group = group,
            .start = stored_seconds(list.positions[row], track.tick_based, input_.rate_hz, clock_),
            .muted = is_set(list.muted, row, false)};
        for (const GroupPiece& piece :
             pieces_of_group(placed, material_, budget_, tallies_, fade_tallies_)) {
            const std::int32_t file = input_.regions[piece.region].file;
            if (file < 0 || static_cast<std::size_t>(file) >= input_.files.size()) {
                tallies_.add_unreadable(1);
                continue;
            }
            track.clips.push_back(item_of(piece));
            track.clips.back().index_on_track = row;
            track.clips.back().group_name = groups[group].name;
            if (row < list.colours.size()) track.clips.back().color_index = list.colours[row];
            ++tallies_.pieces;
            tallies_.fade_ins += piece.fade_in.length > 0 ? 1 : 0;
            tallies_.fade_outs += piece.fade_out.length > 0 ? 1 : 0;
        }
    }

    ClipItem item_of(const GroupPiece& piece) const {
        const Region& region = input_.regions[piece.region];
        ClipItem clip;
        clip.region = piece.region;
        clip.stored_position = no_stored_position;
        clip.source_offset_samples =
            offset_in_samples(std::llround(piece.source_offset * input_.rate_hz));
        clip.start = piece.start;
        clip.length = piece.length;
        clip.source_offset = piece.source_offset;
        clip.name = region.name;
        clip.file = without_folder(input_.files[static_cast<std::size_t>(region.file)].name);
        clip.file_kind = file_kind_of(clip.file);
        clip.head_of_file = begins_with_its_file(clip);
        clip.muted = piece.muted;
        clip.fade_in = piece.fade_in;
        clip.fade_out = piece.fade_out;
        clip.crossfaded = piece.crossfaded;
        clip.sync_offset = piece.sync_offset;
        return clip;
    }

    const TimelineInput& input_;
    ClipGroups groups_;
    GroupMaterial material_;
    TempoClock clock_;
    GroupBudget budget_;
    ClipGroupTallies& tallies_;
    FadeTallies& fade_tallies_;
    std::map<std::uint16_t, std::size_t> groups_on_;  ///< how many, by the track's id
    std::set<std::string> incomplete_tracks_;
};

}  // namespace

void lay_out_groups(std::vector<TimelineTrack>& tracks, const TimelineInput& input,
                    ClipGroupTallies& tallies, FadeTallies& fade_tallies) {
    if (input.clip_groups == nullptr) return;
    const bool has_lists = edit_lists_match_records(input);
    GroupLayout layout(input, tallies, fade_tallies);
    for (TimelineTrack& track : tracks) {
        if (has_lists && track.record) {
            layout.lay_out(track);
        } else {
            layout.miss(track);
        }
    }
}

}  // namespace tanrove
