// One rule a coding: the row in the edit window, the MIDI output, the group, the type of track.
#include "mix/colour_coding.hpp"

#include "mix/palette_colours.hpp"

namespace tanrove {

namespace {

// The cycle was checked against Pro Tools for so many rows and MIDI outputs.
constexpr std::int64_t checked_rows = 26;

/// Places on the track palette.
std::int32_t place_of_type(const StripRow& row) {
    constexpr std::int32_t aux = 86;
    constexpr std::int32_t audio = 94;
    switch (row.type) {
        case StripRowType::audio_or_aux:
            return row.is_aux ? aux : audio;
        case StripRowType::master:
            return 80;
        case StripRowType::vca:
            return 95;
        case StripRowType::midi:
            return 75;
        case StripRowType::instrument:
            return 59;
        case StripRowType::video:
            return 91;
    }
    return audio;
}

CodedTrack coded_by_row(std::int32_t stored_row, std::size_t list_place) {
    CodedTrack coded;
    coded.without_row = stored_row <= 0;
    const auto row = coded.without_row ? static_cast<std::int64_t>(list_place) : stored_row;
    coded.past_rows = row > checked_rows;
    coded.place = rowIndex(row);
    return coded;
}

}  // namespace

std::string_view coloured_name(const TrackPlan& plan) {
    return plan.is_alternate ? plan.lane_parent : plan.session_name;
}

ColourCoding::ColourCoding(const std::vector<StripRow>& rows,
                           const std::vector<TrackDisplay>& displays,
                           const std::vector<MidiTrackSettings>& midi_settings,
                           const std::vector<MidiOutput>& midi_outputs, const TrackGroups& groups)
    : rows_(rows),
      displays_(displays),
      midi_settings_(midi_settings),
      midi_outputs_(midi_outputs),
      groups_(groups),
      names_(rows) {}

CodedTrack ColourCoding::by_device(std::int32_t scheme, std::int32_t output) const {
    CodedTrack coded;
    if (output <= 0 || static_cast<std::size_t>(output) > midi_outputs_.size()) {
        coded.without_output = true;
        return coded;
    }
    const MidiOutput& target = midi_outputs_[static_cast<std::size_t>(output) - 1];
    if (scheme == by_midi_channel) {
        coded.place = rowIndex((output - 1) % checked_rows + 1);
    } else if (target.is_plugin_node) {
        coded.feeds_instrument = true;
    } else {
        coded.place = rowIndex(std::int64_t{target.port_code} + 1);
    }
    return coded;
}

CodedTrack ColourCoding::of(std::int32_t scheme, const TrackPlan& plan,
                            std::size_t list_place) const {
    const std::string_view name = coloured_name(plan);
    const auto row = names_.row_shown(name);
    if (plan.is_alternate && !row) return {};

    if (scheme == by_midi_channel || scheme == by_midi_device) {
        if (!row) return coded_by_row(0, list_place);
        if (plays_midi(rows_[*row].type)) {
            const bool is_known = *row < midi_settings_.size();
            return by_device(scheme, is_known ? midi_settings_[*row].output : 0);
        }
        const bool is_shown = *row < displays_.size();
        return coded_by_row(is_shown ? displays_[*row].display_row : 0, list_place);
    }
    CodedTrack coded;
    if (scheme == by_group) {
        const auto slot = groups_.slot_of_member.find(name);
        if (slot != groups_.slot_of_member.end()) coded.place = rowIndex(slot->second);
    } else if (scheme == by_track_type && row) {
        coded.place = place_of_type(rows_[*row]);
    }
    return coded;
}

}  // namespace tanrove
