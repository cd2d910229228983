// What stretching clips counts for the account.
#pragma once

#include <string>
#include <vector>

namespace tanrove {

/// A track whose clips share one rate that only their spacing tells.
struct InferredStretch {
    std::string track;
    double rate = 1;
};

struct StretchTallies {
    int pitch_shifted = 0;
    int with_markers = 0;
    int trims_with_markers = 0;  ///< of these: their window reaches beyond the map
    int unsliced = 0;            ///< carry a map that does not fit them
    int by_map = 0;              ///< took their length from their map
    int inferred = 0;            ///< took it from the spacing of their track
    int barely = 0;              ///< of `by_map`, without markers: by less than a thousandth
    int across_tempo_changes = 0;
    int past_marker_limit = 0;  ///< play at one even rate: the run has all its markers
    std::vector<InferredStretch> inferred_tracks;
};

}  // namespace tanrove
