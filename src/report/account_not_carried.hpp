// What the session holds and this build does not carry yet. A row goes when its subject arrives.
#pragma once

#include <string>
#include <vector>

#include "base/formatted_text.hpp"

namespace tanrove {

struct NotCarriedTallies {
    bool melodyne_edits = false;
    int unnumbered_clips = 0;  ///< placements of clips past the last number that is read
    std::vector<std::string> long_texts = {};  ///< beginnings of those that no reader takes
};

/// Among the clips.
void print_melodyne_edits(TextBuffer& out, const NotCarriedTallies& tallies);

/// Behind everything that was carried, in front of the media.
void print_not_carried(TextBuffer& out, const NotCarriedTallies& tallies);

}  // namespace tanrove
