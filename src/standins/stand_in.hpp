// A stand-in: the slots that do in REAPER what a plug-in does that exists for Pro Tools only, and
// what of it they cannot do.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "eqfit/fit_eq_band.hpp"
#include "plugins/fx_slot.hpp"

namespace tanrove {

constexpr int stereo_width = 2;

/// The track around the plug-in, as far as a stand-in follows it.
struct StandInTrack {
    int width = stereo_width;  ///< channels; 2 where it is not known
    /// The first of the two channels of the plug-in's key, from 0; nullopt where none is wired.
    std::optional<int> key_channel = {};
    /// Which of the strip's channels the track begins with: 1 on a right leg.
    std::size_t first_channel = 0;
    double rate_hz = 48000;  ///< above 0
};

struct StandIn {
    std::vector<FxSlot> slots;         ///< on their own; the switches of the plug-in come on top
    std::vector<std::string> notes;    ///< what is approximated or left out, a sentence each
    std::vector<std::string> carried;  ///< what of a channel strip is there: "EQ", "compressor"
    bool is_keyed = false;             ///< its detector listens to the key
    EqFitTallies eq_fits;
    int one_pole_filters = 0;    ///< beside REAPER's EQ, for slopes of 6 and 18 dB an octave
    bool can_go_offline = true;  ///< else it is bypassed where a plug-in would be offline

    /// Notes that a track has more channels than REAPER's plug-ins work on.
    void note_width(const StandInTrack& track) {
        if (track.width <= stereo_width) return;
        note("on a track wider than stereo REAPER's plug-in works on the first two channels only");
    }

    /// Notes a loss, each once.
    void note(std::string text) {
        if (std::ranges::count(notes, text) == 0) notes.push_back(std::move(text));
    }
};

}  // namespace tanrove
