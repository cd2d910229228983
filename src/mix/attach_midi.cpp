// MIDI tracks are told by name: their playlists, their rows and their plans agree on it.
#include "mix/attach_midi.hpp"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "mix/strip_names.hpp"

namespace tanrove {

namespace {

using Places = std::map<std::string, std::size_t, std::less<>>;

Places plans_by_name(const std::vector<TrackPlan>& plans) {
    Places places;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        if (!plans[i].is_alternate) places.try_emplace(plans[i].session_name, i);
    }
    return places;
}

std::optional<std::size_t> place_of(const Places& places, std::string_view name) {
    const auto found = places.find(name);
    return found == places.end() ? std::nullopt : std::optional(found->second);
}

/// The rows that play MIDI: their places in order, and by the names they show.
struct MidiRows {
    explicit MidiRows(std::span<const StripRow> rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (!plays_midi(rows[i].type)) continue;
            by_name.try_emplace(shown_name(rows[i]), i);
            in_order.push_back(i);
        }
    }

    std::vector<std::size_t> in_order;
    Places by_name;
};

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
    const MidiRows midi_rows(rows);
    const Places places = plans_by_name(plans);
    for (std::size_t i = 0; i < midi.tracks.size(); ++i) {
        MidiTrack& track = midi.tracks[i];
        auto row = place_of(midi_rows.by_name, track.name);
        const bool is_one_to_one = midi_rows.in_order.size() == midi.tracks.size();
        if (!row && is_one_to_one) row = midi_rows.in_order[i];
        auto place = place_of(places, row ? shown_name(rows[*row]) : track.name);
        if (!place && track.items.empty()) continue;
        if (!place) {
            place = plans.size();
            plans.emplace_back();
            plans.back().name = plans.back().session_name = track.name;
            plans.back().is_midi = true;
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
}

void count_midi_tracks(const std::vector<TrackPlan>& plans, const MixerLookup& mixer,
                       MidiTallies& tallies) {
    for (const TrackPlan& plan : plans) {
        count_start_events(plan, tallies);
        const Strip* strip = mixer.strip_of(plan);
        if (strip == nullptr || !strip->midi_only) continue;
        if (strip->muted) ++tallies.muted_tracks;
        if (!strip->mute_lane.points.empty()) ++tallies.mute_lane_tracks;
    }
}

}  // namespace tanrove
