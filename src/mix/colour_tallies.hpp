// What colouring counts: where the colours of tracks and clips came from.
#pragma once

#include <cstdint>
#include <set>

#include "mix/colour_theme.hpp"
#include "session/colour_schemes.hpp"

namespace tanrove {

struct ColourTallies {
    ColourSchemes schemes = {};
    ColourTheme theme = {};
    bool track_colours_off = false;
    bool clip_colours_off = false;

    int tracks_own = 0;          ///< tracks whose colour is stored
    int tracks_off_palette = 0;  ///< of those: with a value that the palette does not have
    int tracks_by_scheme = 0;
    int tracks_without = 0;
    int instrument_feeds = 0;       ///< tracks that play a plug-in, which the scheme leaves alone
    int tracks_without_output = 0;  ///< MIDI and instrument tracks that play nowhere
    int groups_without_slot = 0;
    int tracks_without_row = 0;  ///< coloured by their place in the list
    int tracks_past_rows = 0;    ///< further down than the row cycle was checked

    int clips_own = 0;                       ///< clips that got a colour of their own
    std::set<std::int32_t> own_places = {};  ///< on the palette, of those
    int clips_hand_picked = 0;               ///< of those: from behind the auto-assigned places
    int clips_off_palette = 0;               ///< of those: with an invented colour
    int clips_not_measured = 0;              ///< keep their track's colour: the shade is not known
    std::set<std::int32_t> unmeasured_places = {};
    int coloured_rows_left = 0;  ///< placements with a colour that are no clip of the project

    int lane_clips = 0;            ///< clips of alternate playlists with the colour of other clips
    int clips_by_scheme = 0;       ///< without a colour of their own
    int scheme_not_measured = 0;   ///< of those: in a Classic shade that is no measured one
    int clips_left = 0;            ///< without any colour
    int midi_clips_as_listed = 0;  ///< MIDI clips in the colour of the clip list

    int video_clips_own = 0;    ///< video clips with a colour of their own
    int video_clips_coded = 0;  ///< video clips in a colour that the coding draws

    int dark_measured = 0;
    int dark_derived = 0;
};

}  // namespace tanrove
