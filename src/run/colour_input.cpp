// Gathers it from the records, the options and the planned markers.
#include "run/colour_input.hpp"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

bool has_colour(const PlacementRow& row) {
    return row.colour != no_colour;
}

int coloured(const PlaylistDetail& list) {
    return static_cast<int>(std::ranges::count_if(list.rows, has_colour));
}

/// Fades have no colour of their own.
int coloured_clips(const PlaylistDetail& list) {
    return static_cast<int>(std::ranges::count_if(
        list.rows, [](const PlacementRow& row) { return row.live() && has_colour(row); }));
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
        input.coloured_placements += coloured_clips(list);
    }
    for (const PlaylistDetail& list : midi.playlists) {
        input.coloured_placements += coloured(list);
    }
    input.no_track_colours = options.no_track_colors;
    input.no_clip_colours = options.no_clip_colors;
    return input;
}

}  // namespace tanrove
