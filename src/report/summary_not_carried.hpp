// What the session holds and this build does not carry yet. A row goes when its subject arrives.
#pragma once

#include "base/formatted_text.hpp"

namespace tanrove {

struct NotCarriedTallies {
    int unnumbered_clips = 0;  ///< placements of clips past the last number that is read
    int shaped_clips = 0;      ///< clips on tracks whose clip effects are on
    int surround_panners = 0;  ///< tracks with one
    int plugins = 0;
    int plugins_on_tracks = 0;         ///< of those: on tracks of the project
    bool plugin_list_missing = false;  ///< REAPER's own, which tells which of them are here
};

/// Behind everything that was carried, in front of the media.
void print_not_carried(TextBuffer& out, const NotCarriedTallies& tallies);

}  // namespace tanrove
