// What Pro Tools draws for a track that nobody coloured: a place on the track palette, by the
// coding that the session chose.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "mix/strip_names.hpp"
#include "mix/track_groups.hpp"
#include "mix/track_plan.hpp"
#include "session/midi_outputs.hpp"
#include "session/midi_track_settings.hpp"
#include "session/strip_rows.hpp"
#include "session/track_displays.hpp"

namespace tanrove {

/// The codings by their stored number.
enum ColourScheme : std::int32_t {
    no_coding = 0,
    by_midi_channel = 1,
    by_midi_device = 2,
    by_group = 3,
    by_track_type = 4,
    by_track_colour = 5,
    by_marker = 6,
    by_clip_list = 7,
};

/// True for the codings that give a track a colour of its own.
constexpr bool colours_tracks(std::optional<std::int32_t> scheme) {
    return scheme && *scheme >= by_midi_channel && *scheme <= by_track_type;
}

/// What a coding gives a track.
struct CodedTrack {
    std::optional<std::int32_t> place;  ///< on the track palette; nullopt for REAPER's default
    bool without_row = false;           ///< the session stores no row; its place in the list served
    bool past_rows = false;             ///< below the rows that the cycle was checked for
    bool feeds_instrument = false;      ///< plays a plug-in, which leaves it alone
    bool without_output = false;        ///< plays MIDI, and nowhere
};

/// Looks into lists that outlive it. `displays` and `midi_settings` have one entry a row.
class ColourCoding {
public:
    ColourCoding(const std::vector<StripRow>& rows, const std::vector<TrackDisplay>& displays,
                 const std::vector<MidiTrackSettings>& midi_settings,
                 const std::vector<MidiOutput>& midi_outputs, const TrackGroups& groups);

    /// `list_place` is the plan's place among the tracks, from 1.
    CodedTrack of(std::int32_t scheme, const TrackPlan& plan, std::size_t list_place) const;

private:
    CodedTrack by_device(std::int32_t scheme, std::int32_t output) const;

    const std::vector<StripRow>& rows_;
    const std::vector<TrackDisplay>& displays_;
    const std::vector<MidiTrackSettings>& midi_settings_;
    const std::vector<MidiOutput>& midi_outputs_;
    const TrackGroups& groups_;
    StripNames names_;
};

/// The name by which the session knows the plan's track; an alternate playlist is on its parent's.
std::string_view coloured_name(const TrackPlan& plan);

}  // namespace tanrove
