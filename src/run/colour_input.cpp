// Gathers it from the records, the options and the planned markers.
#include "run/colour_input.hpp"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

int coloured(const std::vector<std::int32_t>& places) {
    return static_cast<int>(places.size()) -
           static_cast<int>(std::ranges::count(places, no_colour));
}

/// Fades have no colour of their own, and rows that are not live place nothing.
int coloured_placements(const PlaylistDetail& list) {
    int count = 0;
    for (std::size_t i = 0; i < list.colours.size(); ++i) {
        const bool is_fade = i < list.is_fade.size() && list.is_fade[i] != 0;
        const bool is_live = i >= list.live.size() || list.live[i] != 0;
        if (is_live && !is_fade && list.colours[i] != no_colour) ++count;
    }
    return count;
}

}  // namespace

ColourInput colour_input(const RunOptions& options, const ColourTheme& theme,
                         const ClipRecords& clips, const StripRecords& strips,
                         const MidiRecords& midi, std::span<const MarkerPlan> markers) {
    ColourInput input;
    input.schemes = strips.colour_schemes;
    input.theme = theme;
    input.track_colours = strips.colours;
    input.midi_outputs = midi.outputs;
    for (const MarkerPlan& marker : markers) {
        if (!marker.end_seconds) input.markers.push_back({marker.start_seconds, marker.colour});
    }
    for (const PlaylistDetail& list : clips.details) {
        input.coloured_placements += coloured_placements(list);
    }
    for (const MidiPlaylistDetail& list : midi.playlists) {
        input.coloured_placements += coloured(list.colours);
    }
    input.no_track_colours = options.no_track_colors;
    input.no_clip_colours = options.no_clip_colors;
    return input;
}

}  // namespace tanrove
