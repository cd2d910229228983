// What planning levels, mutes and views of the tracks counts for the account.
#pragma once

#include <string>
#include <vector>

#include "mix/track_envelopes.hpp"

namespace tanrove {

struct LevelTallies {
    int mixer_strips = 0;        ///< strips with a fader, pan and mute of their own
    int parked_faders = 0;       ///< at unity under a volume envelope
    int set_to_read = 0;         ///< automated tracks whose mode the session does not tell
    int other_modes = 0;         ///< tracks in touch, latch or write
    int dual_pan_points = 0;     ///< moves of the two knobs of stereo tracks
    int dual_pan_tracks = 0;     ///< the tracks with such moves
    int panners_left_still = 0;  ///< surround strips whose pan automation is not written
    std::vector<std::string> automation_off;
    std::vector<std::string> one_sided;  ///< tracks that play to one channel of a stereo output
    std::vector<std::string> wide_strips;
    EnvelopeTallies envelopes;
};

struct SoloTallies {
    std::vector<std::string> soloed;     ///< tracks that arrive soloed
    std::vector<std::string> solo_safe;  ///< and solo-defeated
    int dropped = 0;                     ///< solos of tracks that arrive muted
    int kept_with_mute_lane = 0;         ///< of soloed, muted tracks whose mute moves
    int solo_track = 0;                  ///< 1: an empty soloed track silences the others
};

struct ViewTallies {
    int hidden_tracks = 0;
    int tracks_with_height = 0;
};

}  // namespace tanrove
