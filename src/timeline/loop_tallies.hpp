// What looping clips counts for the account.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tanrove {

/// Why a loop is not written as one.
enum class LoopRefusal {
    unknown_shape,
    unreadable_count,
    stretched_or_crossfaded,
    unknown_mode,
    not_audio,
    too_many_passes,  ///< the run has written all that it may
    no_clip,          ///< a placement that is no clip of a track
};

/// A looped clip that arrives as it is stored.
struct UnloopedClip {
    LoopRefusal refusal = LoopRefusal::unknown_shape;
    std::string track = {};
    std::string clip = {};
    double start_seconds = 0;
    std::uint32_t stored_position = 0;  ///< of `no_clip`
    std::uint16_t placement_type = 0;   ///< likewise: 0x1056 MIDI
};

/// A clip whose Loop Length is longer than what is written of it.
struct ShortLoop {
    std::string track;
    std::string clip;
    double start_seconds = 0;
    double loop_seconds = 0;     ///< what Pro Tools plays
    double written_seconds = 0;  ///< what is written
};

struct LoopTallies {
    int looped = 0;
    int passes = 0;
    int with_fades = 0;       ///< of `looped`
    int ended_by_length = 0;  ///< set by Loop Length, shorter than the clip
    int short_loops = 0;
    std::vector<ShortLoop> listed_short_loops;  ///< the first of these
    int unlooped = 0;
    std::vector<UnloopedClip> listed;  ///< the first of the unlooped ones
};

}  // namespace tanrove
