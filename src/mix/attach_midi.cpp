// MIDI tracks are told by name: their playlists, their rows and their plans agree on it. Where
// names are unreadable or shared the order decides, which is the same in all of them.
#include "mix/attach_midi.hpp"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace tanrove {

namespace {

using Place = std::optional<std::size_t>;

/// Finds the plan of a strip row: the one that it gave its place, else the first of its name.
class Plans {
public:
    explicit Plans(const std::vector<TrackPlan>& plans) {
        for (std::size_t i = 0; i < plans.size(); ++i) {
            if (plans[i].is_alternate) continue;
            by_name_.try_emplace(plans[i].session_name, i);
            if (plans[i].strip_row) by_row_.try_emplace(*plans[i].strip_row, i);
        }
    }

    Place of_row(std::size_t number, const StripRow& row) const {
        const auto found = by_row_.find(number);
        return found != by_row_.end() ? found->second : of_name(shown_name(row));
    }
    Place of_name(const std::string& name) const {
        const auto found = by_name_.find(name);
        return found == by_name_.end() ? std::nullopt : Place(found->second);
    }

private:
    std::map<std::string, std::size_t> by_name_;
    std::map<std::size_t, std::size_t> by_row_;
};

/// Gives each MIDI track a row of its own: the one at its place among the rows that play MIDI where
/// they are as many and the names agree; else the next of its name; else whatever is at its place.
class RowMatcher {
public:
    explicit RowMatcher(std::span<const StripRow> rows) : rows_(rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (plays_midi(rows[i].type)) free_rows_.push_back(i);
        }
    }

    std::vector<Place> match(std::span<const MidiTrack> tracks) {
        std::vector<Place> matched(tracks.size());
        const std::vector<Place> at_place(free_rows_.begin(), free_rows_.end());
        const bool is_one_to_one = at_place.size() == tracks.size();
        for (std::size_t i = 0; is_one_to_one && i < tracks.size(); ++i) {
            if (shown_name(rows_[*at_place[i]]) == tracks[i].name) take(i, i, matched);
        }
        std::map<std::string, std::vector<std::size_t>> by_name;  // the last row comes first
        for (std::size_t n = free_rows_.size(); n-- > 0;) {
            if (free_rows_[n]) by_name[shown_name(rows_[*free_rows_[n]])].push_back(n);
        }
        for (std::size_t i = 0; i < tracks.size(); ++i) {
            const auto named = by_name.find(tracks[i].name);
            if (matched[i] || named == by_name.end() || named->second.empty()) continue;
            take(named->second.back(), i, matched);
            named->second.pop_back();
        }
        for (std::size_t i = 0; is_one_to_one && i < tracks.size(); ++i) {
            if (!matched[i]) take(i, i, matched);
        }
        return matched;
    }

    /// The rows that `match` gave to no track; nullopt in the place of the others.
    const std::vector<Place>& free_rows() const { return free_rows_; }

private:
    void take(std::size_t number, std::size_t track, std::vector<Place>& matched) {
        matched[track] = std::exchange(free_rows_[number], std::nullopt);
    }

    std::span<const StripRow> rows_;
    std::vector<Place> free_rows_;
};

bool is_any_on(const RealTimeProperties& properties) {
    return properties.quantize_on || properties.duration_on || properties.delay_on ||
           properties.velocity_on || properties.transpose_on;
}

std::size_t own_plan(std::vector<TrackPlan>& plans, const std::string& name) {
    TrackPlan& plan = plans.emplace_back();
    plan.name = plan.session_name = name;
    plan.is_midi = true;
    return plans.size() - 1;
}

TrackTimebase timebase_of(const MidiTrack& track) {
    if (!track.tick_based) return TrackTimebase::unknown;
    return *track.tick_based ? TrackTimebase::beats_position : TrackTimebase::time;
}

void count_start_events(const TrackPlan& plan, MidiTallies& tallies) {
    if (plan.midi_items.empty()) return;
    const MidiTrackSettings& settings = plan.midi_settings;
    if (settings.volume != midi_value_unset || settings.pan != midi_value_unset) {
        ++tallies.fader_tracks;
    }
    if (settings.patch != midi_value_unset) tallies.patch_tracks.push_back(plan.name);
}

}  // namespace

void attach_midi(std::vector<TrackPlan>& plans, MidiMixInput midi, std::span<const StripRow> rows,
                 TrackTallies& track_tallies, MidiTallies& tallies) {
    RowMatcher matcher(rows);
    const std::vector<Place> row_of_track = matcher.match(midi.tracks);
    const Plans places(plans);
    std::vector<bool> is_given(plans.size());
    for (std::size_t i = 0; i < midi.tracks.size(); ++i) {
        MidiTrack& track = midi.tracks[i];
        const Place row = row_of_track[i];
        Place place = row ? places.of_row(*row, rows[*row]) : places.of_name(track.name);
        if (place && is_given[*place]) place.reset();
        if (!place && track.items.empty()) continue;
        if (place) {
            is_given[*place] = true;
        } else {
            place = own_plan(plans, track.name);
            ++track_tallies.tracks_without_strip_row;
        }
        TrackPlan& plan = plans[*place];
        if (row) {
            plan.midi_settings = midi.settings[*row];
            apply_real_time_properties(midi.real_time[*row], track.items, tallies);
        }
        plan.midi_items = std::move(track.items);
        if (plan.clips.empty()) plan.timebase = timebase_of(track);
    }
    for (const Place row : matcher.free_rows()) {
        if (row && is_any_on(midi.real_time[*row])) ++tallies.unmatched_real_time_rows;
    }
}

void count_midi_tracks(const std::vector<TrackPlan>& plans, const TrackStrips& strips,
                       MidiTallies& tallies) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        count_start_events(plans[i], tallies);
        const Strip* strip = strips.of(i).strip;
        if (strip == nullptr || !strip->midi_only) continue;
        if (strip->muted) ++tallies.muted_tracks;
        if (!strip->mute_lane.points.empty()) ++tallies.mute_lane_tracks;
    }
}

}  // namespace tanrove
